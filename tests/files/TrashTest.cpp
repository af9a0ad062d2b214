#include <gmock/gmock.h>

#include <filesystem>

#include "files/VelmoDspFile.h"
#include "support/FileBytes.h"
#include "support/MessageOf.h"
#include "support/RecycleBin.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

#ifdef __linux__

#include <sys/stat.h>

namespace velmodsp {
namespace {

namespace fs = std::filesystem;
using testing::MatchesRegex;

/// A trash of the test's own, for never must a test touch the user's.
class TrashTest : public testing::Test {
protected:
    bool Trash(const std::string& name) const { return File((folder / name).c_str()).macMoveToTrash(); }
    std::string InTrash(const std::string& name) const { return ReadBytes(data / ("Trash/files/" + name)); }
    std::string Info(const std::string& name) const { return ReadBytes(data / ("Trash/info/" + name + ".trashinfo")); }
    long NumInfos() const {
        return std::distance(fs::directory_iterator(data / "Trash/info"), fs::directory_iterator());
    }
    static std::string ErrorOf(const File& file, bool overwrite) {
        return MessageOf([&] { file.OverwriteIfNeeded(overwrite); });
    }

    TempFolder folder, data;
    ScopedVariable dataHome{"XDG_DATA_HOME", data.Path().string()};
};

TEST_F(TrashTest, KeepsFilesOfOneNameApartAndTellsWhereTheyCameFrom) {
    for (const char* content : {"first", "second", "third"}) {
        WriteBytes(folder / "t\xC3\xA4ke 1%.wav", content);
        EXPECT_TRUE(Trash("t\xC3\xA4ke 1%.wav"));
    }
    EXPECT_TRUE(fs::is_empty(folder.Path()));
    EXPECT_EQ(InTrash("t\xC3\xA4ke 1%.wav") + InTrash("t\xC3\xA4ke 1%.3.wav"), "firstthird");
    EXPECT_THAT(Info("t\xC3\xA4ke 1%.2.wav"),
                MatchesRegex("\\[Trash Info\\]\nPath=" + folder.Path().string() +
                             "/t%C3%A4ke%201%25\\.wav\nDeletionDate=[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\n"));
    struct stat status;
    ASSERT_EQ(stat((data / "Trash").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u) << "what a user threw away is nobody else's business";
}

TEST_F(TrashTest, NeverWritesOverWhatLiesInTheTrash) {
    fs::create_directories(data / "Trash/files");
    WriteBytes(data / "Trash/files/orphan", "without info");
    WriteBytes(folder / "orphan", "new");
    EXPECT_TRUE(Trash("orphan"));
    EXPECT_EQ(InTrash("orphan"), "without info");
    EXPECT_EQ(InTrash("orphan.2"), "new");
    EXPECT_EQ(NumInfos(), 1);
}

TEST_F(TrashTest, TakesLongNamesFoldersAndLinksThatLeadNowhere) {
    const std::string longName = std::string(249, 'n') + ".wav";
    for (int i = 0; i < 2; ++i) {
        WriteBytes(folder / longName, "long");
        EXPECT_TRUE(Trash(longName));
    }
    fs::create_directories(folder / "takes/a");
    EXPECT_TRUE(Trash("takes"));
    EXPECT_TRUE(fs::is_directory(data / "Trash/files/takes/a"));
    fs::create_symlink("nowhere", folder / "link");
    EXPECT_TRUE(Trash("link"));
    EXPECT_TRUE(fs::is_symlink(data / "Trash/files/link"));
    EXPECT_EQ(NumInfos(), 4);
}

TEST_F(TrashTest, LeavesFilesWhereTheyAreWhenItCannotTakeThem) {
    WriteBytes(data / "Trash", "a file in the way of the folder");
    WriteBytes(folder / "take.wav", "kept");
    EXPECT_FALSE(Trash("take.wav"));
    EXPECT_EQ(ErrorOf(File((folder / "take.wav").c_str()), true), "Error deleting " + (folder / "take.wav"));
    EXPECT_EQ(ReadBytes(folder / "take.wav"), "kept");
    fs::remove(data / "Trash");
    for (const char* nothing : {"missing", "."}) EXPECT_FALSE(Trash(nothing)) << nothing;
    EXPECT_FALSE(File(data.Path().c_str()).macMoveToTrash()) << "the trash cannot go into itself";
    EXPECT_TRUE(fs::exists(data.Path()));
    EXPECT_EQ(NumInfos(), 0) << "no claim to a name is left behind";
}

TEST_F(TrashTest, TakesFilesFromOtherFileSystems) {
    const fs::path memory = "/dev/shm";
    struct stat here, there;
    if (stat(memory.c_str(), &there) != 0 || stat(data.Path().c_str(), &here) != 0 || here.st_dev == there.st_dev) {
        GTEST_SKIP() << "no other file system at " << memory;
    }
    std::string source = memory / "velmodsp-XXXXXX";
    ASSERT_NE(mkdtemp(source.data()), nullptr);
    const std::string content(100000, 'x');
    WriteBytes(source + "/take.wav", content);
    EXPECT_TRUE(File((source + "/take.wav").c_str()).macMoveToTrash());
    EXPECT_FALSE(fs::exists(source + "/take.wav"));
    EXPECT_EQ(InTrash("take.wav"), content);
    fs::create_directories(source + "/takes/a");
    EXPECT_TRUE(File((source + "/takes").c_str()).macMoveToTrash());
    EXPECT_TRUE(fs::is_directory(data / "Trash/files/takes/a"));
    EXPECT_TRUE(fs::is_empty(source));
    fs::remove_all(source);
}

TEST_F(TrashTest, OverwritingAsksFirstAndTrashesTheOldFile) {
    const File take((folder / "take.wav").c_str());
    EXPECT_TRUE(take.OverwriteIfNeeded(false)) << "nothing is there";
    WriteBytes(folder / "take.wav", "old");
    EXPECT_EQ(ErrorOf(take, false), "File already exists : " + (folder / "take.wav"));
    EXPECT_TRUE(take.OverwriteIfNeeded(true));
    EXPECT_FALSE(take.ExistsAsFile());
    EXPECT_EQ(InTrash("take.wav"), "old");
    EXPECT_EQ(ErrorOf(File(folder.Path().c_str()), true), folder.Path().string() + " is a folder");
}

TEST_F(TrashTest, LiesInTheHomeDirectoryUnlessToldOtherwise) {
    const ScopedVariable home("HOME", folder.Path().string());
    const ScopedVariable relative("XDG_DATA_HOME", "relative/does/not/count");
    WriteBytes(folder / "take.wav", "x");
    EXPECT_TRUE(Trash("take.wav"));
    EXPECT_EQ(ReadBytes(folder / ".local/share/Trash/files/take.wav"), "x");
}

}  // namespace
}  // namespace velmodsp

#elif defined(_WIN32)

namespace velmodsp {
namespace {

TEST(Trash, TakesReplacedFilesOfAnyName) {
    const TempFolder folder;
    const std::string path = folder / "t\xC3\xA4ke \xE5\xA3\xB0.wav";
    const long long before = NumFilesInRecycleBin(path);
    ASSERT_GE(before, 0);
    const File file(path.c_str());
    EXPECT_FALSE(file.macMoveToTrash()) << "there is none";
    WriteBytes(path, "old");
    EXPECT_EQ(MessageOf([&] { file.OverwriteIfNeeded(false); }), "File already exists : " + path);
    EXPECT_TRUE(file.OverwriteIfNeeded(true));
    EXPECT_FALSE(file.ExistsAsFile());
    EXPECT_EQ(NumFilesInRecycleBin(path), before + 1);
}

}  // namespace
}  // namespace velmodsp

#endif
