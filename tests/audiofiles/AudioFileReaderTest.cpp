#include "audiofiles/VelmoDspAudioFileReader.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstring>

#include "audiofiles/FileBytes.h"
#include "audiofiles/VelmoDspAiffFileReader.h"
#include "audiofiles/VelmoDspWavFileReader.h"
#include "files/VelmoDspFile.h"
#include "support/MessageOf.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace velmodsp {
namespace {

using testing::Each;
using testing::ElementsAre;
using Samples = std::vector<float>;

constexpr float Untouched = 77.0f;
const std::string notWav = " is not a valid WAV file", notAiff = " is not a valid AIFF file";

Bytes Wav(unsigned int tag, unsigned int channels, unsigned int bits, const Bytes& data) {
    return Riff(WavFormat(tag, channels, 48000, bits) + RiffChunk("data", data));
}

class AudioFileReading : public testing::Test {
protected:
    File At(const std::string& name) const { return File(String(folder / name)); }

    std::unique_ptr<AudioFileReader> Open(const Bytes& bytes, const std::string& name = "sound") const {
        WriteBytes(folder / name, bytes);
        return AudioFileReader::CreateReaderFor(At(name));
    }

    void ExpectError(const Bytes& bytes, const std::string& name, const std::string& text) const {
        EXPECT_EQ(MessageOf([&] { Open(bytes, name); }), "file " + folder / name + text);
    }

    /// Channel `channel` of `n` frames from `start` on, read together with all others.
    static Samples Read(AudioFileReader& reader, unsigned long n, unsigned long long start = 0,
                        unsigned int channel = 0) {
        AudioBuffer buffer(reader.GetNumChannels(), n, true);
        buffer.Fill(Untouched);
        EXPECT_TRUE(reader.ReadSamples(buffer, 0, n, start));
        return {buffer.GetChannel(channel), buffer.GetChannel(channel) + n};
    }

