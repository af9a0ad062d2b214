#pragma once

#include <vector>

namespace velmodsp::bench {

/// What `Downsampler` computes, in direct form: every output is the sum of the filter's formula, from a line that holds
/// the samples before the block and the block itself.
class ReferenceDownsampler {
public:
    /// @param numTaps 3, 5, 7 or 9
    /// @param maxOutputFrames the longest block
    ReferenceDownsampler(unsigned int numTaps, unsigned int maxOutputFrames);
    void Process(float* out, const float* in, unsigned int numOutputFrames);

private:
    unsigned int taps;
    std::vector<float> coefficients;  // the centre's, then those beside it outwards
    std::vector<float> line;
};

/// What `MultiUpsampler` computes for one channel; returns the last output, which the next call takes as `last`.
float ReferenceUpsample(float* out, const float* in, unsigned int numOutputFrames, float last);

}  // namespace velmodsp::bench
