#pragma once

#include <vector>

#include "utils/VelmoDspAudioBuffer.h"

namespace velmodsp {

using Samples = std::vector<float>;

inline Samples Channel(const AudioBuffer& buffer, unsigned int channel) {
    return {buffer.GetChannel(channel), buffer.GetChannel(channel) + buffer.GetNumSamples()};
}

/// An owning buffer that holds these channels, all of one length.
struct FilledBuffer : AudioBuffer {
    explicit FilledBuffer(const std::vector<Samples>& samples)
        : AudioBuffer(static_cast<unsigned int>(samples.size()), samples[0].size(), true) {
        for (unsigned int k = 0; k < samples.size(); ++k) CopyFrom(k, 0, samples[k].data(), samples[k].size(), 1.0f);
    }
};

}  // namespace velmodsp