    TempFolder folder;
};

TEST_F(AudioFileReading, ExtensibleFormatsAreToldByTheirIdentifier) {
    const Bytes& tail = SubFormatTail;
    const Bytes ambisonicTail = {0, 0, 0x21, 0x07, 0xD3, 0x11, 0x86, 0x44, 0xC8, 0xC1, 0xCA, 0, 0, 0};
    const auto file = [](const Bytes& subFormat) {
        return Riff(RiffChunk("fmt ", Le16(0xFFFE) + Le16(1) + Le32(48000) + Le32(192000) + Le16(4) + Le16(32) +
                                          Le16(22) + Le16(32) + Le32(4) + subFormat) +
                    RiffChunk("data", Le32(0x3F800000)));
    };
    EXPECT_THAT(Read(*Open(file(Le16(3) + tail)), 1), ElementsAre(1.0f));
    EXPECT_THAT(Read(*Open(file(Le16(1) + tail)), 1), ElementsAre(0.49609375f));
    EXPECT_THAT(Read(*Open(file(Le16(1) + ambisonicTail)), 1), ElementsAre(0.49609375f));
    EXPECT_EQ(Open(file(Le16(2) + tail))->GetLengthInSamples(), 0u);
    EXPECT_EQ(Open(file(Le16(3) + Bytes(tail.begin(), tail.end() - 1)))->GetLengthInSamples(), 0u);  // too short
}

TEST_F(AudioFileReading, ChunksAreFoundByTheFormatsOwnPadding) {
    const auto wav = Open(Riff(RiffChunk("LIST", {1, 2, 3}) + RiffChunk("LIST", {}) + WavFormat(1, 1, 8000, 8) +
                               RiffChunk("odd!", {1}) + RiffChunk("data", {0xC0})));
    EXPECT_EQ(wav->GetSampleRate(), 8000.0);
    EXPECT_THAT(Read(*wav, 1), ElementsAre(0.5f));
    const Bytes formatAfterItsData = WavFormat(2, 9, 8000, 0);
    EXPECT_THAT(Read(*Open(Riff(WavFormat(1, 1, 8000, 8) + RiffChunk("data", {0xC0, 0xC0}) + formatAfterItsData)), 2),
                ElementsAre(0.5f, 0.5f));
    const auto aiff =
        Open(Form("AIFF", AiffChunk("NAME", {1, 2, 3}) + AiffChunk("SSND", Be32(2) + Be32(0) + Bytes{1, 2, 0x40}) +
                              AiffChunk("odd!", {1}) + AiffCommon(1, 1, 8)));
    EXPECT_EQ(aiff->GetSampleRate(), 44100.0);
    EXPECT_THAT(Read(*aiff, 1), ElementsAre(0.5f));
}

TEST_F(AudioFileReading, DepthsWithoutAConversionAreSilence) {
    const Bytes data(48, 0x55);
    for (const Bytes& file : {Wav(1, 2, 12, data), Wav(3, 2, 64, data), Wav(3, 2, 16, data), Wav(2, 2, 16, data),
                              Form("AIFF", AiffCommon(1, 8, 4) + AiffSound(data)), Form("AIFF", AiffCommon(1, 8, 4)),
                              Form("AIFF", AiffCommon(1, 8, 16))}) {
        EXPECT_THAT(Read(*Open(file), 8), Each(0.0f));
    }
}

TEST_F(AudioFileReading, AFrameMayBeLargerThanTheConversionBuffer) {
    constexpr unsigned int channels = 40000;  // 120000 bytes a frame
    Bytes data;
    for (unsigned int i = 0; i < 2 * channels; ++i)
        for (unsigned int byte : {0u, i % 256, i / 256 % 128}) data.push_back(static_cast<unsigned char>(byte));
    const auto reader = Open(Wav(1, channels, 24, data));
    for (unsigned int k : {0u, 21844u, 21845u, 39999u}) {
        const float first = static_cast<float>(k % 32768) * 0x1p-15f;
        const float second = static_cast<float>((k + channels) % 32768) * 0x1p-15f;
        EXPECT_THAT(Read(*reader, 3, 0, k), ElementsAre(first, second, 0)) << k;
    }
}

TEST_F(AudioFileReading, SpansBeyondEitherSideAreRefused) {
    const auto reader = Open(Wav(1, 2, 8, {0xC0, 0x40, 0xC0, 0x40}));
    AudioBuffer buffer(3, 4, true);
    buffer.Fill(Untouched);
    for (const auto& [start, count] :
         {std::pair{0ull, 5ull}, {4ull, 1ull}, {5ull, 1ull}, {~0ull, 2ull}, {2ull, ~0ull}}) {
        EXPECT_FALSE(reader->ReadSamples(buffer, start, count, 0)) << start << " + " << count;
        EXPECT_FALSE(reader->ReadSamples(buffer, 0, start, count, 0, 0)) << start << " + " << count;
    }
    EXPECT_FALSE(reader->ReadSamples(buffer, 3, 0, 1, 0, 0));
    EXPECT_FALSE(reader->ReadSamples(buffer, 0, 0, 1, 2, 0));
    AudioBuffer mono(1, 4, true);
    EXPECT_FALSE(reader->ReadSamples(mono, 0, 1, 0));
    EXPECT_TRUE(reader->ReadSamples(mono, 9, 0, 0));
    const float* const all = buffer.GetChannel(0);  // the channels lie one after the other
    EXPECT_THAT(Samples(all, all + 12), Each(Untouched));
    EXPECT_TRUE(reader->ReadSamples(buffer, 2, 3, 1, 1, 1));
    EXPECT_EQ(buffer.GetChannel(2)[3], -0.5f);
}

TEST_F(AudioFileReading, Rf64TakesItsSizesFromTheDs64Chunk) {
    const auto file = [](const Bytes& sizes, std::uint64_t dataSize) {
        return Text("RF64") + Le32(0xFFFFFFFF) + Text("WAVE") + sizes + WavFormat(1, 1, 48000, 8) + Text("data") +
               Le32(0xFFFFFFFF) + Bytes(dataSize, 0xC0);
    };
    const auto ds64 = [](std::uint64_t riff, std::uint64_t data) {
        return RiffChunk("ds64", Le64(riff) + Le64(data) + Bytes(12));
    };
    const auto reader = Open(file(ds64(72 + 4, 4), 4));
    EXPECT_TRUE(reader->IsRF64());
    EXPECT_THAT(Read(*reader, 5), ElementsAre(0.5f, 0.5f, 0.5f, 0.5f, 0));

    for (std::uint64_t claim : {std::uint64_t{1} << 62, ~std::uint64_t{0}}) {
        const auto liar = Open(file(ds64(claim, claim), 4));
        EXPECT_EQ(liar->GetLengthInSamples(), claim);
        EXPECT_EQ(liar->GetNumStoredSamples(), 4u);
        EXPECT_THAT(Read(*liar, 2, 3), ElementsAre(0.5f, 0));
        EXPECT_THAT(Read(*liar, 2, claim - 1), ElementsAre(0, 0));
    }
    ExpectError(file({}, 4), "a.wav", notWav);
    ExpectError(file(RiffChunk("ds64", Le64(76) + Le64(4)), 4), "a.wav", notWav);
}

TEST_F(AudioFileReading, DepthsPast64BitsAreDerivedFromTheByteRate) {
    const auto format = [](unsigned int channels, unsigned int rate, unsigned int byteRate) {
        return Riff(RiffChunk("fmt ", Le16(1) + Le16(channels) + Le32(rate) + Le32(byteRate) + Le16(0) + Le16(65)) +
                    RiffChunk("data", {0, 0x40, 0, 0xC0, 0, 0x40, 0, 0xC0}));
    };
    EXPECT_THAT(Read(*Open(format(2, 8000, 32000)), 2, 0, 1), ElementsAre(-0.5f, -0.5f));
    ExpectError(format(0, 8000, 32000), "a.wav", notWav);
    ExpectError(format(2, 0, 32000), "a.wav", notWav);
    ExpectError(format(2, 8000, 7999), "a.wav", notWav);
}

TEST_F(AudioFileReading, TypesAreToldByContentThenByName) {
    const struct {
        const char *name, *content, *type;
    } rows[] = {{"a.aiff", "RIFF", "WAV File"}, {"a.wav", "FORM", "AIFF File"}, {"a", "RF64", "WAV File"},
                {"a.AIF", "?", "AIFF File"},    {"a.bwf", "????", "WAV File"},  {"a.mp3", "", "MP3 File"},
                {"a.txt", "riff", "unknown"}};
    for (const auto& row : rows) {
        WriteBytes(folder / row.name, Text(row.content));
        EXPECT_EQ(AudioFilesManager::TryToDetermineFileType(At(row.name)), row.type) << row.name;
    }
    for (const char* none : {"none.wav", ""}) EXPECT_EQ(AudioFilesManager::TryToDetermineFileType(At(none)), "unknown");
    EXPECT_EQ(AiffFileReader::CreateReaderFor(At("a.mp3")), nullptr);
}

TEST_F(AudioFileReading, FilesThatCannotBeReadAreNamed) {
    EXPECT_EQ(AudioFileReader::CreateReaderFor(File("")), nullptr);
    ExpectError(Text("RIFF"), "empty.wav", notWav);
    ExpectError(Text("FORM"), "empty.aif", notAiff);
    ExpectError(Form("AIFC", AiffCommon(1, 1, 16, "ima4") + AiffSound({0, 0})), "a", notAiff);
    ExpectError(Form("AIFF", AiffChunk("FVER", Be32(1)) + AiffCommon(1, 1, 16)), "b", notAiff);
    ExpectError(Text("ID3 "), "song.mp3", " is not a valid audio file");
    ExpectError(Form("AIFF", AiffCommon(1, 1, 16, "", Bytes(10)) + AiffSound({0, 0})), "c", notAiff);
    ExpectError({}, "note.txt", " is not a valid audio file");
    EXPECT_THROW(AudioFileReader::CreateReaderFor(At("none.wav")), Exception);
}

}  // namespace
}  // namespace velmodsp
