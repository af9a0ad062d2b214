#include "dsp/VelmoDspDownsampler.h"

namespace velmodsp {

Downsampler* Downsampler::Create(unsigned int taps) {
    switch (taps) {
        case 5:
            return new Downsampler5Taps;
        case 7:
            return new Downsampler7Taps;
        case 9:
            return new Downsampler9Taps;
        default:
            return new Downsampler3Taps;
    }
}

void Downsampler3Taps::Process(float* out, const float* in, unsigned int numOutputFrames) {
    for (unsigned int i = 0; i < numOutputFrames; ++i) {
        const float even = in[2 * i];
        const float oddQuarter = 0.25f * in[2 * i + 1];
        out[i] = lastQuarter + 0.5f * even + oddQuarter;
        lastQuarter = oddQuarter;
    }
}

// The even samples' response is cK ... c1 c1 ... cK, one coefficient an output, starting with the current one; an odd
// sample reaches only the output K places later, times c0. K = NumSideCoefficients.
template <unsigned int Taps>
void HalfBandDownsampler<Taps>::Process(float* out, const float* in, unsigned int numOutputFrames) {
    constexpr unsigned int K = NumSideCoefficients;
    for (unsigned int i = 0; i < numOutputFrames; ++i) {
        const float even = in[2 * i];
        const float odd = in[2 * i + 1];
        std::array<float, K> products;  // cK x ... c1 x
        for (unsigned int k = 0; k < K; ++k) products[k] = coefficients[K - k] * even;

        out[i] = outputsToCome[0] + products[0];
        for (unsigned int k = 1; k < Taps; ++k) {
            outputsToCome[k - 1] = outputsToCome[k] + products[k < K ? k : Taps - k];
        }
        outputsToCome[Taps - 1] = products[0];
        outputsToCome[K - 1] += coefficients[0] * odd;
    }
}

template <unsigned int Taps>
void HalfBandDownsampler<Taps>::Clear() {
    outputsToCome.fill(0.0f);
}

Downsampler5Taps::Downsampler5Taps()
    : HalfBandDownsampler({0.5f, 0.3005780279636383f, -0.06358381360769272f, 0.013005780056118965f}) {}

Downsampler7Taps::Downsampler7Taps()
    : HalfBandDownsampler(
          {0.5f, 0.3054862916469574f, -0.07231920212507248f, 0.020573565736413002f, -0.0037406482733786106f}) {}

Downsampler9Taps::Downsampler9Taps()
    : HalfBandDownsampler(
          {0.5f, 0.3077392578125f, -0.07794189453125f, 0.02618408203125f, -0.007080078125f, 0.0010986328125f}) {}

}  // namespace velmodsp
