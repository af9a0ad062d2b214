// The program velmohost as people run it: command line in; standard output, standard error and exit status out.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

#include "host/Program.h"
#include "host/SoundFiles.h"
#include "support/Pattern.h"

namespace velmotest {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

using CommandLineTest = Program;

TEST_F(CommandLineTest, WrongUsageIsToldWithStatusTwo) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "a command is missing"},
        {"sing", "no such command: sing"},
        {"run", "BOX"},
        {"run tesk.fixnan~ --bits 12", "--bits"},
        {"run tesk.fixnan~ --block 0", "--block"},
        {"run tesk.fixnan~ --seconds -1", "--seconds"},
        {"run tesk.fixnan~ --seconds nan", "--seconds"},
        {"run tesk.fixnan~ --seconds 1e300", "--seconds"},
        {"run tesk.fixnan~ --samplerate 0", "--samplerate"},
        {"run tesk.fixnan~ --at soon clear", "--at"},
        {"run tesk.fixnan~ --at -1 clear", "--at"},
        {"run tesk.fixnan~ --nonsense", "--nonsense"},
        {"run tesk.fixnan~ --inlets 2", "--inlets names number 2, but the last one is 1"},
        {"run tesk.fixnan~ --outlets 1-x", "--outlets"},
        {"run tesk.fixnan~ --message ''", "--message"},
        {"run tesk.fixnan~ --in a.wav --seconds 2", "--seconds"},
        {"run tesk.fixnan~ --save-as ''", "--save-as"},
        {"scan", "FILE"},
        {"repair a.wav --jobs 0", "--jobs"},
        {"repair a.wav --mode median", "--mode"},
        {"repair a.wav --replaceby 1", "--replaceby needs --mode givenvalue"},
        {"repair a.wav --mode givenvalue --replaceby 1e39", "--replaceby"},
        {"repair a.wav -o b.aiff", "-o"},
        {"repl tesk.fixnan~ --inlets 2", "--inlets names number 2, but the last one is 1"},
    };
    for (const auto& [arguments, reason] : cases) {
        const Outcome outcome = Velmohost(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.err, AllOf(StartsWith("velmohost: "), HasSubstr(reason))) << arguments;
    }
}

TEST_F(CommandLineTest, HelpGoesToTheStandardOutput) {
    for (const auto& [arguments, text] : {std::pair("--help", "info"), std::pair("run --help", "--samplerate"),
                                          std::pair("info --help", "--json"), std::pair("repl --help", "--save-as")}) {
        const Outcome outcome = Velmohost(arguments);
        EXPECT_EQ(outcome.status, 0) << arguments;
        EXPECT_THAT(outcome.out, HasSubstr(text));
        EXPECT_THAT(outcome.err, IsEmpty());
    }
}

TEST_F(CommandLineTest, ObjectsThatCannotBeCreatedAreToldWithStatusOne) {
    WriteText("broken~" VELMO_EXTERNAL_SUFFIX, "no plug-in");
    for (const auto& [box, row] :
         {std::pair("nosuch~", "[error] nosuch~: No such object\n"),
          std::pair("./broken~", "[error] ./broken~: No such object\n"),
          std::pair("''", "[error] no object name in \"\"\n"),
          std::pair("'3 level~'", "[error] no object name in \"3 level~\"\n"),
          std::pair("broken~", "[error] broken~: could not load ./broken~" VELMO_EXTERNAL_SUFFIX ": ")}) {
        for (const std::string command : {"run --path . ", "info --path . ", "repl --path . "}) {
            const Outcome outcome = Velmohost(command + box);
            EXPECT_EQ(outcome.status, 1) << box;
            EXPECT_THAT(outcome.out, StartsWith(row));
        }
    }
}

TEST_F(CommandLineTest, BadSoundFilesAreToldWithStatusOne) {
    WriteText("text.wav", "This is not a sound file.");
    WriteText("empty.aiff", "");
    WriteSound(folder / "in.wav", {{1, 2, 3}});
    fs::create_hard_link(folder / "in.wav", folder / "hard.wav");
#ifndef _WIN32  // links that lead to a path are the administrator's there
    fs::create_symlink(folder / "in.wav", folder / "soft.wav");
#endif
    const Channels before = ReadSound(folder / "in.wav");
    struct Case {
        const char *options, *reason;
        int status;
    };
    const Case cases[] = {
        {"--in missing.wav --out out.wav", "velmohost: cannot read missing.wav: no such file", 1},
        {"--in text.wav --out out.wav", "text.wav is not a valid WAV file", 1},
        {"--in empty.aiff --out out.wav", "empty.aiff is not a valid AIFF file", 1},
        {"--in . --out out.wav", "velmohost: cannot read .: it is a folder", 1},
        {"--in in.wav --out nowhere/../text.wav/out.wav", "velmohost: cannot write ", 1},
        {"--out out.ogg", "velmohost: cannot write out.ogg: ", 1},
        {"--in in.wav --out in.wav", "velmohost: --in and --out are the same file", 2},
        {"--in in.wav --out hard.wav", "velmohost: --in and --out are the same file", 2},
#ifndef _WIN32
        {"--in in.wav --out ./soft.wav", "velmohost: --in and --out are the same file", 2},
#endif
    };
    for (const Case& c : cases) {
        const Outcome outcome = Velmohost(std::string("run tesk.fixnan~ ") + c.options);
        EXPECT_EQ(outcome.status, c.status) << c.options;
        EXPECT_THAT(outcome.err, HasSubstr(c.reason));
        EXPECT_FALSE(fs::exists(folder / "out.wav"));
    }
    EXPECT_EQ(ReadSound(folder / "in.wav"), before);
}

