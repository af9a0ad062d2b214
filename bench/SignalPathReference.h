#pragma once

#include <vector>

#include "utils/VelmoDspAudioBuffer.h"

namespace velmodsp::bench {

/// The signal path in the same three steps as the engine's (all channels to 32 bits, repair, back to 64 bits), each as
/// the loop that anybody would write. Nothing is reported, and no connection is looked up.
class ReferencePath {
public:
    /// @param byLastValue the mode: a bad sample becomes the channel's last finite one, else 0
    ReferencePath(unsigned int numChannels, unsigned long blockSize, bool byLastValue);

    void Perform(double** outs, const double** ins, unsigned long n);

private:
    const unsigned int numChannels;
    const bool lastValue;
    AudioBuffer narrow;
    AudioBuffer repaired;
    std::vector<float> last;
};

}  // namespace velmodsp::bench
