#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <sstream>
#include <thread>

#include "dsp/NaNActor.h"
#include "dsp/VelmoDspMultiFixNaN.h"
#include "support/Block.h"

namespace velmodsp {
namespace {

constexpr unsigned int NumChannels = 3;
constexpr std::size_t BlockSize = 32;
constexpr int NumRounds = 3000;
constexpr std::array<float, 3> Replacements{0.25f, -0.5f, 1000.0f};

// Channel k carries k + 1 and every third sample is bad, so each output sample has few right values.
bool IsRightOutput(double y, std::size_t k) {
    return y == 0.0 || y == static_cast<double>(k + 1) || std::count(Replacements.begin(), Replacements.end(), y) > 0;
}

TEST(MultiFixNaNThreads, PerformsWhileAnotherThreadSetsEverything) {
    MultiFixNaN engine(NumChannels);
    std::atomic<int> numReports{0};
    NaNActor listener([&](const std::string&) { ++numReports; });
    engine.AddListener(&listener);
    engine.Configure(48000.0f, BlockSize, true);
    engine.SetInletsAndOutletsStatus(std::vector<short>(2 * NumChannels, 1).data());

    std::atomic<bool> stop{false};
    std::atomic<long> numWrong{0}, numBlocks{0};
    std::thread audio([&] {
        Block<double> in(NumChannels, BlockSize), out(NumChannels, BlockSize);
        for (std::size_t k = 0; k < NumChannels; ++k)
            for (std::size_t i = 0; i < BlockSize; ++i) in[k][i] = i % 3 == 0 ? NAN : static_cast<double>(k + 1);
        for (; !stop; ++numBlocks) {
            engine.Perform(out.Outs(), in.Ins(), BlockSize, 0, 0, 0);
            for (std::size_t k = 0; k < NumChannels; ++k)
                for (const double y : out[k]) numWrong += !IsRightOutput(y, k);
        }
    });
    int numResets = 0;
    for (int round = 0; round < NumRounds || numBlocks < NumRounds; ++round) {
        engine.SetMode(round % 2 == 0 ? "givenvalue" : "lastvalue");
        engine.SetReplacementValue(Replacements[static_cast<std::size_t>(round) % Replacements.size()]);
        engine.EnableAutoMute(round % 5 == 0);
        engine.SetAutoMuteThreshold(static_cast<float>(round % 7));
        if (round % 19 == 0) {
            engine.Reset();
            ++numResets;
        }
        std::ostringstream status;
        engine.PrintDspStatus(status);
    }
    stop = true;
    audio.join();

    EXPECT_EQ(numWrong, 0);
    EXPECT_GE(numReports, static_cast<int>(NumChannels)) << "the first bad sample of each channel";
    EXPECT_LE(numReports, static_cast<int>(NumChannels) * (numResets + 1));
}

}  // namespace
}  // namespace velmodsp
