#include "audiofiles/VelmoDspAudioFileWriter.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "audiofiles/FileBytes.h"
#include "audiofiles/VelmoDspAiffFileWriter.h"
#include "audiofiles/VelmoDspAiffSampleRate.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspWavFileWriter.h"
#include "files/VelmoDspFile.h"
#include "support/FileSizeLimit.h"
#include "support/MessageOf.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace velmodsp {
namespace {

using testing::ElementsAre;

constexpr std::uint64_t FourGiB = std::uint64_t{1} << 32;

/// A buffer in which every channel holds `samples`.
std::unique_ptr<AudioBuffer> Repeated(unsigned int numChannels, const std::vector<float>& samples) {
    auto buffer = std::make_unique<AudioBuffer>(numChannels, samples.size(), true);
    for (unsigned int k = 0; k < numChannels; ++k) buffer->CopyFrom(k, 0, samples.data(), samples.size(), 1.0f);
    return buffer;
}

/// A writer that can be told that it has already written much more than it did.
template <typename Writer>
struct LongFileWriter : Writer {
    explicit LongFileWriter(const std::string& path) : Writer(File(String(path)), 48000, 2, 16) {}
    void PretendFrames(std::uint64_t frames) {
        this->lengthInSamples = frames;
        this->bytesWritten = frames * 4;
    }
};

class AudioFileWriting : public testing::Test {
protected:
    std::unique_ptr<AudioFileWriter> Create(const std::string& name, double rate, unsigned int channels, int bits) {
        return AudioFileWriter::CreateWriterFor(File(String(folder / name)), rate, channels, bits, false);
    }

    /// What a file holds into which every channel's `samples` were written at once.
    Bytes Written(const std::string& name, unsigned int channels, int bits, const std::vector<float>& samples,
                  double rate = 44100) {
        std::filesystem::remove(folder / name);
        auto writer = Create(name, rate, channels, bits);
        EXPECT_TRUE(writer->WriteSamples(*Repeated(channels, samples), 0, samples.size()));
        EXPECT_EQ(writer->GetLengthInSamples(), samples.size());
        writer.reset();
        return ReadBytes(folder / name);
    }

    std::string CreationError(const std::string& name, double rate, unsigned int channels, int bits) {
        return MessageOf([&] { Create(name, rate, channels, bits); });
    }

    /// What the first channel of the file holds.
    std::vector<float> ReadAll(const std::string& name) {
        AudioBuffer samples(1, 1, true);
        EXPECT_TRUE(samples.LoadFromAudioFile(File(String(folder / name))));
        return {samples.GetChannel(0), samples.GetChannel(0) + samples.GetNumSamples()};
    }

