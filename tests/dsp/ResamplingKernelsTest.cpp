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

/// x[i - distance], 0 before the start.
float Before(const Samples& x, std::size_t i, std::size_t distance) { return i < distance ? 0.0f : x[i - distance]; }

/// So uneven that other orders of summation round differently.
template <unsigned int Taps>
HalfBandFilter<Taps> TestFilter() {
    HalfBandFilter<Taps> filter{{0.5f}};
    for (std::size_t k = 1; k < filter.coefficients.size(); ++k) {
        filter.coefficients[k] = (k % 2 == 0 ? -0.7f : 0.3f) / static_cast<float>(k * k);
    }
    return filter;
}

/// Summed from the oldest input sample to the newest.
template <unsigned int Taps>
Samples ExpectedHalf(const Samples& x) {
    const auto c = TestFilter<Taps>().coefficients;
    constexpr std::size_t K = c.size() - 1;
    Samples y(x.size() / 2);
    for (std::size_t i = 0; i < y.size(); ++i) {
        float sum = c[K] * Before(x, 2 * i, 2 * Taps);
        for (std::size_t k = K - 1; k >= 1; --k) sum += c[k] * Before(x, 2 * i, Taps + 2 * k - 1);
        sum += c[0] * Before(x, 2 * i, Taps);
        for (std::size_t k = 1; k <= K; ++k) sum += c[k] * Before(x, 2 * i, Taps - (2 * k - 1));
        y[i] = sum;
    }
    return y;
}

Samples ExpectedHalfOf3Taps(const Samples& x) {
    Samples y(x.size() / 2);
    for (std::size_t i = 0; i < y.size(); ++i) {
        y[i] = 0.25f * Before(x, 2 * i, 1) + 0.5f * x[2 * i] + 0.25f * x[2 * i + 1];
    }
    return y;
}

Samples ExpectedDouble(const Samples& x) {
    Samples y(2 * x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        y[2 * i] = (Before(x, i, 1) + x[i]) * 0.5f;
        y[2 * i + 1] = x[i];
    }
    return y;
}

void ExpectSameBits(const Samples& y, const Samples& expected, const std::string& where) {
    const auto same = [](float a, float b) {
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) || (std::isnan(a) && std::isnan(b));
    };
    const auto difference = std::mismatch(y.begin(), y.end(), expected.begin(), expected.end(), same);
    EXPECT_EQ(difference.first, y.end()) << where << ": y[" << difference.first - y.begin() << "] is "
                                         << *difference.first << ", expected " << *difference.second;
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
void ExpectHalfBandFilter(const ResamplingKernels& kernels) {
    const Samples x = DifficultNoise(2 * NumFrames);
    const Samples expected = ExpectedHalf<Taps>(x);
    for (unsigned int first = 0; first <= LongestFirst; ++first) {
        HalfBandFilter<Taps> filter = TestFilter<Taps>();
        const Samples y = Halve(x, first, [&](float* out, const float* in, unsigned int n) {
            kernels.Decimate<Taps>()(out, in, n, filter);
        });
        ExpectSameBits(y, expected, std::to_string(Taps) + " taps, first block of " + std::to_string(first));
    }
}

class ResamplingKernelsTest : public testing::TestWithParam<const ResamplingKernels*> {};

TEST_P(ResamplingKernelsTest, FilterToTheBitInBlocksOfAnyLength) {
    ExpectHalfBandFilter<5>(*GetParam());
    ExpectHalfBandFilter<7>(*GetParam());
    ExpectHalfBandFilter<9>(*GetParam());

    const Samples x = DifficultNoise(2 * NumFrames);
    const Samples expected = ExpectedHalfOf3Taps(x);
    for (unsigned int first = 0; first <= LongestFirst; ++first) {
        float lastQuarter = 0.0f;
        const Samples y = Halve(x, first, [&](float* out, const float* in, unsigned int n) {
            lastQuarter = GetParam()->decimate3(out, in, n, lastQuarter);
        });
        ExpectSameBits(y, expected, "3 taps, first block of " + std::to_string(first));
    }
}

TEST_P(ResamplingKernelsTest, InterpolateToTheBitInBlocksOfAnyLength) {
    const Samples x = DifficultNoise(NumFrames);
    const Samples expected = ExpectedDouble(x);
    for (unsigned int first = 0; first <= LongestFirst; ++first) {
        Samples y(2 * NumFrames);
        const float last = GetParam()->interpolate(y.data(), x.data(), first, 0.0f);
        GetParam()->interpolate(y.data() + 2 * first, x.data() + first, NumFrames - first, last);
        ExpectSameBits(y, expected, "first block of " + std::to_string(first));
    }
}

INSTANTIATE_TEST_SUITE_P(EverySet, ResamplingKernelsTest, testing::ValuesIn(ResamplingKernels::Available()),
                         [](const auto& set) { return std::string(set.param->name); });

}  // namespace
}  // namespace velmodsp
