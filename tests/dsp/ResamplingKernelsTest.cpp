#include "dsp/VelmoDspResamplingKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "support/Noise.h"

namespace velmodsp {
namespace {

using Samples = std::vector<float>;

constexpr unsigned int NumFrames = 150;    // at the lower rate
constexpr unsigned int LongestFirst = 67;  // more than four vectors of every instruction set

/// Noise with signed zeros, subnormals, huge and infinite values and NaN in its second half.
Samples DifficultNoise(std::size_t n) {
    using Limits = std::numeric_limits<float>;
    const Samples special{0.0f,           -0.0f,
                          Limits::max(),  Limits::denorm_min(),
                          -Limits::max(), -Limits::min() / 3,
                          Limits::max(),  Limits::infinity(),
                          1.0f,           Limits::quiet_NaN()};
    Samples x = Noise(n, 1);
    for (std::size_t i = 0; n / 2 + 11 * i < n; ++i) x[n / 2 + 11 * i] = special[i % special.size()];
    return x;
}

/// So uneven that other orders of summation round differently.
template <unsigned int Taps>
HalfBandFilter<Taps> TestFilter() {
    HalfBandFilter<Taps> filter{{0.5f}};
    for (std::size_t k = 1; k < filter.coefficients.size(); ++k) {
        filter.coefficients[k] = (k % 2 == 0 ? -0.7f : 0.3f) / static_cast<float>(k * k);
    }
    return filter;
}

/// Of a NaN only that it is one.
std::vector<std::uint32_t> BitsOf(const Samples& samples) {
    std::vector<std::uint32_t> bits;
    for (float x : samples) bits.push_back(std::bit_cast<std::uint32_t>(std::isnan(x) ? NAN : x));
    return bits;
}

/// Runs a decimator, `process(out, in, n)`, over all of `x` in place and in two blocks.
template <class Process>
Samples Halve(const Samples& x, unsigned int first, const Process& process) {
    Samples samples = x;
    float* const second = samples.data() + 2 * first;
    process(samples.data(), samples.data(), first);
    process(second, second, NumFrames - first);
    std::copy_n(second, NumFrames - first, samples.data() + first);
    samples.resize(NumFrames);
    return samples;
}

template <unsigned int Taps>
Samples HalfBand(const ResamplingKernels& kernels, const Samples& x, unsigned int first) {
    HalfBandFilter<Taps> filter = TestFilter<Taps>();
    return Halve(x, first,
                 [&](float* out, const float* in, unsigned int n) { kernels.Decimate<Taps>()(out, in, n, filter); });
}

Samples HalveWith3Taps(const ResamplingKernels& kernels, const Samples& x, unsigned int first) {
    float lastQuarter = 0.0f;
    return Halve(x, first, [&](float* out, const float* in, unsigned int n) {
        lastQuarter = kernels.decimate3(out, in, n, lastQuarter);
    });
}

Samples Double(const ResamplingKernels& kernels, const Samples& x, unsigned int first) {
    Samples y(2 * NumFrames);
    const float* const in = &x[NumFrames];
    const float last = kernels.interpolate(y.data(), in, first, 0.0f);
    kernels.interpolate(y.data() + 2 * first, in + first, NumFrames - first, last);
    return y;
}

/// What the plain loops make of the whole in one block is what every set must make of it, however it is cut.
const ResamplingKernels& PlainLoops() { return *ResamplingKernels::Available().front(); }

class ResamplingKernelsTest : public testing::TestWithParam<const ResamplingKernels*> {};

TEST_P(ResamplingKernelsTest, GiveTheSameBitsInBlocksOfAnyLength) {
    const std::pair<const char*, Samples (*)(const ResamplingKernels&, const Samples&, unsigned int)> resamplers[] = {
        {"3 taps", HalveWith3Taps},
        {"5 taps", HalfBand<5>},
        {"7 taps", HalfBand<7>},
        {"9 taps", HalfBand<9>},
        {"doubled", Double}};
    const Samples x = DifficultNoise(2 * NumFrames);
    for (const auto& [name, resample] : resamplers) {
        const Samples expected = resample(PlainLoops(), x, 0);
        for (unsigned int first = 0; first <= LongestFirst; ++first)
            EXPECT_EQ(BitsOf(resample(*GetParam(), x, first)), BitsOf(expected))
                << name << ", first block of " << first;
    }
}

INSTANTIATE_TEST_SUITE_P(EverySet, ResamplingKernelsTest, testing::ValuesIn(ResamplingKernels::Available()),
                         [](const auto& set) { return std::string(set.param->name); });

}  // namespace
}  // namespace velmodsp
