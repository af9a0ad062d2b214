#pragma once

#include "dsp/VelmoDspDownsampler.h"
#include "math/VelmoDspVector.h"

namespace velmodsp {

/// Halves the sample rate of several channels, each with a `Downsampler` of its own.
class MultiDownsampler {
public:
    /// @param taps see `Downsampler::Create`
    /// @throws Exception or std::bad_alloc when memory runs out
    MultiDownsampler(unsigned int numChannels, unsigned int taps);
    ~MultiDownsampler();
    MultiDownsampler(const MultiDownsampler&) = delete;
    MultiDownsampler& operator=(const MultiDownsampler&) = delete;

    /// Reads `2 * n` samples of every channel of `ins` and writes `n` samples of every channel of `outs`. A channel's
    /// output may be its own input. Audio thread; real-time safe.
    void Process(float** outs, const float** ins, unsigned int n);

    /// Forgets the samples that passed. Audio thread, or main thread while audio is stopped; real-time safe.
    void Clear();

private:
    void DeleteDecimators() noexcept;

    Vector<Downsampler*> decimators;  // owned
};

}  // namespace velmodsp
