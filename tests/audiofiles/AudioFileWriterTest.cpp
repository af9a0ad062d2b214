#include "audiofiles/VelmoDspAudioFileWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

#include "audiofiles/FileBytes.h"
#include "audiofiles/VelmoDspAiffFileWriter.h"
#include "audiofiles/VelmoDspAiffSampleRate.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspWavFileWriter.h"
#include "files/VelmoDspFile.h"
#include "support/Noise.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr float Infinity = std::numeric_limits<float>::infinity();
constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();
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
    /// What a file holds into which every channel's `samples` were written at once.
    Bytes Written(const std::string& name, unsigned int channels, int bits, const std::vector<float>& samples,
                  double rate = 44100) {
        std::filesystem::remove(folder / name);
        auto writer = AudioFileWriter::CreateWriterFor(File(String(folder / name)), rate, channels, bits, false);
        EXPECT_TRUE(writer->WriteSamples(*Repeated(channels, samples), 0, samples.size()));
        EXPECT_EQ(writer->GetLengthInSamples(), samples.size());
        writer.reset();
        return ReadBytes(folder / name);
    }

    std::string CreationError(const std::string& path, double rate, unsigned int channels, int bits) {
        try {
            AudioFileWriter::CreateWriterFor(File(String(path)), rate, channels, bits, false);
        } catch (const Exception& error) {
            return error.what();
        }
        return "none";
    }

    TempFolder folder;
};

TEST_F(AudioFileWriting, PlainWavFiles) {
    EXPECT_EQ(Written("a.wav", 2, 16, {0.0f, 1.0f, -1.0f}),
              Text("RIFF") + Le32(108) + Text("WAVE") + Text("JUNK") + Le32(52) + Bytes(52) +                      //
                  Text("fmt ") + Le32(16) + Le16(1) + Le16(2) + Le32(44100) + Le32(176400) + Le16(4) + Le16(16) +  //
                  Text("data") + Le32(12) + Bytes({0, 0, 0, 0, 0xFF, 0x7F, 0xFF, 0x7F, 0, 0x80, 0, 0x80}));
    EXPECT_EQ(Written("a.wav", 1, 8, {0.0f, 1.0f, -1.0f}),  // the size counts a pad byte that is not there
              Text("RIFF") + Le32(100) + Text("WAVE") + Text("JUNK") + Le32(52) + Bytes(52) +                    //
                  Text("fmt ") + Le32(16) + Le16(1) + Le16(1) + Le32(44100) + Le32(44100) + Le16(1) + Le16(8) +  //
                  Text("data") + Le32(3) + Bytes({0x80, 0xFF, 0x00}));
    EXPECT_EQ(Written("a.bwf", 1, 32, {1.0f, -2.0f}, 192000),
              Text("RIFF") + Le32(104) + Text("WAVE") + Text("JUNK") + Le32(52) + Bytes(52) +                       //
                  Text("fmt ") + Le32(16) + Le16(3) + Le16(1) + Le32(192000) + Le32(768000) + Le16(4) + Le16(32) +  //
                  Text("data") + Le32(8) + Le32(0x3F800000) + Le32(0xC0000000));
}

