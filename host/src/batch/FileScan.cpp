#include "batch/FileScan.h"

#include <algorithm>

#include "sound/BatchFrames.h"
#include "sound/SoundSource.h"

namespace velmohost {
namespace {

FileScan Describe(const SoundSource& source, const std::string& path) {
    FileScan scan;
    scan.path = path;
    scan.samplerate = source.Samplerate();
    scan.bitsPerSample = source.BitsPerSample();
    scan.holdsFloats = source.HoldsFloats();
    scan.numFrames = source.LengthInFrames();
    scan.numMissingFrames = source.NumMissingFrames();
    scan.channels.resize(source.NumChannels());
    return scan;
}

}  // namespace

std::uint64_t FileScan::NumBad() const {
    std::uint64_t sum = 0;
    for (const BadSamples& channel : channels) sum += channel.NumBad();
    return sum;
}

std::optional<std::uint64_t> FileScan::FirstBad() const {
    std::optional<std::uint64_t> first;
    for (const BadSamples& channel : channels) {
        if (channel.first) first = std::min(first.value_or(*channel.first), *channel.first);
    }
    return first;
}

std::uint64_t FileScan::LongestRun() const {
    std::uint64_t longest = 0;
    for (const BadSamples& channel : channels) longest = std::max(longest, channel.longestRun);
    return longest;
}

FileScan ScanSoundFile(const std::string& path, const FileProgress& progress) {
    SoundSource source(path);
    source.RequireKnownEncoding();
    FileScan scan = Describe(source, path);
    if (!scan.holdsFloats) return scan;

    std::vector<BadSampleCounter> counters(scan.channels.size());
    const unsigned long framesAtATime = ChooseBatchFrames(1, source.NumChannels());
    std::uint64_t numRead = 0;
    // A header may claim gigabytes that the file lacks. No sample of these can be bad.
    while (!source.HasOnlySilenceLeft()) {
        const unsigned long n = source.ReadBlock(framesAtATime);
        for (unsigned c = 0; c < counters.size(); ++c) counters[c].Add(source.Channel(c), n);
        progress(static_cast<double>(numRead += n) / static_cast<double>(scan.numFrames));
    }
    for (std::size_t c = 0; c < counters.size(); ++c) scan.channels[c] = counters[c].Found();
    scan.numMissingFrames = source.NumMissingFrames();  // once more: the file may have become shorter meanwhile
    return scan;
}

}  // namespace velmohost