TEST_F(CommandLineTest, RunRepairsSoundAndShowsTheMaxWindow) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), infinity = std::numeric_limits<float>::infinity();
    WriteSound(folder / "in.wav", {{0.5f, nan, 0.25f, infinity}, {1, 2, 3, 4}, {9, 9, 9, 9}}, 48000.0);
    const Outcome outcome =
        Velmohost("run 'tesk.fixnan~ @numchannels 2' --in in.wav --out out.wav --message 'nonsense 1'");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(ReadSound(folder / "out.wav"), (Channels{{0.5f, 0.5f, 0.25f, 0.25f}, {1, 2, 3, 4}}));
    EXPECT_EQ(velmohost::SoundSource(folder / "out.wav").Samplerate(), 48000.0);
    EXPECT_THAT(outcome.out, AllOf(StartsWith("[error] tesk.fixnan~: "), HasSubstr("nonsense"),
                                   HasSubstr("[error] tesk.fixnan~: NaN occured in Channel #1\n")));
    EXPECT_EQ(outcome.err,
              "velmohost: in.wav has 3 channels, but tesk.fixnan~ has 2 signal inlets: channel 3 is left out\n");
}

TEST_F(CommandLineTest, FilesMayHaveAnyName) {
    const std::string name = "t\xC3\xA4ke \xE5\xA3\xB0 \xF0\x9F\x8E\xA7";
    fs::create_directory(Utf8Path(folder / name));
    WriteSound(folder / "in.wav", {{0.5f, std::numeric_limits<float>::quiet_NaN()}});
    fs::rename(folder / "in.wav", Utf8Path(folder / name + "/in.wav"));
    Outcome outcome = Velmohost("repair '" + name + "/in.wav' -o '" + name + ".wav' --report '" + name + ".html'");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, name +
                               "/in.wav: repaired 1 bad sample (channel 1: 1), first: sample 1 (0:00.000), "
                               "longest run: 1; written to " +
                               name + ".wav\n");
    EXPECT_THAT(ReadText(name + ".html"), HasSubstr(name));
    outcome = Velmohost("run 'tesk.fixnan~' --in '" + name + ".wav' --out '" + name + "/out.wav' --message 'say " +
                        name + "'");
    EXPECT_EQ(ReadSound(folder / name + "/out.wav"), (Channels{{0.5f, 0.5f}}));
    EXPECT_THAT(outcome.out, HasSubstr("\"say\""));
    EXPECT_EQ(Velmohost("scan --recursive .").status, 3);
}

TEST_F(CommandLineTest, RefusedBoxesAndAFullDiskKeepTheOldFile) {
    WriteText("out.wav", "old");
    EXPECT_NE(Velmohost("run 'tesk.fixnan~ @numchannels' --out out.wav --inlets 7").status, 0);
    EXPECT_EQ(ReadText("out.wav"), "old");
#ifndef _WIN32  // no limit to a file's size there
    const Outcome outcome = Velmohost("run tesk.fixnan~ --seconds 10 --out out.wav", "ulimit -f 64;");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("velmohost: cannot write "));
    EXPECT_EQ(ReadText("out.wav"), "old");
#endif
    EXPECT_FALSE(fs::exists(folder / "out.part.wav"));
}

TEST_F(CommandLineTest, InfoTellsWhatTheObjectIs) {
    const Outcome outcome = Velmohost("info 'tesk.fixnan~ @numchannels 2'");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("tesk.fixnan~\n  Filters out NaN or Inf.\n"));
    for (const char* text :
         {"  see also        tesk.fixnan, tesk.isnan~\n", "\nInlets\n", "  2               signal, input #2\n",
          "  3               dumpout\n", "\nAttributes\n", "  numchannels     long, default 1, 1 to 250\n",
          "  mode            symbol, default lastvalue, one of: lastvalue givenvalue\n", "\nMessages\n",
          "  clear           ", "  postattributes  [any...]\n"}) {
        EXPECT_THAT(outcome.out, HasSubstr(text));
    }
    EXPECT_THAT(outcome.out, Not(HasSubstr("dsp64")));
    EXPECT_THAT(outcome.out, Not(HasSubstr("classdigest")));
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
    EXPECT_THAT(outcome.out, HasSubstr("\n                  preset object. This method is")) << "markup is gone";
    EXPECT_THAT(outcome.out, Not(ContainsPattern("<[a-z]+ */?>")));
}

TEST_F(CommandLineTest, InfoTellsMachinesTheSame) {
    const Outcome outcome = Velmohost("info 'tesk.fixnan~ @numchannels 2 @nonsense 1' --json");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("nonsense")) << "rows stay out of the answer";
    const nlohmann::json info = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(info["seealso"], (nlohmann::json{"tesk.fixnan", "tesk.isnan~"}));
    EXPECT_EQ(info["outlets"][2], (nlohmann::json{{"type", ""}, {"assist", "dumpout"}}));
    const auto named = [](const nlohmann::json& items, const std::string& name) {
        const auto found = std::find_if(items.begin(), items.end(), [&](const auto& i) { return i["name"] == name; });
        return found != items.end() ? *found : nlohmann::json();
    };
    const nlohmann::json channels = named(info["attributes"], "numchannels");
    EXPECT_EQ(channels["max"], 250);
    EXPECT_EQ(named(info["attributes"], "mode")["choices"], (nlohmann::json{"lastvalue", "givenvalue"}));
    EXPECT_EQ(named(info["messages"], "postattributes")["arguments"][0]["type"], "symbol");
    EXPECT_EQ(named(info["messages"], "dictionary")["types"], "symbol");
}

}  // namespace
}  // namespace velmotest
