// Files made by the formats' own encoders from a sound that is known to the sample.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>

#include "audiofiles/SourceSound.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "files/VelmoDspFile.h"
#include "support/DeliberateLeak.h"
#include "support/MessageOf.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

using testing::Each;
using testing::ElementsAre;
using Samples = std::vector<float>;
using Channels = std::vector<Samples>;

constexpr std::size_t NumFrames = 150000;  // more than readers remember
const std::string notValid = " is not a valid audio file";

class CompressedFiles : public testing::Test {
protected:
    void SetUp() override {
#ifndef VELMO_READS_COMPRESSED
        GTEST_SKIP() << "built without libsndfile";
#endif
        for (const char* encoder : {"flac", "oggenc", "opusenc", "lame"})
            if (!IsInstalled(encoder)) GTEST_SKIP() << encoder << " is not installed";
    }

    File At(const std::string& name) const { return File(String(folder / name)); }

    /// Writes "in.wav" and "in.caf"; the encoder's command turns the former into the file `name`.
    std::unique_ptr<AudioFileReader> Encode(const SourceSound& sound, const std::string& command,
                                            const std::string& name) const {
        WriteBytes(folder / "in.wav", sound.Wav());
        WriteBytes(folder / "in.caf", sound.Caf());
        EXPECT_TRUE(RunIn(folder.Path().string(), command)) << command << ": " << ::ReadBytes(folder / "log.txt");
        return AudioFileReader::CreateReaderFor(At(name));
    }

    static Channels Read(AudioFileReader& reader, std::size_t n, unsigned long long start = 0) {
        AudioBuffer buffer(reader.GetNumChannels(), static_cast<unsigned long>(n), true);
        buffer.Fill(77.0f);
        EXPECT_TRUE(reader.ReadSamples(buffer, 0, n, start));
        Channels channels;
        for (unsigned int k = 0; k < reader.GetNumChannels(); ++k)
            channels.emplace_back(buffer.GetChannel(k), buffer.GetChannel(k) + n);
        return channels;
    }

    /// Reads here and there, all channels or one, and compares with what one read of everything gives.
    static void ExpectSeeksLikeAStraightRead(AudioFileReader& reader) {
        constexpr unsigned long MaxRead = 3000;
        const auto length = static_cast<unsigned long>(reader.GetLengthInSamples());
        const Channels straight = Read(reader, length + MaxRead);
        const unsigned int last = reader.GetNumChannels() - 1;
        std::mt19937 random(1);
        for (int i = 0; i < 40; ++i) {
            const unsigned long start = random() % length, n = 1 + random() % MaxRead;
            const auto expected = straight[last].begin() + static_cast<std::ptrdiff_t>(start);
            AudioBuffer buffer(last + 1, n, true);
            EXPECT_TRUE(i % 2 == 0 ? reader.ReadSamples(buffer, 0, n, start)
                                   : reader.ReadSamples(buffer, last, 0, n, last, start));
            ASSERT_EQ(std::memcmp(buffer.GetChannel(last), &*expected, n * sizeof(float)), 0) << n << " from " << start;
        }
    }

    const TempFolder folder;
};

/// How far the error lies below the sound, in dB; infinite without an error.
double SignalToErrorRatio(const SourceSound& sound, const Channels& decoded) {
    double signal = 0.0, error = 0.0;
    for (std::size_t k = 0; k < sound.channels.size(); ++k) {
        for (std::size_t i = 0; i < sound.NumFrames(); ++i) {
            const double wanted = static_cast<double>(sound.Sample(k, i));
            signal += wanted * wanted;
            error += std::pow(static_cast<double>(decoded[k][i]) - wanted, 2);
        }
    }
    return 10 * std::log10(signal / error);
}

