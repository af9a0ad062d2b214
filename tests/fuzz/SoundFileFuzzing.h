#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>

#include "Fuzzing.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "files/VelmoDspFile.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

/// Opens a file of any bytes and reads it in many ways: all that comes out must be what the bytes say, sample by
/// sample, and nothing may be written but what was asked for.
class SoundFileFuzzing {
public:
    /// The spans to read are taken from the input's end; what stands before is the file.
    SoundFileFuzzing(FuzzedDataProvider& input, const std::string& fileName) : path(Workplace() / fileName) {
        const unsigned numSpans = input.ConsumeIntegralInRange(0u, 6u);
        for (unsigned i = 0; i < numSpans; ++i) spans.push_back(TakeSpan(input));
        bytes = input.ConsumeRemainingBytes<std::uint8_t>();
        WriteFile(path, bytes);
    }

    template <class Reader>
    void Run() {
        try {
            reader = std::make_unique<Reader>(velmodsp::File(velmodsp::String(path)));
        } catch (const velmodsp::Exception&) {
            return;  // not a valid file
        }
        Require(reader->SeemsValid(), "an open file is valid");
        CheckLengths();
        ReadInOrder();
        for (const Span& span : spans) {
            ReadAllChannels(span.start, span.length);
            ReadChannel(span.channel % reader->GetNumChannels(), span.start, span.length);
        }
    }

private:
    struct Span {
        std::uint64_t start;
        unsigned length;
        unsigned channel;
    };

    static constexpr unsigned kMargin = 3;  // samples around a destination that must stay as they were
    static constexpr float kUntouched = 77.0f;

    /// A start anywhere, or near the beginning, where the frames of a small file are.
    static Span TakeSpan(FuzzedDataProvider& input) {
        const std::uint64_t start =
            input.ConsumeBool() ? input.ConsumeIntegral<std::uint64_t>() : input.ConsumeIntegral<std::uint8_t>();
        return {start, input.ConsumeIntegralInRange(0u, 300u), input.ConsumeIntegral<std::uint16_t>()};
    }

    void CheckLengths() const {
        const velmodsp::FrameLayout& layout = reader->GetFrameLayout();
        const unsigned long long stored = reader->GetNumStoredSamples();
        Require(stored <= reader->GetLengthInSamples(), "no more frames are stored than the header claims");
        Require(stored == 0 || layout.dataStart + (stored - 1) * layout.bytesPerFrame < bytes.size(),
                "every stored frame begins within the file");
        Require(layout.bytesPerFrame >= layout.numChannels * velmodsp::BytesPerSample(layout.sampleFormat) ||
                    layout.bytesPerFrame == 0,
                "a frame has room for its samples");
    }

    /// A byte of the samples; beyond the end of the file that of silence.
    unsigned ByteAt(std::uint64_t position) const {
        const bool isUnsigned = reader->GetFrameLayout().sampleFormat == velmodsp::SampleFormat::Unsigned8;
        return position < bytes.size() ? bytes[position] : isUnsigned ? 0x80 : 0;
    }

    /// The sample that the file's bytes stand for.
    float Expected(unsigned channel, std::uint64_t frame) const {
        using enum velmodsp::SampleFormat;
        const velmodsp::FrameLayout& layout = reader->GetFrameLayout();
        const velmodsp::SampleFormat format = layout.sampleFormat;
        if (format == None || frame >= layout.numStoredFrames) return 0.0f;
        const bool isBig = format == Big16 || format == Big24 || format == Big32;
        const unsigned size = reader->GetBitsPerSample() / 8;
        const std::uint64_t position = layout.dataStart + frame * layout.bytesPerFrame + channel * size;
        std::uint32_t word = 0;  // left-justified
        for (unsigned i = 0; i < size; ++i) {
            const unsigned significance = isBig ? size - 1 - i : i;
            word |= ByteAt(position + i) << (8 * (significance + 4 - size));
        }
        if (format == Unsigned8) word ^= 0x80000000u;
        if (reader->UsesFloatingPointData()) return std::bit_cast<float>(word);
        return static_cast<float>(std::ldexp(static_cast<double>(static_cast<std::int32_t>(word)), -31));
    }

    void RequireSamples(const float* samples, unsigned channel, std::uint64_t start, unsigned length) const {
        for (unsigned i = 0; i < length; ++i) {
            const float expected = start > ~std::uint64_t{0} - i ? 0.0f : Expected(channel, start + i);
            Require(std::bit_cast<std::uint32_t>(samples[i]) == std::bit_cast<std::uint32_t>(expected),
                    "a sample is what the file's bytes say");
        }
        for (unsigned i = 0; i < kMargin; ++i) {
            Require(samples[static_cast<int>(i) - static_cast<int>(kMargin)] == kUntouched &&
                        samples[length + i] == kUntouched,
                    "nothing is written around the destination");
        }
    }

    void ReadAllChannels(std::uint64_t start, unsigned length) {
        constexpr unsigned kMaxSamples = 1 << 18;
        const unsigned numChannels = reader->GetNumChannels();
        if (std::uint64_t{numChannels} * (length + 2 * kMargin) > kMaxSamples) return;
        velmodsp::AudioBuffer buffer(numChannels + 1, length + 2 * kMargin, true);
        buffer.Fill(kUntouched);
        Require(reader->ReadSamples(buffer, kMargin, length, start), "a span that has room is read");
        for (unsigned k = 0; k < numChannels; ++k) RequireSamples(buffer.GetChannel(k) + kMargin, k, start, length);
        const float* const extra = buffer.GetChannel(numChannels);
        Require(std::all_of(extra, extra + buffer.GetNumSamples(), [](float x) { return x == kUntouched; }),
                "channels that the file does not have stay as they were");
        Require(!reader->ReadSamples(buffer, 2 * kMargin + 1, length, start) || length == 0,
                "a span that has no room is refused");
    }

    void ReadChannel(unsigned channel, std::uint64_t start, unsigned length) {
        velmodsp::AudioBuffer buffer(2, length + 2 * kMargin, true);
        buffer.Fill(kUntouched);
        Require(reader->ReadSamples(buffer, 1, kMargin, length, channel, start), "a channel is read");
        RequireSamples(buffer.GetChannel(1) + kMargin, channel, start, length);
        Require(!reader->ReadSamples(buffer, 0, 0, length, reader->GetNumChannels(), start),
                "a channel that the file does not have is refused");
    }

    /// Reads all that is stored, and silence after it, in blocks of different lengths.
    void ReadInOrder() {
        const unsigned numChannels = std::min(reader->GetNumChannels(), 8u);
        unsigned length = 1;
        for (std::uint64_t start = 0; start < reader->GetNumStoredSamples() + 8; start += length) {
            length = length % 97 + 12;
            ReadAllChannels(start, length);
            if (reader->GetNumChannels() > 64) ReadChannel(numChannels - 1, start, length);
        }
    }

    const std::string path;
    std::vector<Span> spans;
    std::vector<std::uint8_t> bytes;
    std::unique_ptr<velmodsp::AudioFileReader> reader;
};
