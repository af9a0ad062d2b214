#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "guide/Guide.h"
#include "support/OutputOf.h"
#include "support/TempFolder.h"

/// The guide for the library's users, docs/library.md, tells what is so: its code is the examples' code, its output is
/// what they print, and its project builds.

namespace guide {
namespace {

TEST(LibraryGuide, ShowsCodeOfTheExamplesAlone) { ExpectCodeOfTheExamples("library.md", "examples/library", 8); }

TEST(LibraryGuide, ShowsWhatTheExamplesPrint) {
    const TempFolder folder;
    const std::vector<Command> commands = Commands("library.md");
    EXPECT_GE(commands.size(), 1u);
    for (const auto& [command, lines] : commands) {
        const std::string run =
            "cd '" + folder.Path().string() + "' && PATH=\"" VELMO_EXAMPLES_DIR ":$PATH\" && " + command;
        EXPECT_EQ(LinesOf(OutputOf(run)), lines) << command;
    }
}

#ifdef VELMO_CMAKE
TEST(LibraryGuide, ShowsAProjectThatBuilds) {
    const TempFolder folder;
    const std::vector<std::string> projects = Blocks("library.md", "cmake");
    ASSERT_EQ(projects.size(), 1u);
    WriteBytes(folder / "CMakeLists.txt", projects[0]);
    std::filesystem::create_directory_symlink(projectDirectory, folder / "velmodsp");
    for (const auto& entry : std::filesystem::directory_iterator(projectDirectory + "/examples/library"))
        std::filesystem::copy(entry.path(), folder.Path());
    const std::string cmake = VELMO_CMAKE;
    OutputOf("cd '" + folder.Path().string() + "' && (" + cmake +
             " " VELMO_CMAKE_OPTIONS " -DVELMO_UNITY=ON -B build && " + cmake + " --build build --parallel 2) 2>&1");
    OutputOf((folder / "build/process_file") + " 2>&1; [ $? = 2 ]");  // it runs, and asks for its files
}
#endif

}  // namespace
}  // namespace guide