TEST_F(CompressedFiles, HoldWhatTheEncoderWasGivenHoweverItIsReached) {
    const SourceSound music = Music(44100, 16, 2, NumFrames), fine = Music(96000, 24, 2, 30000),
                      studio = Music(48000, 16, 2, NumFrames), finest = Music(48000, 32, 3, 5000);
    const struct {
        const SourceSound& sound;
        std::string command, name;
        const char *format, *extension;
        unsigned int bits;
        double ratio;  // what must be reached, with the sound in its place to the sample
    } rows[] = {
        {music, "flac -s in.wav", "in.flac", "FLAC File", ".flac", 16, INFINITY},
        {fine, "flac -s -f in.wav", "in.flac", "FLAC File", ".flac", 24, INFINITY},
        {studio, "true", "in.caf", "CAF File", ".caf", 16, INFINITY},
        {fine, "true", "in.caf", "CAF File", ".caf", 24, INFINITY},
        {finest, "true", "in.caf", "CAF File", ".caf", 32, INFINITY},
        {music, "oggenc -Q -q 6 in.wav", "in.ogg", "Ogg Vorbis File", ".ogg", 32, 35},
        {studio, "opusenc --quiet --bitrate 192 in.wav a.opus", "a.opus", "Ogg Opus File", ".opus", 32, 33},
        {music, "lame --quiet -b 192 in.wav 192.MP3", "192.MP3", "MP3 File", ".mp3", 32, 28},
        {music, "lame --quiet -V 2 in.wav v2.mp3", "v2.mp3", "MP3 File", ".mp3", 32, 40},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        const auto reader = Encode(row.sound, row.command, row.name);
        EXPECT_EQ(reader->GetFormat(), row.format);
        EXPECT_EQ(reader->GetDefaultFileExtensionForThisFormat(), row.extension);
        EXPECT_EQ(reader->GetSampleRate(), row.sound.rate);
        EXPECT_EQ(reader->GetBitsPerSample(), row.bits);
        EXPECT_EQ(reader->UsesFloatingPointData(), row.ratio < INFINITY);
        ASSERT_EQ(reader->GetNumChannels(), row.sound.channels.size());
        ASSERT_EQ(reader->GetLengthInSamples(), row.sound.NumFrames());
        EXPECT_EQ(reader->GetNumStoredSamples(), row.sound.NumFrames());
        EXPECT_GE(SignalToErrorRatio(row.sound, Read(*reader, row.sound.NumFrames())), row.ratio);
        ExpectSeeksLikeAStraightRead(*reader);
    }
}

TEST_F(CompressedFiles, OpusIsDecodedAtItsOwnRateWhateverItWasMadeFrom) {
    const auto telephone = Encode(Voice(16000, 20000), "opusenc --quiet in.wav a.opus", "a.opus");
    EXPECT_EQ(telephone->GetSampleRate(), 48000);
    EXPECT_EQ(telephone->GetLengthInSamples(), 60000u);
}

TEST_F(CompressedFiles, SpeechSeeksAsMusicDoes) {
    const SourceSound voice = Voice(48000, NumFrames);
    ExpectSeeksLikeAStraightRead(*Encode(voice, "opusenc --quiet --bitrate 16 in.wav a.opus", "a.opus"));
    ExpectSeeksLikeAStraightRead(*Encode(voice, "lame --quiet -V 9 in.wav a.mp3", "a.mp3"));
}

TEST_F(CompressedFiles, RawReadsGiveWordsAndSilence) {
    const SourceSound sound = Music(48000, 24, 2, 100);
    const auto reader = Encode(sound, "flac -s in.wav", "in.flac");
    int right[3] = {1, 1, 1}, further[3] = {1, 1, 1};
    int* channels[] = {nullptr, right, further, nullptr};
    EXPECT_TRUE(reader->readSamples(channels, 3, 98));
    EXPECT_THAT(right, ElementsAre(sound.channels[1][98] * 256, sound.channels[1][99] * 256, 0));
    EXPECT_THAT(further, Each(0));
}

