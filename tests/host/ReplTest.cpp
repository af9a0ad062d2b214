// The prompt as people use it: lines through a pipe, and keys at a terminal.

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "host/Program.h"
#include "host/SoundFiles.h"
#ifndef _WIN32
#include "host/TerminalSession.h"
#endif
#include "support/Pattern.h"

namespace velmotest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const float nan = std::numeric_limits<float>::quiet_NaN();

class Repl : public Program {
protected:
    Outcome Type(const std::string& lines, const std::string& options = "") {
        return Velmohost("repl 'tesk.fixnan~ @numchannels 2' " + options, "", lines);
    }
};

TEST_F(Repl, AnswersInOrderAndOutlivesWrongLines) {
    const Outcome outcome = Type("getmode\nmode givenvalue\r\n\n   \nnonsense\ngetmode\npreset x y\ndsp sing\ngetmode");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "[dumpout] mode lastvalue\n"
              "[error] tesk.fixnan~: doesn't understand \"nonsense\"\n"
              "[dumpout] mode givenvalue\n"
              "[error] tesk.fixnan~: extra arguments for message \"preset\"\n"
              "[dumpout] mode givenvalue\n");
    EXPECT_EQ(outcome.err, "velmohost: dsp takes start, stop or wait SECONDS\n");
}

TEST_F(Repl, StateGoesOutAndComesBack) {
    const Outcome outcome = Type(
        "preset 3\ndumpdict\nmode givenvalue\nreplaceby 2\ngetvalueof\npreset\npreset recall 3\ngetvalueof\n"
        "preset recall\ngetvalueof\ndictionary last\ngetvalueof\nsetvalueof givenvalue 2 0.5\ngetvalueof\n"
        "setvalueof givenvalue 2\ngetvalueof\npreset recall 9\n");
    EXPECT_THAT(outcome.out, ContainsPattern("^\\[preset\\] 3: tesk.fixnan~ recallpreset lastvalue 2 0\\.\n"
                                             "\\[dumpout\\] dictionary u[0-9]+\n"
                                             "\\[dictionary\\] mode lastvalue\n"
                                             "\\[dictionary\\] numchannels 2\n"
                                             "\\[dictionary\\] replaceby 0\\.\n"
                                             "\\[pattr\\] givenvalue 2 2\\.\n"
                                             "\\[preset\\] 1: tesk.fixnan~ recallpreset givenvalue 2 2\\.\n"
                                             "\\[pattr\\] lastvalue 2 0\\.\n"
                                             "\\[pattr\\] givenvalue 2 2\\.\n"
                                             "\\[pattr\\] lastvalue 2 0\\.\n"
                                             "\\[pattr\\] givenvalue 2 0\\.5\n"
                                             "\\[error\\] tesk.fixnan~: setvalueof error [^\n]*\n"
                                             "\\[pattr\\] givenvalue 2 0\\.5\n$"));
    EXPECT_EQ(outcome.err, "velmohost: there is no preset 9\n");
}

TEST_F(Repl, AScriptsSoundFlowsTheSameInEveryRun) {
    // Vectors of 2 frames at 48000 Hz: 0.00007 s is rounded up to 4 frames, so the mode changes from frame 4 on.
    WriteSound(folder / "in.wav", {{1, nan, nan, nan, nan, 6, nan}, {1, 1, 1, 1, 1, 1, 1}}, 48000.0);
    const std::string script = "replaceby 9\ndsp start\nmode lastvalue\ndsp wait 0.00007\nmode givenvalue\ndsp stop\n";
    for (int repetition = 0; repetition < 3; ++repetition) {
        const Outcome outcome = Type(script + "mode lastvalue\nclear\n", "--in in.wav --out out.wav --block 2");
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.out, "[error] tesk.fixnan~: NaN occured in Channel #1\n");
        EXPECT_EQ(ReadSound(folder / "out.wav"), (Channels{{1, 1, 1, 1, 9, 6, 9}, {1, 1, 1, 1, 1, 1, 1}}));
    }
    // The input's end stops audio too, each start plays the file anew, and sound goes on in silence after the file.
    const Outcome outcome = Type("dsp start\ndsp stop\nclear\ndsp start\ndsp wait 0.00019",
                                 "--in in.wav --out again.wav --block 2 --at 0.0002 version --at 1 clear");
    EXPECT_THAT(outcome.out, ContainsPattern("^\\[error\\][^\n]*NaN[^\n]*\n\\[error\\][^\n]*NaN[^\n]*\n"
                                             "\\[post\\][^\n]*Version[^\n]*\n$"));
    EXPECT_EQ(ReadSound(folder / "again.wav")[0], (std::vector<float>{1, 1, 1, 1, 1, 6, 6, 0, 0, 0}));
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("\"clear\" was not sent"), HasSubstr("to the trash")));
}

TEST_F(Repl, AudioTellsWhatItCannotDoAndGoesOn) {
    Outcome outcome = Type("dsp stop\ndsp wait 1\ndsp start\ndsp start\ndsp wait -1\ndsp wait\ngetmode\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "[dumpout] mode lastvalue\n");
    EXPECT_EQ(outcome.err,
              "velmohost: audio is off already\nvelmohost: audio is off: no sound to wait for\n"
              "velmohost: audio is on already\nvelmohost: dsp wait takes 0 seconds to a day\n"
              "velmohost: dsp takes start, stop or wait SECONDS\n");
    outcome = Type("dsp start\ngetmode\n", "--out nowhere.ogg");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "[dumpout] mode lastvalue\n");
    EXPECT_THAT(outcome.err, HasSubstr("nowhere.ogg"));
}

