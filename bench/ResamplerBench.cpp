// How fast the resamplers of one channel are, against direct-form scalar code (`x_reference`): the classes in blocks of
// several lengths, and what this processor's other instruction sets would make of one of them. `items_per_second` is
// samples at the higher rate; `block` is their number at the lower rate.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "InTurns.h"
#include "ResamplerReference.h"
#include "dsp/VelmoDspMultiDownsampler.h"
#include "dsp/VelmoDspMultiUpsampler.h"

namespace {

using namespace velmodsp;
using bench::Against;

constexpr unsigned int BlockOfKernels = 256;

std::vector<float> Noise(std::size_t n) {
    std::mt19937 random(1);
    std::vector<float> samples(n);
    for (float& x : samples) x = static_cast<float>(static_cast<double>(random()) / 2147483648.0 - 1.0);
    return samples;
}

void BM_Downsampler(benchmark::State& state) {
    const auto taps = static_cast<unsigned int>(state.range(0));
    const auto n = static_cast<unsigned int>(state.range(1));
    const std::vector<float> in = Noise(2 * n);
    std::vector<float> out(n);
    const std::unique_ptr<Downsampler> decimator(Downsampler::Create(taps));
    bench::ReferenceDownsampler reference(taps, n);
    bench::InTurns(
        state, 2 * n, [&] { decimator->Process(out.data(), in.data(), n); },
        Against{"reference", [&] { reference.Process(out.data(), in.data(), n); }});
}

void BM_Upsampler(benchmark::State& state) {
    const auto n = static_cast<unsigned int>(state.range(0));
    const std::vector<float> in = Noise(n);
    std::vector<float> out(2 * n);
    const float* ins[]{in.data()};
    float* outs[]{out.data()};
    MultiUpsampler expander(1);
    float last = 0.0f;
    bench::InTurns(
        state, 2 * n, [&] { expander.Process(outs, ins, 2 * n); },
        Against{"reference", [&] { last = bench::ReferenceUpsample(out.data(), in.data(), 2 * n, last); }});
}

template <unsigned int Taps>
void BM_HalfBandFilter(benchmark::State& state, const ResamplingKernels* kernels) {
    const std::vector<float> in = Noise(2 * BlockOfKernels);
    std::vector<float> out(BlockOfKernels);
    HalfBandFilter<Taps> filter{};
    bench::ReferenceDownsampler reference(Taps, BlockOfKernels);
    bench::InTurns(
        state, 2 * BlockOfKernels, [&] { kernels->Decimate<Taps>()(out.data(), in.data(), BlockOfKernels, filter); },
        Against{"reference", [&] { reference.Process(out.data(), in.data(), BlockOfKernels); }});
}

const bool registered = [] {
    for (const ResamplingKernels* kernels : ResamplingKernels::Available().subspan(1)) {  // past the plain loops
        const std::string set = kernels->name;
        const auto add = [&](const std::string& what, auto function) {
            benchmark::RegisterBenchmark((set + "/" + what).c_str(), function, kernels)->UseManualTime();
        };
        add("taps:5", BM_HalfBandFilter<5>);
        add("taps:7", BM_HalfBandFilter<7>);
        add("taps:9", BM_HalfBandFilter<9>);
    }
    return true;
}();

BENCHMARK(BM_Downsampler)
    ->ArgNames({"taps", "block"})
    ->ArgsProduct({{3, 5, 7, 9}, {8, 32, 256, 1024}})
    ->UseManualTime();
BENCHMARK(BM_Upsampler)->ArgName("block")->Arg(8)->Arg(32)->Arg(256)->Arg(1024)->UseManualTime();

}  // namespace