TEST_F(AudioFileWriting, WavFilesOfMoreThanTwoChannelsAreExtensible) {
    const Bytes identifierTail = {0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
    EXPECT_EQ(Written("a.wav", 6, 24, {-1.0f}),
              Text("RIFF") + Le32(114) + Text("WAVE") + Text("JUNK") + Le32(28) + Bytes(28) +  //
                  Text("fmt ") + Le32(40) + Le16(0xFFFE) + Le16(6) + Le32(44100) + Le32(793800) + Le16(18) + Le16(24) +
                  Le16(22) + Le16(24) + Le32(0x3F) + Le16(1) + identifierTail +  //
                  Text("data") + Le32(18) +
                  Bytes({0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80, 0, 0, 0x80}));
    const std::uint32_t masks[] = {0, 0, 0x37, 0x3F, 0x637, 0x63F, 0};
    for (unsigned int channels = 3; channels <= 9; ++channels) {
        const Bytes file = Written("a.wav", channels, 32, {0.0f});
        EXPECT_EQ(Bytes(file.begin() + 76, file.begin() + 96), Le32(masks[channels - 3]) + Le16(3) + identifierTail);
    }
}

TEST_F(AudioFileWriting, AiffFiles) {
    EXPECT_EQ(Written("a.aiff", 1, 8, {0.0f, 1.0f, -1.0f}),
              Text("FORM") + Be32(50) + Text("AIFF") +  //
                  Text("COMM") + Be32(18) + Be16(1) + Be32(3) + Be16(8) +
                  Bytes({0x40, 0x0E, 0xAC, 0x44, 0, 0, 0, 0, 0, 0}) + Text("SSND") + Be32(12) + Be32(0) + Be32(0) +
                  Bytes({0x00, 0x7F, 0x80}) + Bytes(1));
    EXPECT_EQ(Written("a.aif", 2, 32, {0.5f}, 96000),   // integers, not floats
              Text("FORM") + Be32(54) + Text("AIFF") +  //
                  Text("COMM") + Be32(18) + Be16(2) + Be32(1) + Be16(32) +
                  Bytes({0x40, 0x0F, 0xBB, 0x80, 0, 0, 0, 0, 0, 0}) + Text("SSND") + Be32(16) + Be32(0) + Be32(0) +
                  Be32(0x40000000) + Be32(0x40000000));
}

TEST_F(AudioFileWriting, AiffRates) {
    EXPECT_THAT(EncodeAiffSampleRate(1.0), ElementsAre(0x3F, 0xFF, 0x80, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(NotANumber), ElementsAre(0x3F, 0xFF, 0x80, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(2.9), ElementsAre(0x40, 0x00, 0x80, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(1073741823.5), ElementsAre(0x40, 28, 0xFF, 0xFF, 0xFF, 0xFC, 0, 0, 0, 0));
    EXPECT_THAT(EncodeAiffSampleRate(1073741824.0), ElementsAre(0x40, 29, 0, 0, 0, 0, 0, 0, 0, 0));
    for (double rate : {2.0, 11025.0, 44100.0, 192000.0, 1073741823.0})
        EXPECT_EQ(DecodeAiffSampleRate(EncodeAiffSampleRate(rate)), rate);
}

TEST_F(AudioFileWriting, IntegersAreRoundedSaturatedAndNeverNaN) {
    // Words of 2^-31 each; ties go to the even one.
    const std::pair<float, std::uint32_t> rows[] = {{0x1p-31f, 1},
                                                    {0x1p-32f, 0},
                                                    {0x1.8p-31f, 2},
                                                    {0x1.4p-30f, 2},
                                                    {-0x1p-31f, ~0u},
                                                    {-0x1.8p-31f, ~1u},
                                                    {1e-40f, 0},
                                                    {0x1.fffffep-1f, 0x7FFFFF80},
                                                    {1.0f, 0x7FFFFFFF},
                                                    {1.5f, 0x7FFFFFFF},
                                                    {Infinity, 0x7FFFFFFF},
                                                    {-1.0f, 0x80000000},
                                                    {-1.5f, 0x80000000},
                                                    {-Infinity, 0x80000000},
                                                    {NotANumber, 0},
                                                    {-NotANumber, 0}};
    // Every value at every place of a vector register, and in the rest that does not fill one.
    for (const auto& [sample, word] : rows) {
        for (std::size_t place = 0; place < 11; ++place) {
            std::vector<float> samples(11, 0.5f);
            samples[place] = sample;
            const Bytes file = Written("a.aiff", 1, 32, samples);
            for (std::size_t i = 0; i < samples.size(); ++i)
                EXPECT_EQ(Bytes(&file[54 + 4 * i], &file[54 + 4 * i] + 4), Be32(i == place ? word : 0x40000000))
                    << sample << " at " << place;
        }
    }
}

TEST_F(AudioFileWriting, TheFileDoesNotDependOnHowItIsCutIntoBlocks) {
    const auto sound = Repeated(3, Noise(20000, 1));  // more than two blocks of the converter
    for (const char* name : {"a.wav", "a.aiff"}) {
        for (int bits : {8, 16, 24, 32}) {
            const Bytes atOnce = Written(name, 3, bits, Noise(20000, 1));
            std::filesystem::remove(folder / name);
            auto writer = AudioFileWriter::CreateWriterFor(File(String(folder / name)), 44100, 3, bits, false);
            for (unsigned long start = 0; start < 20000; start += 301)
                EXPECT_TRUE(writer->WriteSamples(*sound, start, std::min(301ul, 20000 - start)));
            writer.reset();
            EXPECT_TRUE(ReadBytes(folder / name) == atOnce) << name << " " << bits;

            const auto reader = AudioFileReader::CreateReaderFor(File(String(folder / name)));
            ASSERT_EQ(reader->GetLengthInSamples(), 20000u);
            AudioBuffer read(3, 20000, true);
            EXPECT_TRUE(reader->ReadSamples(read, 0, 20000, 0));
            for (unsigned long i = 0; i < 20000; ++i)
                ASSERT_NEAR(read.GetChannel(2)[i], sound->GetChannel(2)[i], std::ldexp(1.0, 1 - bits))
                    << name << " " << bits;
        }
    }
}

TEST_F(AudioFileWriting, BadArgumentsAreNamed) {
    const std::string wav = folder / "x.wav", folderPath = folder.Path().string();
    EXPECT_EQ(CreationError(wav, 44100.5, 1, 16), "Invalid samplerate : 44100.5");
    EXPECT_EQ(CreationError(wav, NotANumber, 1, 16), "Invalid samplerate : nan");
    EXPECT_EQ(CreationError(folder / "x.aif", 44100, 1, 12), "Invalid bits depth : 12");
    EXPECT_EQ(CreationError(wav, 44100, 0, 16), "Invalid number of channels : 0");
    EXPECT_EQ(CreationError(wav, 44100, 65536, 16), "Invalid number of channels : 65536");
    EXPECT_EQ(CreationError(folder / "x.mp3", 1, 1, 1),
              "MP3 encoding is not supported. Cannot write file : " + folder / "x.mp3");
    EXPECT_EQ(CreationError(folder / "x.ogg", 1, 1, 1), "Cannot determine file type : " + folder / "x.ogg");
    try {
        AudioFileWriter::CreateWriterFor(File(String(folder / "x")), 44100, 1, false);
        FAIL();
    } catch (const Exception& error) {
        EXPECT_EQ(error.what(), "Unknown audio format for file : " + folder / "x");
    }
    EXPECT_EQ(AudioFileWriter::CreateWriterFor(File(""), 44100, 1, 16, false), nullptr);
    EXPECT_TRUE(std::filesystem::is_empty(folderPath));

    WriteBytes(wav, {1});
    EXPECT_EQ(CreationError(wav, 44100, 1, 16), "File already exists : " + wav);
    EXPECT_EQ(ReadBytes(wav), Bytes{1});
}

TEST_F(AudioFileWriting, SpansBeyondTheBufferAreRefused) {
    auto writer = AudioFileWriter::CreateWriterFor(File(String(folder / "sub/folder/x.wav")), 44100, 2, 16, false);
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
                         Le16(16) + Le16(22) + Le16(16) + Le32(3) + Le16(1) +
                         Bytes({0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71});
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

#ifndef _WIN32
/// Lets the process write files of at most `bytes` bytes, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &oldLimit);
        const rlimit limit = {bytes, oldLimit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &oldLimit);
        std::signal(SIGXFSZ, oldHandler);
    }

private:
    void (*oldHandler)(int);
    rlimit oldLimit = {};
};

TEST_F(AudioFileWriting, AfterAFailedWriteTheFileHoldsWhatWasWrittenBefore) {
    for (const char* name : {"full.wav", "full.aif"}) {
        SCOPED_TRACE(name);
        const unsigned long length = 9999 + 8192;
        {
            const FileSizeLimit limit(20000);
            auto writer = AudioFileWriter::CreateWriterFor(File(String(folder / name)), 44100, 1, 8, false);
            EXPECT_TRUE(writer->WriteSamples(*Repeated(1, std::vector(9999, 0.5f)), 0, 9999));
            // The first block of 8192 frames still fits.
            EXPECT_FALSE(writer->WriteSamples(*Repeated(1, std::vector(20000, 0.25f)), 0, 20000));
            EXPECT_FALSE(writer->WriteSamples(*Repeated(1, {0.25f}), 0, 1));
            EXPECT_TRUE(writer->HasFailed());
            EXPECT_EQ(AudioFileReader::CreateReaderFor(File(String(folder / name)))->GetLengthInSamples(), length);
        }
        const auto reader = AudioFileReader::CreateReaderFor(File(String(folder / name)));
        ASSERT_EQ(reader->GetLengthInSamples(), length);
        AudioBuffer read(1, length, true);
        EXPECT_TRUE(reader->ReadSamples(read, 0, length, 0));
        std::vector<float> expected(9999, 0.5f);
        expected.resize(length, 0.25f);
        EXPECT_THAT(std::vector(read.GetChannel(0), read.GetChannel(0) + length), ElementsAreArray(expected));
    }
}
#endif

}  // namespace
}  // namespace velmodsp
