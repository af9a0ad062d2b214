// Samples of every depth and byte order, in files of one channel to many, read and written from any frame on in any
// number: compared bit for bit with arithmetic on the bytes, one sample at a time.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "audiofiles/FileBytes.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspAudioFileWriter.h"
#include "files/VelmoDspFile.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace velmodsp {
namespace {

using Samples = std::vector<float>;

/// Sounds of which some are longer than any block of the readers and writers, and some wider than a vector.
constexpr struct Shape {
    unsigned int numChannels;
    unsigned long numFrames;
} Shapes[] = {{1, 17001}, {2, 9001}, {3, 9001}, {5, 1501}, {8, 1501}, {32, 1501}};
constexpr float Untouched = 77.0f;

struct Encoding {
    std::string type;   // "WAV", or the compression of an AIFF-C file
    unsigned int size;  // bytes
    bool isFloat = false;

    bool IsAiff() const { return type != "WAV"; }
    /// Where the byte of that significance, 0 to `size` - 1, stands in a sample.
    unsigned int Place(unsigned int significance) const {
        return type == "WAV" || type == "sowt" ? significance : size - 1 - significance;
    }
    bool IsUnsigned() const { return size == 1 && !IsAiff(); }
};

Samples DecodedBy(const Encoding& encoding, const Bytes& data) {
    const double half = std::ldexp(1.0, 8 * static_cast<int>(encoding.size) - 1);
    Samples samples;
    for (std::size_t start = 0; start < data.size(); start += encoding.size) {
        std::uint32_t bits = 0;
        for (unsigned int i = encoding.size; i-- > 0;) bits = bits * 256 + data[start + encoding.Place(i)];
        const double value = encoding.IsUnsigned() ? bits - half : bits < half ? bits : bits - 2 * half;
        samples.push_back(encoding.isFloat ? std::bit_cast<float>(bits) : static_cast<float>(value / half));
    }
    return samples;
}

Bytes SoundFile(const Encoding& encoding, const Shape& shape, const Bytes& data) {
    const unsigned int bits = 8 * encoding.size;
    if (encoding.IsAiff()) {
        const auto numFrames = static_cast<unsigned int>(shape.numFrames);
        return Form("AIFC", AiffCommon(shape.numChannels, numFrames, bits, encoding.type) + AiffSound(data));
    }
    return Riff(WavFormat(encoding.isFloat ? 3 : 1, shape.numChannels, 48000, bits) + Text("data") + Le32(data.size()) +
                data);
}

int BitsOf(float sample) { return std::bit_cast<int>(sample); }

bool AreSame(const float* left, const float* right, std::size_t n) {
    return std::memcmp(left, right, n * sizeof(float)) == 0;
}

/// Checks a read of `n` frames from `start` on against the interleaved `expected`, and that it touches nothing else.
void ExpectRead(AudioFileReader& reader, const Samples& expected, unsigned long start, unsigned long n) {
    SCOPED_TRACE(testing::Message() << n << " frames from " << start << " on");
    const unsigned int channels = reader.GetNumChannels();
    AudioBuffer buffer(channels, n + 6, true);
    buffer.Fill(Untouched);
    ASSERT_TRUE(reader.ReadSamples(buffer, 3, n, start));
    for (unsigned int k = 0; k < channels; ++k) {
        Samples channel(n + 6, Untouched);
        for (unsigned long i = 0; i < n; ++i)
            channel[i + 3] = start + i < reader.GetLengthInSamples() ? expected[(start + i) * channels + k] : 0.0f;
        ASSERT_TRUE(AreSame(buffer.GetChannel(k), channel.data(), n + 6)) << "channel " << k;
    }
    // The last channel alone, as the words that the floats were made of, and one that the file does not have.
    std::vector<int> words(n), further(n, 1);
    std::vector<int*> channelPointers(channels + 2, nullptr);
    channelPointers[channels - 1] = words.data();
    channelPointers[channels] = further.data();
    ASSERT_TRUE(reader.readSamples(channelPointers.data(), n, start));
    const float* const floats = buffer.GetChannel(channels - 1) + 3;
    for (unsigned long i = 0; i < n; ++i)
        ASSERT_EQ(reader.UsesFloatingPointData() ? words[i] : BitsOf(static_cast<float>(words[i] * 0x1p-31)),
                  BitsOf(floats[i]));
    ASSERT_EQ(further, std::vector<int>(n));
}

TEST(FrameConversion, ReadsEveryEncodingFromAnyFrameOnAsFarAsTheFileGoes) {
    const TempFolder folder;
    std::mt19937 random(1);
    const Encoding encodings[] = {{"WAV", 1},        {"WAV", 2},  {"WAV", 3},  {"WAV", 4},  {"WAV", 4, true},
                                  {"NONE", 1},       {"NONE", 2}, {"NONE", 3}, {"NONE", 4}, {"FL32", 4, true},
                                  {"fl32", 4, true}, {"twos", 2}, {"sowt", 1}, {"sowt", 2}, {"sowt", 3}};
    for (const Encoding& encoding : encodings) {
        for (const Shape& shape : Shapes) {
            SCOPED_TRACE(testing::Message()
                         << encoding.type << ", " << encoding.size << " bytes, " << shape.numChannels << " channels");
            Bytes data(shape.numFrames * shape.numChannels * encoding.size);
            for (unsigned char& byte : data) byte = static_cast<unsigned char>(random());
            Bytes file = SoundFile(encoding, shape, data);
            WriteBytes(folder / "whole", file + Bytes(100, 0x40));  // which belongs to no sample
            auto reader = AudioFileReader::CreateReaderFor(File(String(folder / "whole")));
            Samples expected = DecodedBy(encoding, data);
            for (unsigned long n = 1; n < 12; ++n) ExpectRead(*reader, expected, 5 * n, n);
            ExpectRead(*reader, expected, 0, shape.numFrames);
            ExpectRead(*reader, expected, shape.numFrames - 1051, 1058);

            const unsigned int numLost = shape.numChannels + 1;
            file.resize(file.size() - numLost * encoding.size);
            std::fill(expected.end() - numLost, expected.end(), 0.0f);
            WriteBytes(folder / "cut", file);
            reader = AudioFileReader::CreateReaderFor(File(String(folder / "cut")));
            EXPECT_EQ(reader->GetLengthInSamples(), shape.numFrames);
            EXPECT_EQ(reader->GetNumStoredSamples(), shape.numFrames - (shape.numChannels == 1 ? 2 : 1));
            ExpectRead(*reader, expected, shape.numFrames - 1051, 1058);
        }
    }
}

/// What the sample becomes in a file of integers, rounded to 32 bits and cut to `size` bytes of these.
std::int64_t IntegerFor(float sample, unsigned int size) {
    const double scaled = std::isnan(sample) ? 0.0 : std::nearbyint(std::ldexp(static_cast<double>(sample), 31));
    return static_cast<std::int64_t>(std::clamp(scaled, -0x1p31, 0x1p31 - 1)) >> (32 - 8 * size);
}

Bytes EncodedBy(const Encoding& encoding, const Samples& samples) {
    Bytes data;
    for (const float sample : samples) {
        std::int64_t value = encoding.isFloat ? BitsOf(sample) : IntegerFor(sample, encoding.size);
        if (encoding.IsUnsigned()) value += 128;
        for (unsigned int i = 0; i < encoding.size; ++i)
            data.push_back(static_cast<unsigned char>(value >> 8 * encoding.Place(i)));
    }
    return data;
}

/// Noise that passes full scale now and then, among values at the edges of the conversion.
Samples Interleaved(std::size_t n) {
    constexpr float infinity = std::numeric_limits<float>::infinity(), nan = std::numeric_limits<float>::quiet_NaN();
    constexpr float edges[] = {0.0f,     -0.0f,     1.0f, -1.0f, 0x1.fffffep-1f, -0x1.fffffep-1f, 0x1p-32f, -0x1.8p-31f,
                               infinity, -infinity, nan,  -nan,  0x1.000002p0f,  -0x1.000002p0f,  1e-42f,   3e38f,
                               0x1p-31f, -0x1p-31f, 1.5f, -1.5f, 0x1.8p-31f,     0x1.4p-30f};
    std::mt19937 random(2);
    Samples samples(n);
    for (float& sample : samples) {
        const auto edge = random() % 64;
        const double noise = (static_cast<double>(random()) / 0x1p31 - 1.0) * 1.1;
        sample = edge < std::size(edges) ? edges[edge] : static_cast<float>(noise);
    }
    return samples;
}

/// Writes the buffer's samples from `start` on as the words of the file's samples.
bool WriteWords(AudioFileWriter& writer, const AudioBuffer& buffer, unsigned long start) {
    std::vector<int> words;
    for (unsigned int k = 0; k < buffer.GetNumChannels(); ++k)
        for (unsigned long i = start; i < buffer.GetNumSamples(); ++i) {
            const float sample = buffer.GetChannel(k)[i];
            words.push_back(writer.UsesFloatingPointData() ? BitsOf(sample) : static_cast<int>(IntegerFor(sample, 4)));
        }
    std::vector<const int*> channels;
    for (unsigned int k = 0; k < buffer.GetNumChannels(); ++k)
        channels.push_back(&words[k * (buffer.GetNumSamples() - start)]);
    return writer.writeSamples(channels.data(), buffer.GetNumSamples() - start);
}

TEST(FrameConversion, WritesEveryEncodingInAnyBlocks) {
    const TempFolder folder;
    const Encoding encodings[] = {{"WAV", 1},  {"WAV", 2},  {"WAV", 3},  {"WAV", 4, true},
                                  {"NONE", 1}, {"NONE", 2}, {"NONE", 3}, {"NONE", 4}};
    for (const Encoding& encoding : encodings) {
        for (const Shape& shape : Shapes) {
            const unsigned int channels = shape.numChannels;
            const std::string path = folder / (std::to_string(channels) + " channels of " +
                                               std::to_string(encoding.size) + (encoding.IsAiff() ? ".aiff" : ".wav"));
            SCOPED_TRACE(path);
            const Samples samples = Interleaved(shape.numFrames * channels);
            AudioBuffer buffer(channels, shape.numFrames, true);
            for (std::size_t i = 0; i < samples.size(); ++i)
                buffer.GetChannel(static_cast<unsigned int>(i % channels))[i / channels] = samples[i];

            auto writer = AudioFileWriter::CreateWriterFor(File(String(path)), 48000, channels,
                                                           static_cast<int>(8 * encoding.size), false);
            unsigned long start = 0;
            for (unsigned long n = 1; n < 12; start += n++) EXPECT_TRUE(writer->WriteSamples(buffer, start, n));
            EXPECT_TRUE(writer->WriteSamples(buffer, start, shape.numFrames - 301 - start));
            EXPECT_TRUE(WriteWords(*writer, buffer, shape.numFrames - 301));
            writer.reset();

            const Bytes file = ReadBytes(path), expected = EncodedBy(encoding, samples);
            const std::size_t headerSize = encoding.IsAiff() ? 54 : 104;
            ASSERT_GE(file.size(), headerSize + expected.size());
            EXPECT_EQ(std::memcmp(&file[headerSize], expected.data(), expected.size()), 0);
        }
    }
}

}  // namespace
}  // namespace velmodsp
