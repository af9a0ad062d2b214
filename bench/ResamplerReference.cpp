#include "ResamplerReference.h"

#include <algorithm>

namespace velmodsp::bench {

namespace {

std::vector<float> CoefficientsFor(unsigned int taps) {
    switch (taps) {
        case 5:
            return {0.5f, 0.3005780279636383f, -0.06358381360769272f, 0.013005780056118965f};
        case 7:
            return {0.5f, 0.3054862916469574f, -0.07231920212507248f, 0.020573565736413002f, -0.0037406482733786106f};
        case 9:
            return {0.5f, 0.3077392578125f, -0.07794189453125f, 0.02618408203125f, -0.007080078125f, 0.0010986328125f};
        default:
            return {0.5f, 0.25f};
    }
}

}  // namespace

ReferenceDownsampler::ReferenceDownsampler(unsigned int numTaps, unsigned int maxOutputFrames)
    : taps(numTaps), coefficients(CoefficientsFor(numTaps)), line(2 * (numTaps + maxOutputFrames)) {}

void ReferenceDownsampler::Process(float* out, const float* in, unsigned int numOutputFrames) {
    float* const block = line.data() + 2 * taps;
    std::copy_n(in, 2 * numOutputFrames, block);
    // The filter of 3 taps has no delay; the others' centre lies as many samples back as they have taps.
    const float* centre = taps == 3 ? block : block - taps;
    const unsigned int numSides = static_cast<unsigned int>(coefficients.size()) - 1;
    for (unsigned int i = 0; i < numOutputFrames; ++i) {
        float sum = coefficients[0] * centre[0];
        for (unsigned int k = 1; k <= numSides; ++k) {
            const int distance = static_cast<int>(2 * k - 1);
            sum += coefficients[k] * (centre[distance] + centre[-distance]);
        }
        out[i] = sum;
        centre += 2;
    }
    std::copy_n(line.data() + 2 * numOutputFrames, 2 * taps, line.data());
}

float ReferenceUpsample(float* out, const float* in, unsigned int numOutputFrames, float last) {
    for (unsigned int k = 0; k < numOutputFrames / 2; ++k) {
        out[2 * k] = (last + in[k]) * 0.5f;
        out[2 * k + 1] = in[k];
        last = in[k];
    }
    return last;
}

}  // namespace velmodsp::bench
