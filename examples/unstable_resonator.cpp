/// Poisons a recording the way it happens on stage: a resonant feedback filter is turned past the edge of stability.
///
///     unstable_resonator INPUT OUTPUT
///
/// The filter is the two-pole resonator
///
///     y[n] = x[n] + 2 r cos(theta) y[n-1] - r^2 y[n-2]
///
/// with its poles at r e^(+-j theta). Below r = 1 it rings and dies away; here r is 1.0045, so y doubles every 154
/// samples. A level control divides by the peak heard so far, so nothing sounds wrong while y climbs to 1e38; then y
/// leaves the range of 32-bit floats: one infinity goes out, the level control becomes 1 / infinity = 0, and from there
/// on infinity - infinity and 0 * infinity make every sample NaN, until somebody clears the filter's memory. The
/// imaginary somebody here does so twice a second.
///
/// A mono recording becomes stereo, one resonator a side; the output is a 32-bit float file.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <numbers>
#include <vector>

#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspAudioFileWriter.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace {

constexpr unsigned long kBlockSize = 4096;     // samples
constexpr double kSecondsBetweenClears = 0.5;  // how long the filter is left to itself
constexpr float kPoleRadius = 1.0045f;         // above 1: unstable
constexpr double kLowestResonance = 440.0;     // Hz, channel 1; every further channel is a fifth higher

/// One channel's resonator with its level control.
class Resonator {
public:
    Resonator(double resonance, double samplerate)
        : feedback1(2.0f * kPoleRadius * static_cast<float>(std::cos(2.0 * std::numbers::pi * resonance / samplerate))),
          feedback2(-kPoleRadius * kPoleRadius) {}

    float Process(float x) {
        const float y = x + feedback1 * y1 + feedback2 * y2;
        y2 = y1;
        y1 = y;
        const float levelled = y / peak;
        peak = std::max(peak, std::abs(y));
        return 0.5f * (x + levelled);
    }

    void Clear() {
        y1 = y2 = 0.0f;
        peak = 1.0f;
    }

private:
    const float feedback1;
    const float feedback2;
    float y1 = 0.0f;
    float y2 = 0.0f;
    float peak = 1.0f;  // largest |y| since the last clear, at least full scale
};

void PoisonFile(const char* inputPath, const char* outputPath) {
    using namespace velmodsp;
    const std::unique_ptr<AudioFileReader> reader(AudioFileReader::CreateReaderFor(File(String(inputPath))));
    const unsigned int fileChannels = reader->GetNumChannels();
    const unsigned int channels = std::max(2u, fileChannels);
    const std::unique_ptr<AudioFileWriter> writer(
        AudioFileWriter::CreateWriterFor(File(String(outputPath)), reader->GetSampleRate(), channels, true));

    std::vector<Resonator> resonators;
    for (unsigned int k = 0; k < channels; ++k) {
        resonators.emplace_back(kLowestResonance * std::pow(1.5, k % 8), reader->GetSampleRate());
    }

    AudioBuffer input(fileChannels, kBlockSize, true);
    AudioBuffer output(channels, kBlockSize, true);
    const auto clearPeriod = static_cast<unsigned long long>(kSecondsBetweenClears * reader->GetSampleRate());
    for (unsigned long long start = 0; start < reader->GetLengthInSamples(); start += kBlockSize) {
        const auto n =
            static_cast<unsigned long>(std::min<unsigned long long>(kBlockSize, reader->GetLengthInSamples() - start));
        reader->ReadSamples(input, 0, n, start);
        for (unsigned int k = 0; k < channels; ++k) {
            const float* in = input.GetChannel(std::min(k, fileChannels - 1));
            float* out = output.GetChannel(k);
            for (unsigned long i = 0; i < n; ++i) {
                if ((start + i) % clearPeriod == 0) resonators[k].Clear();
                out[i] = resonators[k].Process(in[i]);
            }
        }
        if (!writer->WriteSamples(output, 0, n))
            throw Exception(String("could not write ") + outputPath, __FILE__, __LINE__, false, false);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s INPUT OUTPUT\n", argv[0]);
        return 2;
    }
    try {
        PoisonFile(argv[1], argv[2]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s: %s\n", argv[0], e.what());
        return 1;
    }
    return 0;
}
