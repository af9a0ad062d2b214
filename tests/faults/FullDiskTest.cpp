// Disks that are full, from the start or at any byte of a file.

#include <gmock/gmock.h>
#include <sys/mount.h>

#include <fstream>

#include "Writers.h"
#include "support/FileSizeLimit.h"
#include "support/OwnTrash.h"
#include "support/Pattern.h"

namespace {

namespace fs = std::filesystem;

using FullDisk = Writers;

TEST_F(FullDisk, AtAnyByteOfAFileIsToldAndLeavesNoHalfFile) {
    const TempFolder folder;
    const std::string path = folder.Path().string();
    unsigned long numFaults = 0;
    for (const Writer& writer : All()) {
        ASSERT_EQ(writer.write(path), "done") << writer.name;
        const std::uintmax_t size = fs::file_size(folder / writer.name);
        fs::remove(folder / writer.name);
        for (const std::uintmax_t room : {std::uintmax_t{0}, std::uintmax_t{1}, size / 2, size - 1}) {
            if (writer.name == "report.html" && room < 3000) continue;  // no room for the repaired file either
            SCOPED_TRACE("room for " + std::to_string(room) + " bytes of " + std::to_string(size));
            ExpectFailure(writer, path, [&] {
                const FileSizeLimit limit(room);
                return writer.write(path);
            });
            EXPECT_TRUE(fs::is_empty(folder.Path())) << *fs::directory_iterator(folder.Path());
            ++numFaults;
        }
    }
    std::cout << numFaults << " writes cut short, " << numFaults << " told\n";
}

TEST_F(FullDisk, KeepsTheFileThatWasThereBefore) {
    const TempFolder folder;
    const OwnTrash trash;
    for (const Writer& writer : All()) {
        if (!writer.failure.starts_with("velmohost: ")) continue;
        if (writer.name == "fixed.wav") continue;  // is refused before it comes to that
        WriteBytes(folder / writer.name, "older");
        {
            const FileSizeLimit limit(writer.name == "report.html" ? 3000 : 200);
            EXPECT_THAT(writer.write(folder.Path().string()), testing::HasSubstr("cannot write ")) << writer.name;
        }
        EXPECT_EQ(ReadBytes(folder / writer.name), "older") << writer.name;
        fs::remove(folder / writer.name);
        EXPECT_TRUE(fs::is_empty(folder.Path())) << writer.name;
    }
}

TEST_F(FullDisk, OfItsOwnKindIsToldAsWell) {
    const TempFolder disk;
    const std::string path = disk.Path().string();
    if (mount("none", path.c_str(), "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "no right to mount a small disk";
    {
        std::ofstream filler(disk / "filler");
        filler << std::string(100000, 'x');
    }
    EXPECT_EQ(fs::space(path).available, 0u);
    for (Writer& writer : All()) {
        ExpectFailure(writer, path, [&] { return writer.write(path); });
        EXPECT_EQ(std::distance(fs::directory_iterator(path), fs::directory_iterator()), 1) << writer.name;
    }
    umount2(path.c_str(), MNT_DETACH);
}

TEST_F(FullDisk, BehindTheStandardOutputIsTold) {
    const std::string scan = "scan '" + sources / "in.wav" + "'",
                      info = "info tesk.fixnan~ --path '" VELMO_EXTERNALS_DIR "'";
    for (const std::string& command : {scan, info}) {
        const TempFolder folder;
        const std::string line = "'" VELMO_HOST_PROGRAM "' " + command + " >/dev/full 2>'" + folder / "err.txt" + "'";
        EXPECT_EQ(WEXITSTATUS(std::system(line.c_str())), 1) << line;
        EXPECT_EQ(ReadBytes(folder / "err.txt"), "velmohost: cannot write to the standard output\n");
    }
}

}  // namespace
