#include "report/ChannelPicture.h"

#include <algorithm>

namespace velmohost {
namespace {

constexpr double kAroundSeconds = 0.5;
constexpr std::uint64_t kNumSamples = 120;

/// A stretch of about `length` samples with the first bad one at its first quarter, kept within the channel.
WaveformView LookAtFirstBad(const FileScan& scan, unsigned channel, std::uint64_t length) {
    const std::uint64_t first = *scan.channels[channel].first, kept = std::min(length, scan.numFrames);
    const std::uint64_t start = std::min(first - std::min(first, length / 4), scan.numFrames - kept);
    return {start, kept};
}

}  // namespace

ChannelPicture::ChannelPicture(const FileScan& scan, unsigned pictured)
    : channel(pictured),
      whole(0, scan.numFrames),
      around(LookAtFirstBad(scan, pictured, static_cast<std::uint64_t>(kAroundSeconds * scan.samplerate))),
      samples(LookAtFirstBad(scan, pictured, kNumSamples)) {}

void ChannelPicture::Add(const float* before, const float* after, std::size_t n) {
    for (WaveformView* view : {&whole, &around, &samples}) view->Add(position, before, after, n);
    position += n;
}

std::vector<ChannelPicture> StartPictures(const FileScan& scan, std::size_t maxPictures) {
    std::vector<ChannelPicture> pictures;
    for (unsigned c = 0; c < scan.channels.size() && pictures.size() < maxPictures; ++c) {
        if (scan.channels[c].NumBad() > 0) pictures.emplace_back(scan, c);
    }
    return pictures;
}

}  // namespace velmohost
