/// Counts the samples of a sound file that are no number: one line a channel, and where the first of them lies.
///
///     bad_samples FILE
///
/// Ends with 0 when every sample is finite, 3 when some are not, 1 when the file cannot be read, 2 for wrong usage.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace {

constexpr unsigned long kBlockSize = 65536;  // samples

struct ChannelCount {
    unsigned long long nan = 0;
    unsigned long long infinite = 0;
    unsigned long long first = 0;  // sample index of the first bad one, from 0

    void Add(float x, unsigned long long position) {
        if (std::isfinite(x)) return;
        if (nan + infinite == 0) first = position;
        ++(std::isnan(x) ? nan : infinite);
    }
};

std::vector<ChannelCount> CountBadSamples(velmodsp::AudioFileReader& reader) {
    std::vector<ChannelCount> counts(reader.GetNumChannels());
    velmodsp::AudioBuffer block(reader.GetNumChannels(), kBlockSize, true);
    for (unsigned long long start = 0; start < reader.GetLengthInSamples(); start += kBlockSize) {
        const unsigned long long n = std::min<unsigned long long>(kBlockSize, reader.GetLengthInSamples() - start);
        reader.ReadSamples(block, 0, n, start);
        for (unsigned int k = 0; k < counts.size(); ++k) {
            for (unsigned long i = 0; i < n; ++i) counts[k].Add(block.GetChannel(k)[i], start + i);
        }
    }
    return counts;
}

/// Prints a line a channel; true when no sample was bad.
bool Report(const std::vector<ChannelCount>& counts, double samplerate) {
    bool clean = true;
    for (std::size_t k = 0; k < counts.size(); ++k) {
        const ChannelCount& count = counts[k];
        const unsigned long long bad = count.nan + count.infinite;
        std::printf("channel %zu: %llu bad samples", k + 1, bad);
        if (bad > 0) {
            clean = false;
            std::printf(" (%llu NaN, %llu infinite), the first at sample %llu (%.3f s)", count.nan, count.infinite,
                        count.first, static_cast<double>(count.first) / samplerate);
        }
        std::printf("\n");
    }
    return clean;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    try {
        using namespace velmodsp;
        const std::unique_ptr<AudioFileReader> reader(AudioFileReader::CreateReaderFor(File(String(argv[1]))));
        return Report(CountBadSamples(*reader), reader->GetSampleRate()) ? 0 : 3;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s: %s\n", argv[0], e.what());
        return 1;
    }
}
