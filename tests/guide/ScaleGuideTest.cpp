#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "guide/Guide.h"
#include "host/SoundFiles.h"
#include "support/OutputOf.h"
#include "support/TempFolder.h"

/// The page for those who have thousands of files, docs/scale.md: its script repairs what falls to it and goes on after
/// an interruption, and its commands on the JSON files print what it shows.

namespace guide {
namespace {

TEST(ScaleGuide, SharesFilesAmongTasksAndSumsUp) {
    const TempFolder folder;
    std::filesystem::create_directory(folder.Path() / "takes");
    std::vector<float> samples(24000, 0.5f);
    velmotest::WriteSound(folder / "takes/b.wav", {samples}, 48000.0);
    for (int i : {12000, 12001, 20000}) samples[static_cast<std::size_t>(i)] = NAN;
    velmotest::WriteSound(folder / "takes/a.wav", {samples}, 48000.0);
    WriteBytes(folder / "takes/c.wav", "no sound");
    WriteBytes(folder / "files.txt", "takes/a.wav\ntakes/b.wav\ntakes/c.wav\n");
    const std::vector<std::string> scripts = Blocks("scale.md", "sh");
    ASSERT_EQ(scripts.size(), 1u);
    WriteBytes(folder / "repair_part.sh", scripts[0]);
    const auto run = [&](const std::string& command) {
        return OutputOf("cd '" + folder.Path().string() + "' && PATH=\"" VELMO_HOST_DIR ":$PATH\" && " + command);
    };

    run("sh repair_part.sh 0 2");  // the second file
    EXPECT_FALSE(std::filesystem::exists(folder / "fixed"));
    run("sh repair_part.sh 1 2 2>errors.txt; [ $? = 1 ]");  // the first one, and the one that is no sound
    EXPECT_EQ(velmotest::ReadSound(folder / "fixed/takes/a.wav"), velmotest::Channels{std::vector<float>(24000, 0.5f)});
    run("[ -z \"$(sh repair_part.sh 1 2 2>&1)\" ]");  // nothing is left to do

    const std::vector<Command> commands = Commands("scale.md");
    EXPECT_GE(commands.size(), 4u);
    for (const auto& [command, lines] : commands) EXPECT_EQ(LinesOf(run(command)), lines) << command;
}

}  // namespace
}  // namespace guide
