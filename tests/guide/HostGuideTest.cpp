#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "guide/Guide.h"
#include "support/OutputOf.h"
#include "support/TempFolder.h"

/// The guide for those who test objects of their own, docs/host.md, tells what is so: its code is the example's code,
/// its commands print what it shows, its project builds, and the host has and lacks the functions that it names.

namespace guide {
namespace {

/// A folder as the guide's reader has it, with the sources of the object and this repository.
class HostGuide : public testing::Test {
protected:
    HostGuide() {
        for (const auto& entry : std::filesystem::directory_iterator(projectDirectory + "/examples/external"))
            std::filesystem::copy(entry.path(), folder.Path());
        std::filesystem::create_directory_symlink(projectDirectory, folder / "velmodsp");
    }

    std::string Run(const std::string& command) const {
        return OutputOf("cd '" + folder.Path().string() + "' && PATH=\"" VELMO_HOST_DIR ":$PATH\" && " + command);
    }

    TempFolder folder;
};

TEST_F(HostGuide, ShowsCodeOfTheExampleAlone) { ExpectCodeOfTheExamples("host.md", "examples/external", 8); }

TEST_F(HostGuide, ShowsWhatItsCommandsPrint) {
    const std::vector<Command> commands = Commands("host.md");
    EXPECT_GE(commands.size(), 7u);
    for (const auto& [command, lines] : commands) EXPECT_EQ(LinesOf(Run(command)), lines) << command;
}

#ifdef VELMO_CMAKE
TEST_F(HostGuide, ShowsAProjectThatBuilds) {
    const std::vector<std::string> projects = Blocks("host.md", "cmake");
    ASSERT_EQ(projects.size(), 1u);
    WriteBytes(folder / "CMakeLists.txt", projects[0]);
    // The object alone: its tests, and with them the host, are built with this project.
    const std::string cmake = VELMO_CMAKE;
    Run("(" + cmake + " " VELMO_CMAKE_OPTIONS " -B build && " + cmake + " --build build --target peak) 2>&1");
    EXPECT_EQ(Run("velmohost run velmo.peak~ --path build/package/externals --message bang"), "[dumpout] peak 0.\n");
}
#endif

/// The names in backticks in a part of the page that begins with a line and ends before another one.
std::vector<std::string> FunctionsBetween(const std::string& start, const std::string& end) {
    const std::string page = ReadBytes(projectDirectory + "/docs/host.md");
    const auto from = page.find("\n" + start), to = page.find("\n" + end);
    if (from >= to || to == std::string::npos) throw std::runtime_error("not in the guide: " + start + end);
    std::vector<std::string> names;
    const std::regex name("`([a-z0-9_]+)`");
    const std::string part = page.substr(from, to - from);
    for (std::sregex_iterator match(part.begin(), part.end(), name); match != std::sregex_iterator(); ++match)
        names.push_back((*match)[1]);
    return names;
}

TEST_F(HostGuide, TellsWhichFunctionsAreThere) {
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

}  // namespace
}  // namespace guide
