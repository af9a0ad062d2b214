#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

#include "commands/ChannelList.h"
#include "commands/RunCommand.h"
#include "commands/RunSchedule.h"
#include "commands/TextLayout.h"
#include "commands/UsageError.h"
#include "host/SignalObjects.h"
#include "host/SoundFiles.h"
#include "support/TempFolder.h"

namespace velmohost {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using velmotest::Channels;
using velmotest::ReadSound;
using velmotest::WriteSound;

class RunTest : public testing::Test {
protected:
    RunTest() { RegisterSignalObjects(); }

    /// Runs the box with sound in and out, and gives what came out.
    Channels Run(RunOptions options) {
        options.out = folder / ("out-" + std::to_string(++numRuns) + ".wav");
        EXPECT_EQ(RunObject(options), 0);
        return ReadSound(*options.out);
    }

    TempFolder folder;
    int numRuns = 0;
};

TEST_F(RunTest, MessagesArriveAtTheFirstBlockBoundaryFromTheirTimeOn) {
    // At 44100 Hz: 64.0, 64.0044, 128.99 and 191.99 frames; 100 frames is not sent, as the run has 200.
    RunOptions options;
    options.boxText = "level~";
    options.seconds = 200.0 / 44100.0;
    options.messages = {"level 9", "level 1"};
    options.atTimes = {{192.0 / 44100.0, "level 5"},
                       {64.1 / 44100.0, "level 3"},
                       {64.0 / 44100.0, "level 2"},
                       {65.0 / 44100.0, "level 4"},
                       {0.5, "level 7"}};
    std::vector<float> expected(200, 1.0f);
    std::fill(expected.begin() + 64, expected.end(), 2.0f);
    std::fill(expected.begin() + 128, expected.end(), 4.0f);
    std::fill(expected.begin() + 192, expected.end(), 5.0f);
    EXPECT_THAT(Run(options), ElementsAre(expected));
}

TEST_F(RunTest, SoundPassesWholeWhateverTheBlockSize) {
    Channels sound(2, std::vector<float>(10007));
    for (std::size_t i = 0; i < sound[0].size(); ++i) {
        sound[0][i] = static_cast<float>(i);
        sound[1][i] = -0.5f * static_cast<float>(i);
    }
    WriteSound(folder / "in.wav", sound);
    RunOptions options;
    options.boxText = "swap~ 1";
    options.in = folder / "in.wav";
    for (const long block : {1l, 64l, 1000l, 2048l}) {
        options.block = block;
        EXPECT_EQ(Run(options), (Channels{sound[1], sound[0]})) << block << " samples";
    }
}

TEST_F(RunTest, ChannelsFollowTheConnections) {
    const std::vector<float> left{1, 2, 3}, right{4, 5, 6}, silence{0, 0, 0};
    WriteSound(folder / "mono.wav", {left});
    WriteSound(folder / "three.wav", {left, right, left});
    struct Case {
        const char *in, *inlets, *outlets;
        Channels expected;  // of swap~: outlet 1 has inlet 2, outlet 2 inlet 1
    };
    const Case cases[] = {
        {"mono.wav", nullptr, nullptr, {silence, left}}, {"three.wav", nullptr, nullptr, {right, left}},
        {"three.wav", "2", nullptr, {right, silence}},   {"three.wav", "none", nullptr, {silence, silence}},
        {"mono.wav", "1-2", nullptr, {silence, left}},   {"three.wav", "1,2", "2", {silence, left}}};
    for (const Case& c : cases) {
        RunOptions options;
        options.boxText = "swap~ 1";
        options.in = folder / c.in;
        if (c.inlets != nullptr) options.inlets = c.inlets;
        if (c.outlets != nullptr) options.outlets = c.outlets;
        EXPECT_EQ(Run(options), c.expected) << c.in << " inlets " << options.inlets.value_or("default");
    }
}

TEST_F(RunTest, ChannelListsNameInletsFromOne) {
    EXPECT_THAT(ParseChannelList("--inlets", "1,3-4", 5), ElementsAre(true, false, true, true, false));
    EXPECT_THAT(ParseChannelList("--inlets", "none", 2), ElementsAre(false, false));
    EXPECT_THAT(ParseChannelList("--inlets", "2-2,2", 2), ElementsAre(false, true));
    for (const char* list : {"0", "", ",", "1,", "2-1", "1-", "-1", "a", "1 2", "+1", "99999999999", "1-0", "None"}) {
        EXPECT_THAT([&] { ParseChannelList("--inlets", list, 4); },
                    testing::ThrowsMessage<UsageError>(HasSubstr("such as 1,3-4")))
            << list;
    }
    EXPECT_THAT([] { ParseChannelList("--outlets", "1,3-5", 4); },
                testing::ThrowsMessage<UsageError>("--outlets names number 5, but the last one is 4"));
}

TEST_F(RunTest, TimesMeanTheFirstVectorFromThemOn) {
    // 0.3 is a little below three tenths, and 0.1 + 0.2 a little above: both are frame 14400, vector 225.
    const RunLength second{48000.0, 48000, 64};
    for (const double time : {0.3, 0.1 + 0.2}) EXPECT_EQ(second.FirstVectorFrom(time), 225u);
    const RunLength length{48000.0, 1000, 64};  // 15 whole vectors and one of 40 frames
    EXPECT_EQ(length.NumVectors(), 16u);
    for (const double time : {1025.0 / 48000.0, 1e300}) EXPECT_GT(length.FirstVectorFrom(time), 16u);
}

TEST(TextLayout, BreaksLinesAtEightyColumns) {
    EXPECT_EQ(LayOut("  name", 10, "some   text\n here"), "  name    some text here\n");
    EXPECT_EQ(LayOut("  a-long-name", 10, "text"), "  a-long-name\n          text\n");
    EXPECT_EQ(LayOut("", 2, ""), "");
    EXPECT_EQ(LayOut("  name", 10, ""), "  name\n");
    const std::string word(26, 'x'), accented = "é" + word.substr(1);
    EXPECT_EQ(LayOut("", 0, word + " " + word + " " + accented), word + " " + word + " " + accented + "\n");
    EXPECT_EQ(LayOut("", 1, word + " " + word + " " + word), " " + word + " " + word + "\n " + word + "\n");
    EXPECT_EQ(LayOut("", 0, std::string(90, 'y') + " z"), std::string(90, 'y') + "\nz\n");
    EXPECT_EQ(StripMarkup("a <m>preset</m>\nbox.<br/>b &lt;1 &amp;lt; 2 < 3"), "a preset box.\nb <1 &lt; 2 < 3");
    EXPECT_EQ(LayOutLines("  name", 10, "one\ntwo  words\n"), "  name    one\n          two words\n");
}

}  // namespace
}  // namespace velmohost
