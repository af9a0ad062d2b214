#include "audio/DspChain.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

#include "audio/AudioThread.h"
#include "box/Box.h"
#include "box/Host.h"
#include "host/SignalObjects.h"
#include "platform/VelmoDspFloatingPointControl.h"
#include "support/CapturedWindow.h"

namespace velmohost {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr long kVectorSize = 4;
using Samples = std::vector<double>;

class DspChainTest : public testing::Test {
protected:
    DspChainTest() { RegisterSignalObjects(); }

    std::unique_ptr<Box> Create(const std::string& text) {
        std::unique_ptr<Box> box = Box::Create(host, text);
        EXPECT_NE(box, nullptr) << text;
        return box;
    }

    void Fill(unsigned inlet, const Samples& samples) {
        std::copy(samples.begin(), samples.end(), chain.InletSamples(inlet));
    }

    Samples Take(unsigned outlet, long numSamples = kVectorSize) {
        return {chain.OutletSamples(outlet), chain.OutletSamples(outlet) + numSamples};
    }

    Host host;
    DspChain chain;
};

TEST_F(DspChainTest, SharesBuffersUnlessTheObjectRefuses) {
    const Samples left{1, 2, 3, 4}, right{5, 6, 7, 8};
    for (const bool refuses : {true, false}) {
        const std::unique_ptr<Box> box = Create(refuses ? "swap~ 1" : "swap~");
        chain.Start(*box, 44100.0, kVectorSize, {true, true}, {true, true});
        Fill(0, left);
        Fill(1, right);
        chain.ProcessVectors(1);
        EXPECT_EQ(Take(0), right);
        // In shared memory the first copy has overwritten the left inlet by the time it is read.
        EXPECT_EQ(Take(1), refuses ? left : right);
        chain.Stop();
    }
}

TEST_F(DspChainTest, ProcessesSeveralVectorsInTheirOrder) {
    const std::unique_ptr<Box> box = Create("swap~ 1");
    chain.Start(*box, 44100.0, kVectorSize, {true, true}, {true, true}, 3);
    Samples left(12), right(12);
    for (std::size_t i = 0; i < 12; ++i) left[i] = static_cast<double>(i), right[i] = -static_cast<double>(i);
    Fill(0, left);
    Fill(1, right);
    chain.ProcessVectors(3);
    EXPECT_EQ(Take(0, 12), right);
    EXPECT_EQ(Take(1, 12), left);
}

TEST_F(DspChainTest, TellsTheObjectRateVectorSizeAndConnections) {
    const std::unique_ptr<Box> box = Create("swap~ 1");
    const auto* const swapper = reinterpret_cast<const Swapper*>(box->Object());
    chain.Start(*box, 96000.0, kVectorSize, {false, true}, {true, false});
    EXPECT_THAT(swapper->counts, ElementsAre(0, 1, 1, 0));
    EXPECT_EQ(swapper->samplerate, 96000.0);
    EXPECT_EQ(swapper->maxVectorSize, kVectorSize);
    EXPECT_EQ(swapper->dspState, 1);
    EXPECT_EQ(sys_getsr(), 96000.0f);
    EXPECT_EQ(sys_getblksize(), kVectorSize);
    chain.Stop();
    EXPECT_EQ(sys_getdspstate(), 0);
    EXPECT_EQ(sys_getsr(), 96000.0f);
}

TEST_F(DspChainTest, UnconnectedInletsAreSilent) {
    for (const char* text : {"swap~ 1", "swap~"}) {
        const std::unique_ptr<Box> box = Create(text);
        chain.Start(*box, 44100.0, kVectorSize, {true, false}, {true, true});
        EXPECT_EQ(chain.InletSamples(1), nullptr);
        Fill(0, {1, 2, 3, 4});
        chain.ProcessVectors(1);
        EXPECT_THAT(Take(0), Each(0.0)) << text;
        chain.Stop();
    }
}

TEST_F(DspChainTest, DisabledObjectsAreSkippedAndSilent) {
    const std::unique_ptr<Box> box = Create("level~");
    const auto* const leveller = reinterpret_cast<const Leveller*>(box->Object());
    box->Send("level 0.5");
    chain.Start(*box, 44100.0, kVectorSize, {true}, {true});
    box->Send("enable 0");
    Fill(0, {1, 2, 3, 4});
    chain.ProcessVectors(1);
    EXPECT_THAT(Take(0), Each(0.0));
    EXPECT_EQ(leveller->numVectors, 0);
    box->Send("enable 1");
    chain.ProcessVectors(1);
    EXPECT_THAT(Take(0), Each(0.5));
}

TEST_F(DspChainTest, RunsOnWithoutAnObjectThatWasFreed) {
    std::unique_ptr<Box> box = Create("level~");
    box->Send("level 0.5");
    chain.Start(*box, 44100.0, kVectorSize, {}, {true});
    box.reset();
    chain.ProcessVectors(1);
    EXPECT_THAT(Take(0), Each(0.0));
}

TEST_F(DspChainTest, KeepsFlushToZeroOutOfTheCallingThread) {
    using velmodsp::FloatingPointControl;
    const std::unique_ptr<Box> box = Create("swap~ 1");
    chain.Start(*box, 44100.0, kVectorSize, {true, true}, {true, true});
    const FloatingPointControl::Word before = FloatingPointControl::Get();
    chain.ProcessVectors(1);
    EXPECT_EQ(FloatingPointControl::Get(), before);
}

TEST_F(DspChainTest, AudioThreadPerformsWhileTheMainThreadWaits) {
    velmotest::CapturedWindow window;
    const std::unique_ptr<Box> box = Create("level~");
    auto* const leveller = reinterpret_cast<Leveller*>(box->Object());
    std::thread::id audioThread = std::this_thread::get_id();
    leveller->audioThread = &audioThread;
    chain.Start(*box, 44100.0, kVectorSize, {}, {true}, 2);
    AudioThread audio(chain);
    box->Send("report 1");
    audio.Perform(2);
    EXPECT_NE(audioThread, std::this_thread::get_id());
    EXPECT_THAT(window.Take(), ElementsAre("[post] level~: vector 0", "[post] level~: vector 1"));
    box->Send("report 0");
    for (int round = 0; round < 1000; ++round) {
        box->Send("level " + std::to_string(round));
        audio.Perform(1);
        ASSERT_THAT(Take(0), Each(round));
    }
    EXPECT_EQ(leveller->numVectors, 1002);
}

TEST_F(DspChainTest, BoxKnowsItsInletsOutletsAndTheirHelpTexts) {
    const std::unique_ptr<Box> swap = Create("swap~"), level = Create("level~");
    EXPECT_EQ(swap->NumInlets(), 2u);
    EXPECT_EQ(swap->NumSignalInlets(), 2u);
    EXPECT_EQ(swap->InletAssist(1), "in 1");
    EXPECT_EQ(swap->OutletAssist(0), "out 0");
    EXPECT_EQ(level->NumOutlets(), 2u);
    EXPECT_EQ(level->NumSignalOutlets(), 1u);
    EXPECT_EQ(level->OutletAssist(0), "");
}

TEST_F(DspChainTest, BoxesThatCannotBeMadeSayWhy) {
    velmotest::CapturedWindow window;
    for (const auto& [text, row] :
         {std::pair("nosuch~ 1 @x 2", "[error] nosuch~: No such object"),
          std::pair("../level~", "[error] ../level~: No such object"), std::pair("", "[error] no object name in \"\""),
          std::pair("3 level~", "[error] no object name in \"3 level~\"")}) {
        EXPECT_EQ(Box::Create(host, text), nullptr) << text;
        EXPECT_THAT(window.Take(), ElementsAre(row));
    }
    const std::unique_ptr<Box> box = Create("level~");
    EXPECT_FALSE(box->Send(""));
    EXPECT_THAT(window.Take(), IsEmpty());
    EXPECT_FALSE(box->Send("nonsense 1"));
    EXPECT_THAT(window.Take(), ElementsAre(StartsWith("[error] level~: ")));
}

}  // namespace
}  // namespace velmohost
