#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <sstream>
#include <thread>

#include "dsp/VelmoDspMultiFixNaN.h"
#include "support/Block.h"

namespace velmodsp {
namespace {

constexpr unsigned int NumChannels = 3;
constexpr std::size_t BlockSize = 32;
constexpr int NumRounds = 3000;
constexpr std::array<float, 3> Replacements{0.25f, -0.5f, 1000.0f};

struct Counter : FixNaNListener {
    void NaNOccured(const String&) override { count.fetch_add(1, std::memory_order_relaxed); }
    std::atomic<int> count{0};
};

/// The words through which an object's main thread mutes and bypasses it.
struct Controls {
    std::atomic<long> mute{0}, bypass{0}, disabled{0};
    std::atomic<bool> stop{false};
};

// Channel k carries k + 1 and every third sample is bad, so each output sample has few right values.
bool IsRightOutput(double y, std::size_t k, bool bypassed) {
    return y == 0.0 || y == static_cast<double>(k + 1) || (bypassed && !std::isfinite(y)) ||
           std::count(Replacements.begin(), Replacements.end(), y) > 0;
}

/// Runs blocks until it is told to stop, and counts wrong samples and the blocks that were neither muted nor bypassed.
void RunAudio(MultiFixNaN& engine, const Controls& controls, std::atomic<int>& wrong, std::atomic<int>& liveBlocks) {
    Block<double> in(NumChannels, BlockSize), out(NumChannels, BlockSize);
    for (std::size_t k = 0; k < NumChannels; ++k) {
        for (std::size_t i = 0; i < BlockSize; ++i) in[k][i] = i % 3 == 0 ? NAN : static_cast<double>(k + 1);
    }
    while (!controls.stop.load()) {
        const long mute = controls.mute.load(), bypass = controls.bypass.load(), disabled = controls.disabled.load();
        engine.Perform(out.Outs(), in.Ins(), BlockSize, mute, bypass, disabled);
        for (std::size_t k = 0; k < NumChannels; ++k) {
            for (double y : out[k]) wrong += !IsRightOutput(y, k, bypass != 0);
        }
        liveBlocks += mute == 0 && bypass == 0 && disabled == 0;
    }
}

TEST(MultiFixNaNThreads, PerformsWhileAnotherThreadSetsEverything) {
    MultiFixNaN engine(NumChannels);
    Counter listener;
    engine.AddListener(&listener);
    engine.Configure(48000.0f, BlockSize, true);
    engine.SetInletsAndOutletsStatus(std::vector<short>(2 * NumChannels, 1).data());

    Controls controls;
    std::atomic<int> wrong{0}, liveBlocks{0};
    std::thread audio([&] { RunAudio(engine, controls, wrong, liveBlocks); });
    int resets = 0;
    for (int round = 0; round < NumRounds || liveBlocks.load() < NumRounds; ++round) {
        engine.SetMode(round % 2 == 0 ? "givenvalue" : "lastvalue");
        engine.SetReplacementValue(Replacements[static_cast<std::size_t>(round) % Replacements.size()]);
        engine.EnableAutoMute(round % 5 == 0);
        engine.SetAutoMuteThreshold(static_cast<float>(round % 7));
        controls.mute.store(round % 11 == 0);
        controls.bypass.store(round % 13 == 0);
        controls.disabled.store(round % 17 == 0);
        if (round % 19 == 0) {
            engine.Reset();
            ++resets;
        }
        std::ostringstream status;
        engine.PrintDspStatus(status);
    }
    controls.stop.store(true);
    audio.join();

    EXPECT_EQ(wrong.load(), 0);
    EXPECT_GE(listener.count.load(), static_cast<int>(NumChannels)) << "the first bad sample of each channel";
    EXPECT_LE(listener.count.load(), static_cast<int>(NumChannels) * (resets + 1));
}

}  // namespace
}  // namespace velmodsp
