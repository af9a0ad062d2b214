#pragma once

#include <vector>

#include "batch/FileScan.h"
#include "report/WaveformView.h"

namespace velmohost {

/// What the report draws of one damaged channel: the whole of it, and two closer looks at where it first went bad.
class ChannelPicture {
public:
    /// @param channel of the file, counted from 0; one with bad samples
    ChannelPicture(const FileScan& scan, unsigned channel);

    unsigned Channel() const { return channel; }

    /// Takes in the channel's next block.
    void Add(const float* before, const float* after, std::size_t n);

    const WaveformView& Whole() const { return whole; }
    /// About half a second; the whole when that is shorter.
    const WaveformView& Around() const { return around; }
    /// Sample by sample.
    const WaveformView& Samples() const { return samples; }

private:
    unsigned channel;
    std::uint64_t position = 0;  // samples so far
    WaveformView whole, around, samples;
};

/// The pictures of a file's damaged channels, the first `maxPictures` of them.
std::vector<ChannelPicture> StartPictures(const FileScan& scan, std::size_t maxPictures);

}  // namespace velmohost
