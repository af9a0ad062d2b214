#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <numbers>
#include <regex>
#include <string>

#include "files/VelmoDspFile.h"
#include "support/FileBytes.h"
#include "support/MatFile.h"
#include "support/OutputOf.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace velmodsp {
namespace {

constexpr double samplerate = 48000.0;

/// The example programs of the library, as people run them.
class LibraryExamples : public testing::Test {
protected:
    /// A shell command that runs a program in the test's folder.
    std::string Command(const std::string& line) const {
        return "cd '" + folder.Path().string() + "' && HOME=\"$PWD\" " VELMO_EXAMPLES_DIR "/" + line;
    }
    File InFolder(const std::string& name) const { return File(String(folder / name)); }

    TempFolder folder;
};

TEST_F(LibraryExamples, ProcessFileTakesOutBadSamplesAndOffset) {
    constexpr unsigned long length = 10000, impulse = 5000;
    AudioBuffer sound(2, length, true);
    sound.FillChannel(0, 0.25f);
    sound.FillChannel(1, 0.0f);
    sound.GetChannel(0)[4097] = NAN;
    sound.GetChannel(1)[100] = INFINITY;
    sound.GetChannel(1)[impulse] = 1.0f;
    ASSERT_TRUE(sound.SaveAsAudioFile(InFolder("in.wav"), samplerate, true));

    OutputOf(Command("process_file in.wav out.wav"));
    ASSERT_TRUE(sound.LoadFromAudioFile(InFolder("out.wav")));
    ASSERT_EQ(sound.GetNumChannels(), 2u);
    ASSERT_EQ(sound.GetNumSamples(), length);
    // The responses of the difference equation to a step and to an impulse, in closed form
    const double r = std::exp(-2 * std::numbers::pi * 20.0 / samplerate);
    const double gain = (1 + r) / 2;
    for (unsigned long i = 0; i < length; ++i) {
        ASSERT_NEAR(sound.GetChannel(0)[i], 0.25 * gain * std::pow(r, i), 1e-5) << i;
        const double response = i < impulse ? 0 : i == impulse ? gain : gain * (r - 1) * std::pow(r, i - impulse - 1);
        ASSERT_NEAR(sound.GetChannel(1)[i], response, 1e-5) << i;
    }
}

TEST_F(LibraryExamples, MeasureResponseSavesWhatItPrints) {
    OutputOf(Command("measure_response out.mat"));
    const std::vector<MatVariable> variables = ReadMatFile(folder / "out.mat");
    ASSERT_EQ(variables.size(), 2u);
    EXPECT_EQ(variables[0].name, "response");
    EXPECT_EQ(variables[0].size, (std::vector<std::size_t>{1, 8192}));
    EXPECT_EQ(variables[1].name, "levels");
    ASSERT_EQ(variables[1].size, (std::vector<std::size_t>{2, 4}));
    double levels[8];  // column after column: a frequency and its level
    std::memcpy(levels, variables[1].bytes.data(), sizeof levels);
    EXPECT_EQ(levels[0], 10.0);
    // A tenth of the cutoff passes with 1 / sqrt(1 + 10^2), the cutoff itself with 1 / sqrt(2).
    EXPECT_NEAR(levels[1], -10 * std::log10(101.0), 0.01);
    EXPECT_NEAR(levels[3], -10 * std::log10(2.0), 0.01);
}

TEST_F(LibraryExamples, MeasureLoadTellsLoadAndMachine) {
    const std::string output = OutputOf(Command("measure_load"));
    const std::regex form(
        "samplerate           : 48 kHz\n[^]*connected : 2 / 2\n[^]*load +[0-9.]+ % [^]*processor [^]*");
    EXPECT_TRUE(std::regex_match(output, form)) << output;
}

TEST_F(LibraryExamples, LevelPictureLeavesHolesWhereThereIsNaN) {
    AudioBuffer sound(1, 3 * 1024 + 100, true);
    sound.Zero();
    sound.GetChannel(0)[1024 + 500] = NAN;
    for (unsigned long i = 2 * 1024; i < 3 * 1024; ++i) sound.GetChannel(0)[i] = i % 2 == 0 ? 1.0f : -1.0f;
    for (unsigned long i = 3 * 1024; i < sound.GetNumSamples(); ++i) sound.GetChannel(0)[i] = 0.0316228f;  // -30 dB
    ASSERT_TRUE(sound.SaveAsAudioFile(InFolder("in.wav"), samplerate, true));

    OutputOf(Command("level_picture in.wav out.pam"));
    const std::string header = "P7\nWIDTH 4\nHEIGHT 32\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n";
    const char silent[] = "\x00\x00\x04\xff", hole[] = "\x00\x00\x00\x00", full[] = "\xfc\xfd\xbf\xff",
               third[] = "\xf1\x60\x5d\xff";  // a third of the way down from full scale
    std::string picture = header;
    for (int row = 0; row < 32; ++row) {
        for (const char* pixel : {silent, hole, full, third}) picture.append(pixel, 4);
    }
    EXPECT_TRUE(ReadBytes(folder / "out.pam") == picture);
}

TEST_F(LibraryExamples, EndWithAnErrorForWhatTheyCannotRead) {
    WriteBytes(folder / "empty.wav", "");
    for (const char* line : {"process_file missing.wav out.wav", "process_file empty.wav out.wav",
                             "process_file '' out.wav", "level_picture missing.wav out.pam"})
        OutputOf(Command(line) + std::string(" 2>stderr.txt; [ $? = 1 ] && grep -q . stderr.txt"));
    for (const char* line : {"process_file", "measure_response", "level_picture in.wav"})
        OutputOf(Command(line) + std::string(" 2>stderr.txt; [ $? = 2 ] && grep -q ^usage: stderr.txt"));
}

}  // namespace
}  // namespace velmodsp
