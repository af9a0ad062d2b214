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
    lastQuarter = ResamplingKernels::Active().decimate3(out, in, numOutputFrames, lastQuarter);
}

template <unsigned int Taps>
void HalfBandDownsampler<Taps>::Process(float* out, const float* in, unsigned int numOutputFrames) {
    ResamplingKernels::Active().Decimate<Taps>()(out, in, numOutputFrames, filter);
}

template <unsigned int Taps>
void HalfBandDownsampler<Taps>::Clear() {
    filter.evens.fill(0.0f);
    filter.odds.fill(0.0f);
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
