#pragma once

#include <memory>
#include <string>
#include <vector>

#include "sound/SoundSink.h"
#include "sound/SoundSource.h"

namespace velmotest {

using Channels = std::vector<std::vector<float>>;

/// All samples of a sound file, channel by channel.
inline Channels ReadSound(const std::string& path) {
    velmohost::SoundSource source(path);
    Channels channels(source.NumChannels());
    while (const unsigned long n = source.ReadBlock(1000)) {
        for (unsigned c = 0; c < channels.size(); ++c) {
            channels[c].insert(channels[c].end(), source.Channel(c), source.Channel(c) + n);
        }
    }
    return channels;
}

/// Writes a sound file of 32 bits.
inline void WriteSound(const std::string& path, const Channels& channels, double samplerate = 44100.0) {
    const std::size_t numFrames = channels.front().size();
    velmohost::SoundSink sink({path, samplerate, static_cast<unsigned>(channels.size()), 32, numFrames}, numFrames);
    for (unsigned c = 0; c < channels.size(); ++c) {
        std::copy(channels[c].begin(), channels[c].end(), sink.Channel(c));
    }
    sink.WriteBlock(numFrames);
    sink.Finish();
}

}  // namespace velmotest
