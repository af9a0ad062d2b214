#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "support/FileBytes.h"
#include "support/OutputOf.h"
#include "support/TempFolder.h"

/// The guide for the library's users, docs/library.md, tells what is so: its code is the examples' code, its output is
/// what they print, and its project builds.

namespace velmodsp {
namespace {

using Lines = std::vector<std::string>;

const std::string projectDirectory = VELMO_PROJECT_DIR;
const std::string sourcesDirectory = projectDirectory + "/examples/library";

Lines LinesOf(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
    return lines;
}

std::string Joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

/// The guide's blocks of code in a language, without blanks at the ends of lines.
std::vector<std::string> Blocks(const std::string& language) {
    std::vector<std::string> blocks;
    bool inside = false;
    for (const std::string& line : LinesOf(ReadBytes(projectDirectory + "/docs/library.md"))) {
        if (line == "```") {
            inside = false;
        } else if (line == "```" + language) {
            inside = true;
            blocks.emplace_back();
        } else if (inside) {
            blocks.back() += line + "\n";
        }
    }
    return blocks;
}

TEST(Guide, ShowsCodeOfTheExamplesAlone) {
    std::string sources;
    for (const auto& entry : std::filesystem::directory_iterator(sourcesDirectory))
        sources += "\n" + Joined(LinesOf(ReadBytes(entry.path().string())));
    const std::vector<std::string> snippets = Blocks("cpp");
    EXPECT_GE(snippets.size(), 8u);
    for (const std::string& snippet : snippets)
        EXPECT_NE(sources.find("\n" + snippet), std::string::npos) << "in no example:\n" << snippet;
}

TEST(Guide, ShowsWhatTheExamplesPrint) {
    const TempFolder folder;
    const std::vector<std::string> sessions = Blocks("text");
    EXPECT_GE(sessions.size(), 1u);
    for (const std::string& session : sessions) {
        const std::string::size_type end = session.find('\n');
        const std::string command = session.substr(0, end);
        ASSERT_EQ(command.substr(0, 2), "$ ");
        const std::string run =
            "cd '" + folder.Path().string() + "' && PATH=\"" VELMO_EXAMPLES_DIR ":$PATH\" && " + command.substr(2);
        EXPECT_EQ(Joined(LinesOf(OutputOf(run))), session.substr(end + 1));
    }
}

#ifdef VELMO_CMAKE
TEST(Guide, ShowsAProjectThatBuilds) {
    const TempFolder folder;
    const std::vector<std::string> projects = Blocks("cmake");
    ASSERT_EQ(projects.size(), 1u);
    WriteBytes(folder / "CMakeLists.txt", projects[0]);
    std::filesystem::create_directory_symlink(projectDirectory, folder / "velmodsp");
    for (const auto& entry : std::filesystem::directory_iterator(sourcesDirectory))
        std::filesystem::copy(entry.path(), folder.Path());
    const std::string cmake = VELMO_CMAKE;
    OutputOf("cd '" + folder.Path().string() + "' && (" + cmake +
             " " VELMO_CMAKE_OPTIONS " -DVELMO_UNITY=ON -B build && " + cmake + " --build build --parallel 2) 2>&1");
    OutputOf((folder / "build/process_file") + " 2>&1; [ $? = 2 ]");  // it runs, and asks for its files
}
#endif

}  // namespace
}  // namespace velmodsp
