#include <algorithm>

#include "dsp/VelmoDspResamplingKernelSets.h"

namespace velmodsp {

namespace ScalarResamplingLoops {

namespace {

// NOLINTBEGIN(bugprone-implicit-widening-of-multiplication-result): blocks are far shorter than 2^31 samples
float Decimate3(float* out, const float* in, unsigned int n, float lastQuarter) noexcept {
    for (unsigned int i = 0; i < n; ++i) {
        const float even = in[2 * i];
        const float oddQuarter = 0.25f * in[2 * i + 1];
        out[i] = lastQuarter + 0.5f * even + oddQuarter;
        lastQuarter = oddQuarter;
    }
    return lastQuarter;
}

template <std::size_t Size>
void PushBack(std::array<float, Size>& history, float newest) {
    std::copy(history.begin() + 1, history.end(), history.begin());
    history.back() = newest;
}

template <unsigned int Taps>
void Decimate(float* out, const float* in, unsigned int n, HalfBandFilter<Taps>& filter) noexcept {
    constexpr unsigned int K = HalfBandFilter<Taps>::NumSideCoefficients;
    const auto& c = filter.coefficients;
    const float* const evens = filter.evens.data() + filter.evens.size() - (Taps + 1);
    const float* const centre = filter.odds.data() + filter.odds.size() - (K + 1);
    for (unsigned int i = 0; i < n; ++i) {
        const float odd = in[2 * i + 1];
        PushBack(filter.evens, in[2 * i]);
        PushBack(filter.odds, odd);
        float sum = c[K] * evens[0];
        for (unsigned int k = 1; k < K; ++k) sum += c[K - k] * evens[k];
        sum += c[0] * centre[0];
        for (unsigned int k = 1; k <= K; ++k) sum += c[k] * evens[K - 1 + k];
        out[i] = sum;
    }
}

float Interpolate(float* out, const float* in, unsigned int n, float last) noexcept {
    for (unsigned int i = 0; i < n; ++i) {
        out[2 * i] = (last + in[i]) * 0.5f;
        out[2 * i + 1] = in[i];
        last = in[i];
    }
    return last;
}
// NOLINTEND(bugprone-implicit-widening-of-multiplication-result)

}  // namespace

}  // namespace ScalarResamplingLoops

constinit const ResamplingKernels ScalarResampling{
    "scalar",
    &ScalarResamplingLoops::Decimate3,
    {&ScalarResamplingLoops::Decimate<5>, &ScalarResamplingLoops::Decimate<7>, &ScalarResamplingLoops::Decimate<9>},
    &ScalarResamplingLoops::Interpolate};

}  // namespace velmodsp
