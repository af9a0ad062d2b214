#include "dsp/VelmoDspMultiUpsampler.h"

#include <algorithm>

#include "dsp/VelmoDspResamplingKernels.h"

namespace velmodsp {

MultiUpsampler::MultiUpsampler(unsigned int numChannels) {
    ResizeVector(lastOutputs, numChannels);
    Clear();
}

void MultiUpsampler::Process(float** outs, const float** ins, unsigned int n) {
    const auto interpolate = ResamplingKernels::Active().interpolate;
    for (unsigned long k = 0; k < lastOutputs.Size(); ++k) {
        lastOutputs[k] = interpolate(outs[k], ins[k], n / 2, lastOutputs[k]);
        if (n % 2 != 0) outs[k][n - 1] = lastOutputs[k];
    }
}

void MultiUpsampler::Clear() { std::fill(lastOutputs.begin(), lastOutputs.end(), 0.0f); }

}  // namespace velmodsp
