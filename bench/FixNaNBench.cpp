// What the repair of NaN and infinite samples costs, as a multiple of a floor that is measured in turns with it:
//
//   FixNaN, MultiFixNaN    32-bit blocks; the floor copies them with memcpy
//   Perform                the host's 64-bit blocks; the floor converts them to 32 bits and back
//
// `x_floor` is the median of the ratios and the figure to compare between machines and versions; `items_per_second` is
// samples of all channels. Cases are named by the number of channels, by how many samples there are to a bad one (0: no
// bad ones) and by the mode (0 "givenvalue", 1 "lastvalue"). Run it with run.sh.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "InTurns.h"
#include "dsp/VelmoDspMultiFixNaN.h"
#include "platform/VelmoDspFloatingPointControl.h"
#include "platform/VelmoDspVectorConversion.h"

namespace {

using namespace velmodsp;

constexpr std::size_t BlockSize = 64;  // the host's usual vector

template <class Sample>
struct Channels {
    explicit Channels(std::size_t numChannels) : samples(numChannels * BlockSize) {
        for (std::size_t k = 0; k < numChannels; ++k) pointers.push_back(&samples[k * BlockSize]);
    }
    std::vector<Sample> samples;
    std::vector<Sample*> pointers;
};

template <class Sample>
const Sample** AsInputs(Channels<Sample>& channels) {
    return const_cast<const Sample**>(channels.pointers.data());
}

/// Seeded noise in which about one sample in `samplesPerBad` is NaN or infinite; none when that is 0.
template <class Sample>
void FillWithNoise(Channels<Sample>& channels, std::int64_t samplesPerBad) {
    constexpr Sample inf = std::numeric_limits<Sample>::infinity();
    const Sample bad[]{std::numeric_limits<Sample>::quiet_NaN(), inf, -inf};
    std::mt19937 random(1);
    for (Sample& x : channels.samples) {
        x = static_cast<Sample>(static_cast<double>(random()) / 2147483648.0 - 1.0);
        if (samplesPerBad > 0 && static_cast<std::int64_t>(random()) % samplesPerBad == 0) x = bad[random() % 3];
    }
}

/// Times `work` and `floor` in turns, each for one block of every channel.
void Compare(benchmark::State& state, std::size_t numChannels, const auto& work, const auto& floor) {
    bench::InTurns(state, numChannels * BlockSize, work, bench::Against{"floor", floor});
}

void Prepare(MultiFixNaN& engine, std::int64_t mode) {
    engine.SetMode(mode == FixNaN::GivenValue ? "givenvalue" : "lastvalue");
    engine.Configure(48000.0f, BlockSize, true);
    engine.SetInletsAndOutletsStatus(std::vector<short>(2 * engine.GetNumChannels(), 1).data());
}

void BM_FixNaN(benchmark::State& state) {
    Channels<float> in(1), out(1);
    FillWithNoise(in, state.range(1));
    FixNaN repair;
    repair.SetMode(state.range(2) == FixNaN::GivenValue ? "givenvalue" : "lastvalue");
    benchmark::DoNotOptimize(out.samples.data());
    Compare(
        state, 1, [&] { repair.Process(out.samples.data(), in.samples.data(), BlockSize); },
        [&] { std::memcpy(out.samples.data(), in.samples.data(), BlockSize * sizeof(float)); });
}

void BM_MultiFixNaN(benchmark::State& state) {
    const auto numChannels = static_cast<unsigned int>(state.range(0));
    Channels<float> in(numChannels), out(numChannels);
    FillWithNoise(in, state.range(1));
    MultiFixNaN engine(numChannels);
    Prepare(engine, state.range(2));
    benchmark::DoNotOptimize(out.samples.data());
    Compare(
        state, numChannels, [&] { engine.Process(out.pointers.data(), AsInputs(in), BlockSize); },
        [&] {
            for (unsigned int k = 0; k < numChannels; ++k) {
                std::memcpy(out.pointers[k], in.pointers[k], BlockSize * sizeof(float));
                benchmark::ClobberMemory();
            }
        });
}

void BM_Perform(benchmark::State& state) {
    const ScopedFloatingPointControl restoreAtEnd;
    const auto numChannels = static_cast<unsigned int>(state.range(0));
    Channels<double> in(numChannels), out(numChannels);
    Channels<float> between(numChannels);
    FillWithNoise(in, state.range(1));
    MultiFixNaN engine(numChannels);
    Prepare(engine, state.range(2));
    benchmark::DoNotOptimize(out.samples.data());
    benchmark::DoNotOptimize(between.samples.data());
    Compare(
        state, numChannels, [&] { engine.Perform(out.pointers.data(), AsInputs(in), BlockSize, 0, 0, 0); },
        [&] {
            for (unsigned int k = 0; k < numChannels; ++k) {
                VectorConversion::DoubleToFloat(between.pointers[k], in.pointers[k], BlockSize);
            }
            for (unsigned int k = 0; k < numChannels; ++k) {
                VectorConversion::FloatToDouble(out.pointers[k], between.pointers[k], BlockSize);
            }
        });
}

const std::vector<std::string> ArgumentNames{"channels", "bad_one_in", "mode"};

BENCHMARK(BM_FixNaN)->ArgNames(ArgumentNames)->ArgsProduct({{1}, {0, 1000, 2}, {0, 1}})->UseManualTime();
BENCHMARK(BM_MultiFixNaN)->ArgNames(ArgumentNames)->ArgsProduct({{1, 16, 250}, {0, 1000, 2}, {0, 1}})->UseManualTime();
BENCHMARK(BM_Perform)->ArgNames(ArgumentNames)->ArgsProduct({{1, 16, 250}, {0, 1000, 2}, {0, 1}})->UseManualTime();

}  // namespace
