#include <gmock/gmock.h>

#include <filesystem>
#include <limits>

#include "audiofiles/SourceSound.h"
#include "batch/FileScan.h"
#include "host/SoundFiles.h"
#include "sound/SoundError.h"
#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using velmotest::Channels;
using velmotest::ReadSound;
using velmotest::WriteSound;

class SoundTest : public testing::Test {
protected:
    std::ptrdiff_t NumFiles() const { return std::distance(fs::directory_iterator(folder.Path()), {}); }

    TempFolder folder;
};

TEST_F(SoundTest, OtherFormatsReadAsWavFilesDo) {
#ifndef VELMO_READS_COMPRESSED
    GTEST_SKIP() << "built without libsndfile";
#endif
    const velmodsp::SourceSound music = velmodsp::Music(44100, 24, 2, 5000);
    velmodsp::WriteBytes(folder / "in.caf", music.Caf());
    velmodsp::WriteBytes(folder / "in.wav", music.Wav());
    SoundSource(folder / "in.caf").RequireKnownEncoding();
    const Channels sound = ReadSound(folder / "in.caf");
    EXPECT_EQ(sound[1].size(), 5000u);
    EXPECT_EQ(sound, ReadSound(folder / "in.wav"));
}

TEST_F(SoundTest, FilesCutShortAreScannedAsFarAsTheyGo) {
    WriteSound(folder / "a.wav", {{0.5f, std::numeric_limits<float>::infinity()}});
    std::string bytes = ReadBytes(folder / "a.wav");
    bytes.replace(100, 4, std::string("\0\0\xFE\x7F", 4));  // of the data chunk: nearly 2 GB
    WriteBytes(folder / "a.wav", bytes);
    int numBlocks = 0;
    const FileScan scan = ScanSoundFile(folder / "a.wav", [&](double) { ++numBlocks; });
    EXPECT_EQ(numBlocks, 1);
    EXPECT_EQ(scan.NumBad(), 1u);
    EXPECT_EQ(scan.numMissingFrames, 0x7FFE0000u / 4 - 2);
}

TEST_F(SoundTest, FilesOfUnknownLengthEndWhereTheyEnd) {
    WriteSound(folder / "a.wav", {{1, 2, 3}});
    std::string bytes = ReadBytes(folder / "a.wav");
    for (const std::size_t size : {4u, 100u}) bytes.replace(size, 4, 4, '\xFF');  // of the whole, of the data chunk
    WriteBytes(folder / "a.wav", bytes);
    EXPECT_EQ(ReadSound(folder / "a.wav"), (Channels{{1, 2, 3}}));
    EXPECT_EQ(SoundSource(folder / "a.wav").NumMissingFrames(), 0u);
}

#ifndef _WIN32  // the trash is not in the home directory there, and links are the administrator's
TEST_F(SoundTest, ReplacedFilesGoToTheTrash) {
    // The trash is made in the home directory, so the test brings one of its own.
    fs::create_directories(folder / "home");
    const ScopedVariable home("HOME", folder / "home"), data("XDG_DATA_HOME", std::nullopt);
    WriteBytes(folder / "a.wav", "old");
    fs::create_symlink(folder / "a.wav", folder / "link.wav");
    SoundSink sink({folder / "link.wav", 44100.0, 1, 16, 0}, 10);
    EXPECT_TRUE(sink.Finish());
    EXPECT_EQ(NumFiles(), 3);
    EXPECT_TRUE(fs::is_symlink(folder / "link.wav"));
    EXPECT_TRUE(ReadBytes(folder / "a.wav").starts_with("RIFF"));
    bool found = false;
    for (const auto& entry : fs::recursive_directory_iterator(folder / "home")) {
        found = found || (entry.is_regular_file() && entry.file_size() == 3);
    }
    EXPECT_TRUE(found) << "the old file's three bytes are gone";
}
#endif

TEST_F(SoundTest, SinksRefuseWhatCannotBeWrittenBeforeTouchingAnything) {
    WriteBytes(folder / "a.wav", "old");
    fs::create_directory(folder / "folder.wav");
#ifndef _WIN32
    fs::create_symlink("/dev/null", folder / "device.wav");
#endif
    const std::uint64_t tooLong = std::numeric_limits<std::uint32_t>::max() / 2;
    const std::pair<SoundSink::Format, const char*> refused[] = {
        {{folder / "a.wav", 12345.0, 1, 16, 10}, "12345"},
        {{folder / "a.wav", 44100.0, 1, 12, 10}, "12"},
        {{folder / "a.ogg", 44100.0, 1, 16, 10}, "only WAV and AIFF"},
        {{folder / "folder.wav", 44100.0, 1, 16, 10}, "folder"},
#ifndef _WIN32
        {{folder / "device.wav", 44100.0, 1, 16, 10}, "plain file"},
#endif
        {{folder / "a.aiff", 44100.0, 1, 16, tooLong}, "4 GB"},
        {{folder / "a.wav", 44100.0, 1, 16, std::uint64_t{1} << 60}, "do not fit on the disk"},
    };
    for (const auto& [format, reason] : refused) {
        const auto open = [&chosen = format] { SoundSink(chosen, 10); };
        EXPECT_THAT(open, testing::ThrowsMessage<SoundError>(AllOf(HasSubstr("cannot write "), HasSubstr(reason))));
    }
    fs::remove(folder / "device.wav");
    EXPECT_EQ(NumFiles(), 2);
    EXPECT_EQ(ReadBytes(folder / "a.wav"), "old");
}

}  // namespace
}  // namespace velmohost
