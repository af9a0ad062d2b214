#include "dsp/VelmoDspMultiUpsampler.h"

#include <algorithm>

namespace velmodsp {

namespace {

/// Interpolates one channel and returns its last output; `last` is that of the block before.
float Expand(float* out, const float* in, unsigned int n, float last) {
    const unsigned int numInputFrames = n / 2;
    for (unsigned int k = 0; k < numInputFrames; ++k) {
        const float before = k == 0 ? last : in[k - 1];
        out[2 * k] = (before + in[k]) * 0.5f;
        out[2 * k + 1] = in[k];
    }
    if (numInputFrames > 0) last = in[numInputFrames - 1];
    if (n % 2 != 0) out[n - 1] = last;
    return last;
}

}  // namespace

MultiUpsampler::MultiUpsampler(unsigned int numChannels) {
    ResizeVector(lastOutputs, numChannels);
    Clear();
}

void MultiUpsampler::Process(float** outs, const float** ins, unsigned int n) {
    for (unsigned long k = 0; k < lastOutputs.Size(); ++k) {
        lastOutputs[k] = Expand(outs[k], ins[k], n, lastOutputs[k]);
    }
}

void MultiUpsampler::Clear() { std::fill(lastOutputs.begin(), lastOutputs.end(), 0.0f); }

}  // namespace velmodsp
