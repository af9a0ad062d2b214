#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "velmodsp.h"

/// High-pass filter of first order on any number of channels. It takes out an offset completely and halves the power at
/// the cutoff, as long as that lies well below the sample rate:
///
///     y[n] = (1 + R) / 2 (x[n] - x[n-1]) + R y[n-1],   R = exp(-2 pi cutoff / samplerate)
class HighPass : public velmodsp::SignalProcessing {
public:
    /// @param cutoffInHz above 0
    HighPass(unsigned int numChannels, float cutoffInHz)
        : SignalProcessing(numChannels, numChannels), cutoff(cutoffInHz), memories(numChannels) {}

    /// Counts from the next block on. Any thread; real-time safe.
    void SetCutoff(float cutoffInHz) noexcept { cutoff.Store(cutoffInHz); }

    /// Forgets what passed, so that it is not heard when audio starts again. Audio stopped; `Configure` calls it.
    void Clear() override { std::fill(memories.begin(), memories.end(), Memory()); }

    /// One block; input and output may be the same buffer. Audio thread; real-time safe.
    void Process(float** outs, const float** ins, unsigned long n) override {
        const float feedback = std::exp(-velmodsp::Constants::TwoPi<float> * cutoff.Load() / GetSamplerate());
        const float gain = (1.0f + feedback) / 2.0f;
        for (unsigned int k = 0; k < GetNumOutputs(); ++k) {
            Memory memory = memories[k];
            for (unsigned long i = 0; i < n; ++i) {
                const float x = ins[k][i];
                memory.output = gain * (x - memory.input) + feedback * memory.output;
                memory.input = x;
                outs[k][i] = memory.output;
            }
            memories[k] = memory;
        }
    }

private:
    /// The last samples of a channel.
    struct Memory {
        float input = 0.0f;
        float output = 0.0f;
    };

    velmodsp::SharedWord<float> cutoff;  // Hz; written by any thread
    std::vector<Memory> memories;        // audio thread only
};
