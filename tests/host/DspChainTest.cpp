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

    Samples Take(unsigned outlet) { return {chain.OutletSamples(outlet), chain.OutletSamples(outlet) + kVectorSize}; }

    Host host;
    DspChain chain;
};

TEST_F(DspChainTest, SharesBuffersUnlessTheObjectRefuses) {
    using velmodsp::FloatingPointControl;
    const FloatingPointControl::Word before = FloatingPointControl::Get();
    const Samples left{1, 2, 3, 4}, right{5, 6, 7, 8}, silence(4, 0.0);
    struct {
        const char* text;
        bool isRightConnected;
        Samples first, second;
    } const cases[] = {
        {"swap~ 1", true, right, left},
        {"swap~", true, right, right},  // the first copy has overwritten the left inlet by the time it is read
        {"swap~ 1", false, silence, left},
        {"swap~", false, silence, silence},
    };
    for (const auto& [text, isRightConnected, first, second] : cases) {
        const std::unique_ptr<Box> box = Create(text);
        chain.Start(*box, 44100.0, kVectorSize, {true, isRightConnected}, {true, true});
        EXPECT_EQ(chain.InletSamples(1) != nullptr, isRightConnected);
        Fill(0, left);
        if (isRightConnected) Fill(1, right);
        chain.ProcessVectors(1);
        EXPECT_EQ(Take(0), first) << text << ", right inlet connected: " << isRightConnected;
        EXPECT_EQ(Take(1), second) << text << ", right inlet connected: " << isRightConnected;
        chain.Stop();
    }
    EXPECT_EQ(FloatingPointControl::Get(), before) << "flush to zero stays out of the calling thread";
}

TEST_F(DspChainTest, DisabledAndFreedObjectsAreSkippedAndSilent) {
    std::unique_ptr<Box> box = Create("level~");
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
    box.reset();
    chain.ProcessVectors(1);
    EXPECT_THAT(Take(0), Each(0.0));
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

}  // namespace
}  // namespace velmohost