TEST_F(Repl, TheSaveAsDialogIsAnsweredOrCancelled) {
    EXPECT_THAT(Type("exportdict\n").out, IsEmpty());
    for (const char* answer : {"state.json", "."}) {
        EXPECT_EQ(Type("exportdict\n", std::string("--save-as ") + answer).status, 0);
    }
    EXPECT_EQ(ReadText("file.json"), ReadText("state.json"));
    EXPECT_THAT(ReadText("state.json"), AllOf(StartsWith("{\n"), HasSubstr("\"numchannels\" : 2")));
    Velmohost("run tesk.fixnan~ --message exportdict --save-as run.json");
    EXPECT_THAT(ReadText("run.json"), HasSubstr("\"numchannels\" : 1"));
    EXPECT_EQ(Type("exportdict\n", "--save-as no/such/state.json").status, 1);
}

TEST_F(Repl, AQuestionMarkListsWhatTheObjectUnderstands) {
    const Outcome outcome = Type("?\n");
    for (const char* entry : {"\n  mode            symbol", "\n  clear           ", "\n  dumpdict        [any...]\n",
                              "\n  dsp start       ", "\n  preset recall   "}) {
        EXPECT_THAT(outcome.out, HasSubstr(entry));
    }
}

#ifndef _WIN32  // terminals of a program's own are a matter of POSIX
class ThreadsRepl : public testing::Test {
protected:
    TerminalSession session{{VELMO_HOST_PROGRAM, "repl", "tesk.fixnan~"}};
};

TEST_F(ThreadsRepl, ATerminalCompletesWordsAndRemembersLines) {
    ASSERT_TRUE(session.WaitFor("> "));
    session.Type("getm\t\r");
    EXPECT_TRUE(session.WaitFor("\n[dumpout] mode lastvalue\r\n"));
    session.Type("mode g\t\rget\t\t");
    EXPECT_TRUE(session.WaitFor("getmode  getnumchannels  getreplaceby  "));
    session.Type("\x15");            // drops the line
    session.Type("\x1b[A\x1b[A\r");  // two lines up: "getmode"
    EXPECT_TRUE(session.WaitFor("\n[dumpout] mode givenvalue\r\n"));
    session.Type("non\tsense\r");
    EXPECT_TRUE(session.WaitFor("doesn't understand \"nonsense\""));
    session.Type("half a line\x03");  // the break key drops it, not the session
    session.Type("getreplaceby\r");
    EXPECT_TRUE(session.WaitFor("\n[dumpout] replaceby 0."));
    EXPECT_TRUE(session.WaitFor("> "));
    session.Type("\x04");
    EXPECT_EQ(session.Wait(), 0) << session.Shown();
}

TEST_F(ThreadsRepl, SoundFlowsInRealTimeWhileLinesAreTyped) {
    ASSERT_TRUE(session.WaitFor("> "));
    session.Type("dsp start\r");
    for (int repetition = 0; repetition < 5; ++repetition) {
        session.Type("mode givenvalue\rclear\rreplaceby 1\rmode lastvalue\rgetreplaceby\r");
        EXPECT_TRUE(session.WaitFor("\n[dumpout] replaceby 1."));
    }
    const auto before = std::chrono::steady_clock::now();
    session.Type("dsp wait 0.25\rgetmode\r");
    EXPECT_TRUE(session.WaitFor("\n[dumpout] mode lastvalue"));
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(240));
    session.Terminate();
    EXPECT_EQ(session.Wait(), 1);
    EXPECT_THAT(session.Shown(), HasSubstr("velmohost: interrupted"));
}

TEST(ThreadsReplRows, RowsOfTheAudioThreadComeBetweenPromptAndTypedText) {
    TempFolder folder;
    Channels sound{std::vector<float>(30000, 0.5f)};
    sound[0][20000] = nan;
    WriteSound(folder / "in.wav", sound);
    TerminalSession session({VELMO_HOST_PROGRAM, "repl", "tesk.fixnan~", "--in", folder / "in.wav"});
    ASSERT_TRUE(session.WaitFor("> "));
    session.Type("dsp start\rgetm");
    // Nothing more is typed: the row comes by itself, and what was typed stands behind a prompt again.
    EXPECT_TRUE(session.WaitFor("NaN occured in Channel #1\r\n"));
    EXPECT_TRUE(session.WaitFor("> getm"));
    session.Type("ode\r");
    EXPECT_TRUE(session.WaitFor("\n[dumpout] mode lastvalue"));
    session.Type("dsp stop\rgetnumchannels\r");
    EXPECT_TRUE(session.WaitFor("\n[dumpout] numchannels 1"));
    EXPECT_TRUE(session.WaitFor("> "));
    session.Type("\x04");
    EXPECT_EQ(session.Wait(), 0) << session.Shown();
}
#endif

}  // namespace
}  // namespace velmotest