TEST_F(CompressedFiles, SurroundChannelsComeInTheOrderOfTheSource) {
    for (const unsigned int numChannels : {3u, 5u, 6u, 7u, 8u}) {
        SourceSound sound{48000, 16, {}};
        for (unsigned int k = 0; k < numChannels; ++k) {  // each channel louder than the one before
            std::vector<int>& samples = sound.channels.emplace_back();
            for (int i = 0; i < 9600; ++i) samples.push_back(static_cast<int>(1000 * (k + 1) * std::sin(0.01 * i)));
        }
        for (const char* command : {"oggenc -Q -q 9 in.wav -o a", "opusenc --quiet --bitrate 512 in.wav a"}) {
            SCOPED_TRACE(testing::Message() << command << " with " << numChannels << " channels");
            const Channels decoded = Read(*Encode(sound, command, "a"), 9600);
            ASSERT_EQ(decoded.size(), numChannels);
            EXPECT_GE(SignalToErrorRatio(sound, decoded), 15);
        }
    }
}

TEST_F(CompressedFiles, LengthsThatNoHeaderTellsAreCounted) {
    const SourceSound sound = Music(44100, 16, 1, NumFrames);
    Encode(sound, "flac -s in.wav", "in.flac");
    Bytes flac = ReadBytes(folder / "in.flac");
    flac[21] &= 0xF0;  // the length has 36 bits; 0 stands for one that was not known
    std::fill_n(flac.begin() + 22, 4, static_cast<unsigned char>(0));
    WriteBytes(folder / "in.flac", flac);
    const auto reader = AudioFileReader::CreateReaderFor(At("in.flac"));
    EXPECT_EQ(reader->GetLengthInSamples(), NumFrames);
    EXPECT_EQ(SignalToErrorRatio(sound, Read(*reader, NumFrames)), INFINITY);

    // Whole frames of 1152 samples hold the sound, and 529 samples at least that the decoder is late.
    const auto mp3 = Encode(sound, "lame --quiet -t -V 4 in.wav a.mp3", "a.mp3");
    EXPECT_EQ(mp3->GetLengthInSamples() % 1152, 0u);
    EXPECT_GE(mp3->GetLengthInSamples(), NumFrames + 529);
    EXPECT_LE(mp3->GetLengthInSamples(), NumFrames + 3 * 1152);
    EXPECT_EQ(mp3->GetNumStoredSamples(), mp3->GetLengthInSamples());
    const Channels end = Read(*mp3, 5000, NumFrames - 3000);
    EXPECT_GT(*std::max_element(end[0].begin(), end[0].end()), 0.3f);
}

TEST_F(CompressedFiles, FilesAreKnownByTheirContentAndMp3sByTheirName) {
    const SourceSound sound = Music(44100, 16, 2, 30000);
    EXPECT_EQ(Encode(sound, "flac -s in.wav -o plain", "plain")->GetFormat(), "FLAC File");
    EXPECT_EQ(Encode(sound, "lame --quiet in.wav song.dat", "song.dat")->GetFormat(), "MP3 File");
    EXPECT_EQ(MessageOf([&] { Encode(sound, "flac -s in.wav -o a.Mp3", "a.Mp3"); }),
              "file " + folder / "a.Mp3" + notValid);

    // A recording of a stream begins anywhere within a frame; tags may leave a gap behind them.
    const Bytes song = ReadBytes(folder / "song.dat"), gap(5000, 0);
    const Bytes tag = Text("ID3") + Bytes{3, 0, 0, 0, 2, 0x1C, 0x10} + Bytes(2 * 16384 + 0x1C * 128 + 0x10, 'x');
    for (const std::ptrdiff_t cut : {1000, 1500, 2001, 2222}) {
        WriteBytes(folder / "cut.mp3", (cut == 2222 ? tag + gap : Bytes()) + Bytes(song.begin() + cut, song.end()));
        const auto reader = AudioFileReader::CreateReaderFor(At("cut.mp3"));
        EXPECT_EQ(reader->GetSampleRate(), 44100) << cut;
        EXPECT_GE(reader->GetLengthInSamples(), 30000u - 5 * 1152) << cut;
    }
}

