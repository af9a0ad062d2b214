#pragma once

#include "math/VelmoDspVector.h"

namespace velmodsp {

/// Doubles the sample rate of several channels by linear interpolation: with x the input and y the output of a channel,
///
///     y[2k+1] = x[k],   y[2k] = (x[k-1] + x[k]) / 2
///
/// where x[-1] is the last output of the block before, 0 at first.
class MultiUpsampler {
public:
    /// @throws Exception when memory runs out
    explicit MultiUpsampler(unsigned int numChannels);

    /// Writes `n` samples of every channel of `outs` from `n / 2` samples of every channel of `ins`. The last sample of
    /// an odd block repeats the one before it. No output may overlap an input. Audio thread; real-time safe.
    void Process(float** outs, const float** ins, unsigned int n);

    /// Forgets the samples that passed. Audio thread, or main thread while audio is stopped; real-time safe.
    void Clear();

private:
    Vector<float> lastOutputs;  // one a channel
};

}  // namespace velmodsp
