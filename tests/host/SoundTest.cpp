#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <limits>

#include "host/SoundFiles.h"
#include "sound/SoundError.h"
#include "sound/SoundPath.h"
#include "support/TempFolder.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Property;
using velmotest::Channels;
using velmotest::ReadSound;
using velmotest::WriteSound;

class SoundTest : public testing::Test {
protected:
    void WriteText(const std::string& name, const std::string& text) { std::ofstream(folder / name) << text; }

    std::string ReadText(const std::string& name) {
        std::ifstream file(folder / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::vector<std::string> FileNames() {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.Path())) names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }

    TempFolder folder;
};

TEST_F(SoundTest, WrittenBlocksReadBackInBlocksOfOtherSizes) {
    Channels sound(3, std::vector<float>(2500));
    for (std::size_t i = 0; i < 2500; ++i) {
        for (std::size_t c = 0; c < 3; ++c) sound[c][i] = static_cast<float>(i) + 0.25f * static_cast<float>(c);
    }
    {
        SoundSink sink({folder / "a.wav", 48000.0, 3, 32, 2500}, 700);
        for (std::size_t start = 0; start < 2500; start += 700) {
            const std::size_t n = std::min<std::size_t>(700, 2500 - start);
            for (unsigned c = 0; c < 3; ++c)
                std::copy_n(sound[c].begin() + static_cast<long>(start), n, sink.Channel(c));
            sink.WriteBlock(n);
        }
        EXPECT_FALSE(sink.Finish());
    }
    EXPECT_EQ(ReadSound(folder / "a.wav"), sound);
    EXPECT_EQ(SoundSource(folder / "a.wav").Samplerate(), 48000.0);
    EXPECT_THAT(FileNames(), ElementsAre("a.wav"));
}

TEST_F(SoundTest, SourcesRefuseWhatIsNoSoundFile) {
    WriteText("text.wav", "This is not a sound file at all.");
    WriteText("empty.aiff", "");
    for (const auto& [name, reason] : {std::pair("missing.wav", "no such file"), std::pair("", "it is a folder"),
                                       std::pair("text.wav", "not a valid"), std::pair("empty.aiff", "not a valid")}) {
        const std::string path = folder / name;
        EXPECT_THAT([&] { SoundSource source(path); },
                    testing::ThrowsMessage<SoundError>(AllOf(HasSubstr("cannot read " + path), HasSubstr(reason))));
    }
}

TEST_F(SoundTest, FilesCutShortReadAsSilenceAndSaySo) {
    WriteSound(folder / "a.wav", {std::vector<float>(1000, 0.5f)});
    fs::resize_file(folder / "a.wav", 104 + 4 * 100);  // the header and 100 frames
    const Channels sound = ReadSound(folder / "a.wav");
    EXPECT_EQ(sound[0].size(), 1000u);
    EXPECT_EQ(sound[0][99], 0.5f);
    EXPECT_EQ(sound[0][100], 0.0f);
    EXPECT_EQ(SoundSource(folder / "a.wav").NumMissingFrames(), 900u);
}

TEST_F(SoundTest, FilesOfUnknownLengthEndWhereTheyEnd) {
    WriteSound(folder / "a.wav", {{1, 2, 3}});
    std::fstream file(folder / "a.wav", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(100);  // the size of the data chunk
    file.write("\xFF\xFF\xFF\xFF", 4);
    file.seekp(4);  // the size of the whole
    file.write("\xFF\xFF\xFF\xFF", 4);
    file.close();
    EXPECT_EQ(ReadSound(folder / "a.wav"), (Channels{{1, 2, 3}}));
    EXPECT_EQ(SoundSource(folder / "a.wav").NumMissingFrames(), 0u);
}

TEST_F(SoundTest, GivenUpSinksLeaveTheOldFileAlone) {
    WriteText("a.wav", "old");
    {
        SoundSink sink({folder / "a.wav", 44100.0, 1, 16, 10}, 10);
        sink.WriteBlock(10);
    }
    EXPECT_THAT(FileNames(), ElementsAre("a.wav"));
    EXPECT_EQ(ReadText("a.wav"), "old");
}

TEST_F(SoundTest, ReplacedFilesGoToTheTrash) {
    // The trash is made in the home directory, so the test brings one of its own.
    fs::create_directories(folder / "home");
    setenv("HOME", (folder / "home").c_str(), 1);
    unsetenv("XDG_DATA_HOME");
    WriteText("a.wav", "old");
    fs::create_symlink(folder / "a.wav", folder / "link.wav");
    SoundSink sink({folder / "link.wav", 44100.0, 1, 16, 0}, 10);
    EXPECT_TRUE(sink.Finish());
    EXPECT_THAT(FileNames(), ElementsAre("a.wav", "home", "link.wav"));
    EXPECT_TRUE(fs::is_symlink(folder / "link.wav"));
    EXPECT_TRUE(ReadText("a.wav").starts_with("RIFF"));
    bool found = false;
    for (const auto& entry : fs::recursive_directory_iterator(folder / "home")) {
        found = found || (entry.is_regular_file() && entry.file_size() == 3);
    }
    EXPECT_TRUE(found) << "the old file's three bytes are gone";
}

TEST_F(SoundTest, SinksRefuseWhatCannotBeWrittenBeforeTouchingAnything) {
    WriteText("a.wav", "old");
    fs::create_directory(folder / "folder.wav");
    fs::create_symlink("/dev/null", folder / "device.wav");
    const std::uint64_t tooLong = std::numeric_limits<std::uint32_t>::max() / 2;
    const std::pair<SoundSink::Format, const char*> refused[] = {
        {{folder / "a.wav", 12345.0, 1, 16, 10}, "12345"},
        {{folder / "a.wav", 44100.0, 1, 12, 10}, "12"},
        {{folder / "a.ogg", 44100.0, 1, 16, 10}, "only WAV and AIFF"},
        {{folder / "folder.wav", 44100.0, 1, 16, 10}, "folder"},
        {{folder / "device.wav", 44100.0, 1, 16, 10}, "plain file"},
        {{folder / "a.aiff", 44100.0, 1, 16, tooLong}, "4 GB"},
        {{folder / "a.wav", 44100.0, 1, 16, std::uint64_t{1} << 60}, "do not fit on the disk"},
    };
    for (const auto& [format, reason] : refused) {
        const auto open = [&chosen = format] { SoundSink(chosen, 10); };
        EXPECT_THAT(open, testing::ThrowsMessage<SoundError>(AllOf(HasSubstr("cannot write "), HasSubstr(reason))));
    }
    EXPECT_THAT(FileNames(), ElementsAre("a.wav", "device.wav", "folder.wav"));
    EXPECT_EQ(ReadText("a.wav"), "old");
}

TEST_F(SoundTest, LinksAreTheSameFile) {
    WriteText("a.wav", "x");
    WriteText("b.wav", "x");
    fs::create_symlink(folder / "a.wav", folder / "soft.wav");
    fs::create_hard_link(folder / "a.wav", folder / "hard.wav");
    EXPECT_TRUE(IsSameFile(folder / "a.wav", folder / "./a.wav"));
    EXPECT_TRUE(IsSameFile(folder / "a.wav", folder / "soft.wav"));
    EXPECT_TRUE(IsSameFile(folder / "a.wav", folder / "hard.wav"));
    EXPECT_FALSE(IsSameFile(folder / "a.wav", folder / "b.wav"));
    EXPECT_FALSE(IsSameFile(folder / "a.wav", folder / "new.wav"));
}

}  // namespace
}  // namespace velmohost