TEST_F(CompressedFiles, TruncatedFilesEndInSilence) {
    const SourceSound sound = Music(44100, 16, 2, NumFrames);
    for (const auto& [command, name] : {std::pair{"flac -s in.wav", "in.flac"},
                                        {"oggenc -Q in.wav", "in.ogg"},
                                        {"opusenc --quiet in.wav in.opus", "in.opus"},
                                        {"lame --quiet in.wav in.mp3", "in.mp3"}}) {
        SCOPED_TRACE(command);
        const Channels whole = Read(*Encode(sound, command, name), NumFrames);
        std::filesystem::resize_file(folder / name, std::filesystem::file_size(folder / name) * 3 / 5);
        const auto reader = AudioFileReader::CreateReaderFor(At(name));
        const Channels cut = Read(*reader, NumFrames);
        const std::size_t stored = reader->GetNumStoredSamples();
        EXPECT_GT(stored, NumFrames * 2 / 5);
        EXPECT_LT(stored, NumFrames * 4 / 5);
        // The last frame of an MP3 file overlaps with the one that is missing.
        const std::size_t numSame = stored - (std::string(name) == "in.mp3" ? 1152 : 0);
        EXPECT_EQ(std::memcmp(cut[1].data(), whole[1].data(), numSame * sizeof(float)), 0);
        EXPECT_THAT(Samples(cut[1].begin() + static_cast<std::ptrdiff_t>(stored), cut[1].end()), Each(0.0f));
    }
    // What is stored without loss is looked at when it is opened.
    EXPECT_LT(AudioFileReader::CreateReaderFor(At("in.flac"))->GetNumStoredSamples(), NumFrames);
}

TEST_F(CompressedFiles, AFileThatIsOverwrittenWhileItIsReadEndsInSilence) {
    const SourceSound sound = Music(44100, 16, 1, NumFrames), wider = Music(44100, 16, 8, 3000);
    const auto reader = Encode(sound, "oggenc -Q in.wav", "in.ogg");
    Read(*reader, 1000, NumFrames - 1000);
    Encode(wider, "oggenc -Q in.wav -o wider.ogg", "wider.ogg");
    WriteBytes(folder / "in.ogg", ReadBytes(folder / "wider.ogg"));
    EXPECT_THAT(Read(*reader, 1000)[0], Each(0.0f));
}

TEST_F(CompressedFiles, DamagedFilesAreReadOrRefused) {
    const SourceSound sound = Music(44100, 16, 2, 20000);
    for (const char* command : {"flac -s -f in.wav -o good", "oggenc -Q in.wav -o good", "opusenc --quiet in.wav good",
                                "lame --quiet in.wav good", "lame --quiet -t -V 4 in.wav good"}) {
        SCOPED_TRACE(command);
        Encode(sound, command, "good");
        const Bytes good = ReadBytes(folder / "good");
        std::mt19937 random(1);
        std::optional<velmotest::DeliberateLeak> leak;  // libsndfile's, when it refuses a Vorbis file
        if (std::string(command).starts_with("oggenc")) leak.emplace();
        testing::internal::CaptureStderr();  // every refused file is logged
        for (int i = 0; i < 40; ++i) {
            Bytes bad = good;
            const std::size_t range = i % 2 == 0 ? bad.size() : 400;
            for (int k = 0; k < 1 + i / 2; ++k) bad[random() % range] = static_cast<unsigned char>(random());
            WriteBytes(folder / "bad", bad);
            const std::string message = MessageOf([&] {
                const auto reader = AudioFileReader::CreateReaderFor(At("bad"));
                AudioBuffer block(reader->GetNumChannels(), 512, true);
                for (unsigned long long start = 0; start < 20480; start += 512)
                    ASSERT_TRUE(reader->ReadSamples(block, 0, 512, start));
                ASSERT_TRUE(reader->ReadSamples(block, 0, 512, random() % 20000));
                EXPECT_LE(reader->GetNumStoredSamples(), reader->GetLengthInSamples());
            });
            EXPECT_TRUE(message == "nothing was thrown" || message == "file " + folder / "bad" + notValid) << message;
        }
        testing::internal::GetCapturedStderr();
    }
}

}  // namespace
}  // namespace velmodsp
