#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "host/SoundFiles.h"
#include "support/FileBytes.h"
#include "support/OutputOf.h"
#include "support/TempFolder.h"

/// The pages under docs/ tell what is so: their code is the examples' code, their commands print what they show, their
/// projects build, and the host has and lacks the functions that they name.

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

const std::string projectDirectory = VELMO_PROJECT_DIR;

std::string PageText(const std::string& page) { return ReadBytes(projectDirectory + "/docs/" + page); }

/// Without blanks at their ends.
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

/// A page's blocks of code in a language.
std::vector<std::string> Blocks(const std::string& page, const std::string& language) {
    std::vector<std::string> blocks;
    bool inside = false;
    for (const std::string& line : LinesOf(PageText(page))) {
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

/// The commands that a page shows after "$ ", and the lines that each prints there.
std::vector<std::pair<std::string, Lines>> Commands(const std::string& page) {
    std::vector<std::pair<std::string, Lines>> commands;
    for (const std::string& block : Blocks(page, "text")) {
        for (const std::string& line : LinesOf(block)) {
            if (line.starts_with("$ ")) {
                commands.push_back({line.substr(2), {}});
            } else {
                if (commands.empty()) throw std::runtime_error("no command before: " + line);
                commands.back().second.push_back(line);
            }
        }
    }
    return commands;
}

/// A folder as a page's reader has it, with the programs at hand and this repository in "velmodsp".
class Pages : public testing::Test {
protected:
    Pages() { fs::create_directory_symlink(projectDirectory, folder / "velmodsp"); }

    void CopyFrom(const std::string& examples) const {
        for (const auto& entry : fs::directory_iterator(projectDirectory + "/" + examples))
            fs::copy(entry.path(), folder.Path());
    }

    std::string Run(const std::string& command) const {
        return OutputOf("cd '" + folder.Path().string() +
                        "' && PATH=\"" VELMO_HOST_DIR ":" VELMO_EXAMPLES_DIR ":$PATH\" && " + command);
    }

    void ExpectWhatCommandsPrint(const std::string& page, std::size_t atLeast) const {
        const auto commands = Commands(page);
        EXPECT_GE(commands.size(), atLeast);
        for (const auto& [command, lines] : commands) EXPECT_EQ(LinesOf(Run(command)), lines) << command;
    }

#ifdef VELMO_CMAKE
    /// Builds the page's one project.
    void Build(const std::string& page, const std::string& options, const std::string& target) const {
        const std::vector<std::string> projects = Blocks(page, "cmake");
        ASSERT_EQ(projects.size(), 1u);
        WriteBytes(folder / "CMakeLists.txt", projects[0]);
        const std::string cmake = VELMO_CMAKE;
        Run("(" + cmake + " " VELMO_CMAKE_OPTIONS " " + options + " -B build && " + cmake +
            " --build build --parallel 2 --target " + target + ") 2>&1");
    }
#endif

    TempFolder folder;
};

TEST_F(Pages, ShowCodeOfTheExamplesAlone) {
    for (const auto& [page, examples] : {std::pair("host.md", "external"), {"library.md", "library"}}) {
        std::string sources;
        for (const auto& entry : fs::directory_iterator(projectDirectory + "/examples/" + examples))
            sources += "\n" + Joined(LinesOf(ReadBytes(entry.path().string())));
        const std::vector<std::string> snippets = Blocks(page, "cpp");
        EXPECT_GE(snippets.size(), 8u);
        for (const std::string& snippet : snippets)
            EXPECT_NE(sources.find("\n" + snippet), std::string::npos) << "in no example:\n" << snippet;
    }
}

TEST_F(Pages, ShowWhatTheirCommandsPrint) {
    ExpectWhatCommandsPrint("library.md", 1);
    CopyFrom("examples/external");
    ExpectWhatCommandsPrint("host.md", 7);
}

#ifdef VELMO_CMAKE
TEST_F(Pages, ShowAnObjectsProjectThatBuilds) {
    CopyFrom("examples/external");
    Build("host.md", "", "peak");  // without its tests, and with them the host: these are built with this project
    EXPECT_EQ(Run("velmohost run velmo.peak~ --path build/package/externals --message bang"), "[dumpout] peak 0.\n");
}

TEST_F(Pages, ShowAProjectOnTheLibraryThatBuilds) {
    CopyFrom("examples/library");
    Build("library.md", "-DVELMO_UNITY=ON", "all");
    Run("build/process_file 2>&1; [ $? = 2 ]");  // it runs, and asks for its files
}
#endif

/// The names in backticks in a part of the host's page that begins with a line and ends before another one.
std::vector<std::string> FunctionsBetween(const std::string& start, const std::string& end) {
    const std::string page = PageText("host.md");
    const auto from = page.find("\n" + start), to = page.find("\n" + end);
    if (from >= to || to == std::string::npos) throw std::runtime_error("not in the guide: " + start + end);
    std::vector<std::string> names;
    const std::regex name("`([a-z0-9_]+)`");
    const std::string part = page.substr(from, to - from);
    for (std::sregex_iterator match(part.begin(), part.end(), name); match != std::sregex_iterator(); ++match)
        names.push_back((*match)[1]);
    return names;
}

TEST_F(Pages, TellWhichFunctionsTheHostHas) {
    const std::string missing = ReadBytes(projectDirectory + "/host/src/core/MissingFunctions.cpp");
    const auto isMissing = [&](const std::string& name) {
        return missing.find("MISSING(" + name + ")") != std::string::npos;
    };
    const std::vector<std::string> present = FunctionsBetween("There is, ", "There is not:");
    EXPECT_GE(present.size(), 30u);
    for (const std::string& name : present)
        EXPECT_TRUE(dlsym(RTLD_DEFAULT, name.c_str()) != nullptr && !isMissing(name)) << name;
    const std::vector<std::string> absent = FunctionsBetween("There is not:", "An object that uses them");
    EXPECT_GE(absent.size(), 15u);
    for (const std::string& name : absent) EXPECT_TRUE(isMissing(name)) << name;
}

/// For those who have thousands of files: the script repairs what falls to it and goes on after an interruption.
TEST_F(Pages, ShareFilesAmongTasksAndSumUp) {
    fs::create_directory(folder / "takes");
    std::vector<float> samples(24000, 0.5f);
    velmotest::WriteSound(folder / "takes/b.wav", {samples}, 48000.0);
    for (int i : {12000, 12001, 20000}) samples[static_cast<std::size_t>(i)] = NAN;
    velmotest::WriteSound(folder / "takes/a.wav", {samples}, 48000.0);
    WriteBytes(folder / "takes/c.wav", "no sound");
    WriteBytes(folder / "files.txt", "takes/a.wav\ntakes/b.wav\ntakes/c.wav\n");
    const std::vector<std::string> scripts = Blocks("scale.md", "sh");
    ASSERT_EQ(scripts.size(), 1u);
    WriteBytes(folder / "repair_part.sh", scripts[0]);

    Run("sh repair_part.sh 0 2");  // the second file
    EXPECT_FALSE(fs::exists(folder / "fixed"));
    Run("sh repair_part.sh 1 2 2>errors.txt; [ $? = 1 ]");  // the first one, and the one that is no sound
    EXPECT_EQ(velmotest::ReadSound(folder / "fixed/takes/a.wav"), velmotest::Channels{std::vector<float>(24000, 0.5f)});
    Run("[ -z \"$(sh repair_part.sh 1 2 2>&1)\" ]");  // nothing is left to do
    ExpectWhatCommandsPrint("scale.md", 4);
}

}  // namespace
