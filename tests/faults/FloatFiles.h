#pragma once

#include <bit>
#include <string>
#include <vector>

#include "audiofiles/FileBytes.h"

inline velmodsp::Bytes FloatBytes(const std::vector<float>& samples, bool bigEndian) {
    using namespace velmodsp;
    Bytes bytes;
    for (const float x : samples) {
        const Bytes sample = (bigEndian ? Be32 : Le32)(std::bit_cast<std::uint32_t>(x));
        bytes.insert(bytes.end(), sample.begin(), sample.end());
    }
    return bytes;
}

inline std::string AsFile(const velmodsp::Bytes& id, const velmodsp::Bytes& size, const velmodsp::Bytes& content) {
    using velmodsp::operator+;
    const velmodsp::Bytes bytes = id + size + content;
    return {bytes.begin(), bytes.end()};
}

/// A WAV file of 32-bit floats at 44100 Hz, whose samples begin at byte 44.
inline std::string FloatWav(const std::vector<float>& samples, unsigned int numChannels) {
    using namespace velmodsp;
    const Bytes content =
        Text("WAVE") + WavFormat(3, numChannels, 44100, 32) + RiffChunk("data", FloatBytes(samples, false));
    return AsFile(Text("RIFF"), Le32(content.size()), content);
}

/// An AIFF-C file of the same, whose samples begin at byte 58.
inline std::string FloatAiff(const std::vector<float>& samples, unsigned int numChannels) {
    using namespace velmodsp;
    const auto numFrames = static_cast<unsigned int>(samples.size() / numChannels);
    const Bytes content =
        Text("AIFC") + AiffCommon(numChannels, numFrames, 32, "FL32") + AiffSound(FloatBytes(samples, true));
    return AsFile(Text("FORM"), Be32(content.size()), content);
}