    TempFolder folder;
};

TEST_F(AudioFileWriting, PlainWavFiles) {
    const Bytes junk = RiffChunk("JUNK", Bytes(52));
    EXPECT_EQ(Written("a.wav", 2, 16, {0.0f, 1.0f, -1.0f}),
              Riff(junk + WavFormat(1, 2, 44100, 16) +
                   RiffChunk("data", {0, 0, 0, 0, 0xFF, 0x7F, 0xFF, 0x7F, 0, 0x80, 0, 0x80})));
    EXPECT_EQ(Written("a.wav", 1, 8, {0.0f, 1.0f, -1.0f}) + Bytes(1),  // the size counts a pad byte that is not there
              Riff(junk + WavFormat(1, 1, 44100, 8) + RiffChunk("data", {0x80, 0xFF, 0x00})));
    EXPECT_EQ(Written("a.bwf", 1, 32, {1.0f, -2.0f}, 192000),
              Riff(junk + WavFormat(3, 1, 192000, 32) + RiffChunk("data", Le32(0x3F800000) + Le32(0xC0000000))));
}

TEST_F(AudioFileWriting, WavFilesOfMoreThanTwoChannelsAreExtensible) {
    EXPECT_EQ(Written("a.wav", 6, 24, {-1.0f}),
              Text("RIFF") + Le32(114) + Text("WAVE") + Text("JUNK") + Le32(28) + Bytes(28) +  //
                  Text("fmt ") + Le32(40) + Le16(0xFFFE) + Le16(6) + Le32(44100) + Le32(793800) + Le16(18) + Le16(24) +
                  Le16(22) + Le16(24) + Le32(0x3F) + Le16(1) + SubFormatTail +  //
                  Text("data") + Le32(18) +
                  Bytes({0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80}));
    const std::uint32_t masks[] = {0, 0, 0x37, 0x3F, 0x637, 0x63F, 0};
    for (unsigned int channels = 3; channels <= 9; ++channels) {
        const Bytes file = Written("a.wav", channels, 32, {0.0f});
        EXPECT_EQ(Bytes(file.begin() + 76, file.begin() + 96), Le32(masks[channels - 3]) + Le16(3) + SubFormatTail);
    }
}

TEST_F(AudioFileWriting, AiffFiles) {
    EXPECT_EQ(Written("a.aiff", 1, 8, {0.0f, 1.0f, -1.0f}),  // the chunk's size counts its pad byte
              Form("AIFF", AiffCommon(1, 3, 8) + AiffSound({0x00, 0x7F, 0x80, 0})));
    const Bytes rate96000 = {0x40, 0x0F, 0xBB, 0x80, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(Written("a.aif", 2, 32, {0.5f}, 96000),  // integers, not floats
              Form("AIFF", AiffCommon(2, 1, 32, "", rate96000) + AiffSound(Be32(0x40000000) + Be32(0x40000000))));
}

TEST_F(AudioFileWriting, AiffRates) {
    EXPECT_THAT(EncodeAiffSampleRate(1.0), ElementsAre(0x3F, 0xFF, 0x80, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(NAN), ElementsAre(0x3F, 0xFF, 0x80, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(2.9), ElementsAre(0x40, 0x00, 0x80, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(1073741823.5), ElementsAre(0x40, 28, 0xFF, 0xFF, 0xFF, 0xFC, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(1073741824.0), ElementsAre(0x40, 29, 0, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(DecodeAiffSampleRate({0x40, 0x0E, 0xAC, 0x44, 0xC0}), 44100.0) << "44100.75";
    EXPECT_EQ(DecodeAiffSampleRate({0x40, 0x00, 0x80}), 2.0);
    EXPECT_EQ(DecodeAiffSampleRate({0x40, 0x1C, 0xFF, 0xFF, 0xFF, 0xFF}), 1073741823.0);
    for (const AiffSampleRate& unusable :
         {AiffSampleRate{0x40, 0x1D, 0x80}, {0x3F, 0xFF, 0x80}, {0xC0, 0x0E, 0xAC}, {}})
        EXPECT_EQ(DecodeAiffSampleRate(unusable), 0.0);
}

TEST_F(AudioFileWriting, BadArgumentsAreNamed) {
    EXPECT_EQ(CreationError("x.wav", 44100.5, 1, 16), "Invalid samplerate : 44100.5");
    EXPECT_EQ(CreationError("x.wav", NAN, 1, 16), "Invalid samplerate : nan");
    EXPECT_EQ(CreationError("x.aif", 44100, 1, 12), "Invalid bits depth : 12");
    EXPECT_EQ(CreationError("x.wav", 44100, 0, 16), "Invalid number of channels : 0");
    EXPECT_EQ(CreationError("x.wav", 44100, 65536, 16), "Invalid number of channels : 65536");
    EXPECT_EQ(CreationError("x.mp3", 1, 1, 1),
              "MP3 encoding is not supported. Cannot write file : " + folder / "x.mp3");
    EXPECT_EQ(CreationError("x.ogg", 1, 1, 1), "Cannot determine file type : " + folder / "x.ogg");
    EXPECT_EQ(MessageOf([&] { AudioFileWriter::CreateWriterFor(File(String(folder / "x")), 44100, 1, false); }),
              "Unknown audio format for file : " + folder / "x");
    EXPECT_EQ(AudioFileWriter::CreateWriterFor(File(""), 44100, 1, 16, false), nullptr);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));

    WriteBytes(folder / "x.wav", {1});
    EXPECT_EQ(CreationError("x.wav", 44100, 1, 16), "File already exists : " + folder / "x.wav");
    EXPECT_EQ(ReadBytes(folder / "x.wav"), Bytes{1});
}

TEST_F(AudioFileWriting, SpansBeyondTheBufferAreRefused) {
    auto writer = Create("sub/folder/x.wav", 44100, 2, 16);
    const auto buffer = Repeated(2, {1, 2, 3, 4});
    EXPECT_FALSE(writer->WriteSamples(*Repeated(1, {1}), 0, 1));
    EXPECT_FALSE(writer->WriteSamples(*buffer, 2, 3));
    EXPECT_FALSE(writer->WriteSamples(*buffer, ~0ul, 2));
    EXPECT_TRUE(writer->WriteSamples(*buffer, 9, 0));
    EXPECT_TRUE(writer->WriteSamples(*buffer, 2, 2));
    EXPECT_EQ(writer->GetLengthInSamples(), 2u);
}

TEST_F(AudioFileWriting, AWavFileThatReaches4GiBIsCompletedAsRf64) {
    const std::string path = folder / "long.wav";
    const Bytes format = Text("fmt ") + Le32(40) + Le16(0xFFFE) + Le16(2) + Le32(48000) + Le32(192000) + Le16(4) +
                         Le16(16) + Le16(22) + Le16(16) + Le32(3) + Le16(1) + SubFormatTail;
    {
        LongFileWriter<WavFileWriter> writer(path);
        writer.PretendFrames(FourGiB / 4 - 1);
        EXPECT_TRUE(writer.WriteSamples(*Repeated(2, {0.0f}), 0, 1));
    }
    EXPECT_EQ(ReadBytes(path), Text("RF64") + Le32(0xFFFFFFFF) + Text("WAVE") + Text("ds64") + Le32(28) +
                                   Le64(FourGiB + 96) + Le64(FourGiB) + Bytes(12) + format + Text("data") +
                                   Le32(0xFFFFFFFF) + Bytes(4));

    // The samples in between are a hole in the file, and a last frame follows.
    std::filesystem::resize_file(path, 104 + FourGiB - 4);
    std::ofstream(path, std::ios::binary | std::ios::app).write("\x00\x40\x00\xC0", 4);
    const auto reader = AudioFileReader::CreateReaderFor(File(String(path)));
    EXPECT_TRUE(reader->IsRF64());
    EXPECT_EQ(reader->GetLengthInSamples(), FourGiB / 4);
    AudioBuffer end(2, 3, true);
    EXPECT_TRUE(reader->ReadSamples(end, 0, 3, FourGiB / 4 - 2));
    EXPECT_THAT(std::vector(end.GetChannel(0), end.GetChannel(0) + 3), ElementsAre(0, 0.5f, 0));
    EXPECT_THAT(std::vector(end.GetChannel(1), end.GetChannel(1) + 3), ElementsAre(0, -0.5f, 0));
}

TEST_F(AudioFileWriting, JustBelow4GiBTheSizesDoNotWrap) {
    {
        LongFileWriter<WavFileWriter> writer(folder / "a.wav");
        writer.PretendFrames(FourGiB / 4 - 1);
    }
    const Bytes wav = ReadBytes(folder / "a.wav");
    EXPECT_EQ(Bytes(wav.begin(), wav.begin() + 8), Text("RIFF") + Le32(0xFFFFFFFF));
    EXPECT_EQ(Bytes(wav.begin() + 96, wav.end()), Text("data") + Le32(FourGiB - 4));
    {
        LongFileWriter<AiffFileWriter> writer(folder / "a.aif");
        writer.PretendFrames(FourGiB / 4 - 12);  // together with the header that is all that 32 bits can count
        EXPECT_FALSE(writer.WriteSamples(*Repeated(2, {0.0f}), 0, 1));
        EXPECT_TRUE(writer.HasFailed());
    }
    const Bytes aiff = ReadBytes(folder / "a.aif");
    EXPECT_EQ(Bytes(aiff.begin() + 4, aiff.begin() + 8), Be32(FourGiB - 48 + 46));
}

#ifndef _WIN32  // no limit to a file's size there
TEST_F(AudioFileWriting, AfterAFailedWriteTheFileHoldsWhatWasWrittenBefore) {
    for (const char* name : {"full.wav", "full.aif"}) {
        std::vector<float> expected(9999, 0.5f);
        expected.resize(9999 + 8192, 0.25f);
        {
            const FileSizeLimit limit(20000);
            auto writer = Create(name, 44100, 1, 8);
            EXPECT_TRUE(writer->WriteSamples(*Repeated(1, std::vector(9999, 0.5f)), 0, 9999));
            // The first block of 8192 frames still fits.
            EXPECT_FALSE(writer->WriteSamples(*Repeated(1, std::vector(20000, 0.25f)), 0, 20000));
            EXPECT_FALSE(writer->WriteSamples(*Repeated(1, {0.25f}), 0, 1));
            EXPECT_TRUE(writer->HasFailed());
            EXPECT_EQ(ReadAll(name), expected) << name;
        }
        EXPECT_EQ(ReadAll(name), expected) << name;
    }
}
#endif

}  // namespace
}  // namespace velmodsp
