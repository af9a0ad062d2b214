// Scanning and repairing many files, as the commands `scan` and `repair` do it.

#include <gmock/gmock.h>

#include <bit>
#include <filesystem>
#include <limits>
#include <nlohmann/json.hpp>

#include "audiofiles/FileBytes.h"
#include "batch/BadSamples.h"
#include "commands/RepairCommand.h"
#include "commands/RepairOutputs.h"
#include "commands/ScanCommand.h"
#include "commands/UsageError.h"
#include "support/OwnTrash.h"
#include "support/TempFolder.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;
using namespace velmodsp;  // spelling files as bytes
using testing::ElementsAre;
using testing::HasSubstr;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN(), kInf = std::numeric_limits<float>::infinity();

TEST(BadSamples, AreCountedByKindPlaceAndRunHoweverTheSignalIsCut) {
    std::vector<float> signal(3000, 0.25f);
    const std::pair<std::size_t, float> odd[] = {{700, -1e-40f}, {1020, kInf},   {1021, -kNaN}, {1022, kNaN},
                                                 {1023, -kInf},  {1024, kNaN},   {1026, kInf},  {1030, 0.0f},
                                                 {1031, -0.0f},  {1032, 1e-38f}, {2999, kNaN}};
    for (const auto& [position, value] : odd) signal[position] = value;
    signal[5] = std::numeric_limits<float>::max();
    signal[6] = -std::numeric_limits<float>::min();
    for (const std::size_t blockSize : {1u, 511u, 512u, 1022u, 3000u}) {
        BadSampleCounter counter;
        for (std::size_t start = 0; start < signal.size(); start += blockSize) {
            counter.Add(signal.data() + start, std::min(blockSize, signal.size() - start));
        }
        const BadSamples& found = counter.Found();
        SCOPED_TRACE(blockSize);
        EXPECT_EQ(found.numNaN, 4u);
        EXPECT_EQ(found.numPositiveInfinity, 2u);
        EXPECT_EQ(found.numNegativeInfinity, 1u);
        EXPECT_EQ(found.numSubnormal, 2u);
        EXPECT_EQ(found.first, 1020u);
        EXPECT_EQ(found.longestRun, 5u);
    }
}

class BatchTest : public testing::Test {
protected:
    BatchTest() { options.paths = {VELMO_EXTERNALS_DIR}; }

    Bytes Floats(const std::vector<float>& samples, bool bigEndian = false) {
        Bytes bytes;
        for (const float x : samples) {
            const auto word = std::bit_cast<std::uint32_t>(x);
            const Bytes sample = bigEndian ? Be32(word) : Le32(word);
            bytes.insert(bytes.end(), sample.begin(), sample.end());
        }
        return bytes;
    }

    /// A WAV file as recorders write it: a rate that few programs know, a chunk before the samples and one behind them.
    Bytes Wav(const std::vector<float>& samples, unsigned int channels, const Bytes& rest = {}) {
        const Bytes content = Text("WAVE") + RiffChunk("bext", Text("scene 7")) + WavFormat(3, channels, 37800, 32) +
                              RiffChunk("data", Floats(samples) + rest) + RiffChunk("LIST", Text("take 2"));
        return Text("RIFF") + Le32(content.size()) + content;
    }

    std::string Write(const std::string& name, const Bytes& bytes) {
        fs::create_directories(fs::path(folder / name).parent_path());
        velmodsp::WriteBytes(folder / name, bytes);
        return folder / name;
    }

    /// What a command prints, without the folder's path; its status goes to `status`, its notices to `errors`.
    template <class Command>
    std::string Print(const Command& command) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        status = command();
        errors = WithoutFolder(testing::internal::GetCapturedStderr());
        return WithoutFolder(testing::internal::GetCapturedStdout());
    }
    std::string Scan() {
        return Print([this] { return ScanFiles(options); });
    }
    std::string Repair() {
        return Print([this] { return RepairFiles(options); });
    }

    std::string WithoutFolder(std::string text) {
        const std::string path = Utf8Text(folder.Path()) + "/";
        for (std::size_t at; (at = text.find(path)) != std::string::npos;) text.erase(at, path.size());
        return text;
    }

    std::vector<std::string> FileNames() {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
            if (entry.is_regular_file()) names.push_back(WithoutFolder(Utf8Text(entry.path())));
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TempFolder folder;
    RepairOptions options;
    int status = -1;
    std::string errors;
};

TEST_F(BatchTest, ScanTellsOfEveryFileAndChannelAndGoesOnAfterFailures) {
    std::vector<float> samples(2 * 40000, 0.5f);
    samples[2 * 37800] = samples[2 * 37801] = kNaN;
    samples[2 * 5 + 1] = -kInf;
    samples[2 * 6 + 1] = 1e-40f;
    options.files = {Write("bad.wav", Wav(samples, 2)),
                     folder / "missing.wav",
                     Write("good.wav", Wav({0.5f}, 1)),
                     Write("double.wav", Text("RIFF") + Le32(60) + Text("WAVE") + WavFormat(3, 1, 48000, 64) +
                                             RiffChunk("data", Bytes(16, 0xFF))),
                     Write("short.wav", Text("RIFF") + Le32(60) + Text("WAVE") + WavFormat(1, 1, 48000, 16) +
                                            Text("data") + Le32(8) + Bytes(4)),
                     Write("text.wav", Text("no sound")),
                     folder.Path().string()};
    options.json = folder / "found.json";
    EXPECT_EQ(
        Scan(),
        "bad.wav: 3 bad samples (2 channels, 37800 Hz, 32-bit float, 0:01.058)\n"
        "  channel 1: 2 NaN; first bad: sample 37800 (0:01.000), longest run: 2\n"
        "  channel 2: 1 -Inf, 1 subnormal; first bad: sample 5 (0:00.000), longest run: 1\n"
        "good.wav: clean (1 channel, 37800 Hz, 32-bit float, 0:00.000)\n"
        "short.wav: clean (1 channel, 48000 Hz, 16-bit integer, 0:00.000, cut short: 2 frames missing at the end)\n"
        "7 files: 1 damaged, 2 clean, 4 failed\n");
    EXPECT_EQ(status, 1);
    for (const char* reason : {"missing.wav: no such file", "double.wav: its samples (64 bits) are in an encoding",
                               "text.wav", "it is a folder; --recursive walks it"}) {
        EXPECT_THAT(errors, HasSubstr(reason));
    }
    const auto json = nlohmann::json::parse(::ReadBytes(folder / "found.json")).at("files");
    EXPECT_EQ(json.at(0).at("channels").at(1).at("negativeInfinity"), 1);
    EXPECT_EQ(json.at(0).at("channels").at(0).at("firstSeconds"), 1.0);
    EXPECT_EQ(json.at(1).at("status"), "failed");
    EXPECT_EQ(json.at(2).at("channels").at(0).at("firstSample"), nullptr);
}

TEST_F(BatchTest, RepairChangesTheBadSamplesAndNothingElse) {
    // Bad at the first sample, on both sides of a batch's border, in the last vector, and a signalling NaN; a frame
    // that the file's end cuts off, and subnormals, stay.
    std::vector<float> samples(2 * 40000), expected;
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<float>(i) * 1e-42f + 1.0f;
    samples[9] = 1e-40f;
    expected = samples;
    const auto damage = [&](std::size_t frame, std::size_t channel, float bad, float repaired) {
        samples[2 * frame + channel] = bad;
        expected[2 * frame + channel] = repaired;
    };
    damage(0, 0, kNaN, 0.0f);
    damage(16383, 1, kInf, samples[2 * 16382 + 1]);
    damage(16384, 1, -kInf, samples[2 * 16382 + 1]);
    damage(39999, 0, std::bit_cast<float>(0x7f800001u), samples[2 * 39998]);
    const Bytes cutOff{1, 2, 3, 4, 0xC0, 0x7F};
    options.files = {Write("take.wav", Wav(samples, 2, cutOff))};
    fs::permissions(folder / "take.wav", fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(
        Repair(),
        "take.wav: repaired 4 bad samples (channel 1: 2, channel 2: 2), first: sample 0 (0:00.000), longest run: 2; "
        "written to take-repaired.wav\n");
    EXPECT_EQ(status, 0) << errors;
    EXPECT_TRUE(velmodsp::ReadBytes(folder / "take-repaired.wav") == Wav(expected, 2, cutOff));
#ifndef _WIN32  // where files have no such permissions
    EXPECT_EQ(fs::status(folder / "take-repaired.wav").permissions(), fs::perms::owner_read | fs::perms::owner_write);
#endif
    EXPECT_TRUE(velmodsp::ReadBytes(folder / "take.wav") == Wav(samples, 2, cutOff)) << "the source changed";
}

TEST_F(BatchTest, RepairKeepsTheContainerOfAiffAndLargeWav) {
    const auto aiff = [this](const std::vector<float>& samples) {
        const Bytes content = Text("AIFC") + AiffChunk("FVER", Be32(0xA2805140)) + AiffCommon(1, 3, 32, "FL32") +
                              AiffSound(Floats(samples, true)) + AiffChunk("MARK", Be16(0));
        return Text("FORM") + Be32(content.size()) + content;
    };
    const auto rf64 = [this](const std::vector<float>& samples) {
        return Text("RF64") + Le32(0xFFFFFFFF) + Text("WAVE") +
               RiffChunk("ds64", Le64(4 + 36 + 24 + 8 + 12) + Le64(12) + Le64(3) + Le32(0)) +
               WavFormat(3, 1, 48000, 32) + Text("data") + Le32(0xFFFFFFFF) + Floats(samples);
    };
    options.files = {Write("a.aifc", aiff({1.0f, kInf, kNaN})), Write("b.wav", rf64({kNaN, 2.0f, -kInf}))};
    options.mode = {"givenvalue", -0.1};
    Repair();
    EXPECT_EQ(status, 0) << errors;
    EXPECT_EQ(velmodsp::ReadBytes(folder / "a-repaired.aifc"), aiff({1.0f, -0.1f, -0.1f}));
    EXPECT_EQ(velmodsp::ReadBytes(folder / "b-repaired.wav"), rf64({-0.1f, 2.0f, -0.1f}));
}

TEST_F(BatchTest, AllChannelsAreRepairedUpToTheObjectsMost) {
    std::vector<float> frame(250, kNaN), expected(250, 0.0f);
    options.files = {Write("250.wav", Wav(frame, 250)), Write("251.wav", Wav(std::vector<float>(251, kNaN), 251))};
    Repair();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(errors, "velmohost: cannot repair 251.wav: tesk.fixnan~ takes 250 channels at most\n");
    EXPECT_TRUE(velmodsp::ReadBytes(folder / "250-repaired.wav") == Wav(expected, 250));
}

TEST_F(BatchTest, NothingIsLostOnTheWay) {
    const OwnTrash trash;
    const Bytes bad = Wav(std::vector<float>(40000, kNaN), 1), good = Wav(std::vector<float>(40000, 0.0f), 1);
    options.files = {Write("a.wav", bad)};
    Write("a-repaired.wav", Text("mine"));
    Repair();
    EXPECT_EQ(status, 1);
    EXPECT_THAT(errors, HasSubstr("a-repaired.wav exists already (replace it with --overwrite)"));
    EXPECT_EQ(velmodsp::ReadBytes(folder / "a-repaired.wav"), Text("mine"));

    options.overwrite = true;
    EXPECT_THAT(Repair(), HasSubstr("the older one is in the trash"));
    EXPECT_TRUE(velmodsp::ReadBytes(folder / "a-repaired.wav") == good);

    options.output = folder / "a.wav";  // in its own place
    Repair();
    EXPECT_EQ(status, 0) << errors;
    EXPECT_TRUE(velmodsp::ReadBytes(folder / "a.wav") == good);
    EXPECT_THAT(Repair(), HasSubstr("a.wav: clean, nothing to write"));
}

TEST_F(BatchTest, OutputsGoWhereTheUserSays) {
    const std::vector<ListedFile> one{{"in/a.wav", "a.wav"}}, walked{{"in/a.wav", "a.wav"}, {"in/x/b.wav", "x/b.wav"}};
    options.files = {"in/a.wav"};
    EXPECT_THAT(ChooseOutputs(options, one), ElementsAre("in/a-repaired.wav"));
    options.output = "new/b.wav";
    EXPECT_THAT(ChooseOutputs(options, one), ElementsAre("new/b.wav"));
    options.output = "new/";
    EXPECT_THAT(ChooseOutputs(options, one), ElementsAre("new/a.wav"));
    options.output = folder.Path().string();
    EXPECT_THAT(ChooseOutputs(options, one), ElementsAre(folder / "a.wav"));
    options.output = "new.aiff";
    EXPECT_THROW(ChooseOutputs(options, one), UsageError);
    options.files = {folder.Path().string()};
    options.output = "new";
    EXPECT_THAT(ChooseOutputs(options, walked), ElementsAre("new/a.wav", "new/x/b.wav"));
    options.output = Write("file", Text(""));
    EXPECT_THROW(ChooseOutputs(options, walked), UsageError);
}

TEST_F(BatchTest, FoldersAreWalkedAndFilesReachedTwiceDoneOnce) {
    const Bytes bad = Wav({kNaN, 1.0f}, 1);
    Write("in/b.WAV", bad);
    Write("in/deep/er/a.aif", bad);  // a WAV file by its content
    Write("in/deep/notes.txt", Text("nan"));
    Write("in/deep/int.wav",
          Text("RIFF") + Le32(40) + Text("WAVE") + WavFormat(1, 1, 48000, 16) + RiffChunk("data", Bytes(4, 0xFF)));
    options.recursive = true;
    options.files = {folder / "in", folder / "in/deep", folder / "in/b.WAV"};
    options.output = folder / "out";
    EXPECT_THAT(Repair(), HasSubstr("3 files: 2 repaired, 1 clean\n"));
    EXPECT_EQ(status, 0) << errors;
    EXPECT_THAT(FileNames(), ElementsAre("in/b.WAV", "in/deep/er/a.aif", "in/deep/int.wav", "in/deep/notes.txt",
                                         "out/b.WAV", "out/deep/er/a.aif"));
    options.files = {folder / "out"};
    Scan();
    EXPECT_EQ(status, 0);
    fs::create_directories(folder / "empty");
    options.files = {folder / "empty"};
    EXPECT_THROW(ScanFiles(options), UsageError);
}

TEST_F(BatchTest, FilesThatShareAnOutputAreNotMixedUp) {
    const Bytes bad = Wav({kNaN, 1.0f}, 1);
    options.files = {Write("x/a.wav", bad), Write("y/a.wav", bad)};
    options.output = folder / "out";
    options.jobs = 1;
    Repair();
    EXPECT_EQ(status, 1);
    EXPECT_EQ(errors, "velmohost: cannot repair y/a.wav: out/a.wav exists already (replace it with --overwrite)\n");
}

using ThreadsBatch = BatchTest;

TEST_F(ThreadsBatch, ManyFilesAtOnceGiveWhatEachGivesAlone) {
    for (unsigned i = 1; i <= 24; ++i) {
        const std::string name = "take" + std::to_string(i);
        std::vector<float> samples(3000 * i, static_cast<float>(i));
        if (i % 4 != 0) samples[i] = kNaN;
        options.files.push_back(Write(name + ".wav", Wav(samples, 1 + i % 3)));
    }
    options.jobs = 4;
    options.report = folder / "report.html";
    const std::string printed = Repair();
    EXPECT_EQ(status, 0) << errors;
    EXPECT_THAT(printed, HasSubstr("24 files: 18 repaired, 6 clean\n"));
    const std::string report = ::ReadBytes(*options.report);
    std::size_t numFigures = 0;
    for (std::size_t at = 0; (at = report.find("<figure", at)) != std::string::npos; ++at) ++numFigures;
    EXPECT_EQ(numFigures, 18u);
    std::size_t last = 0;
    for (unsigned i = 1; i <= 24; ++i) {
        const std::size_t at = printed.find("take" + std::to_string(i) + ".wav: ");
        EXPECT_TRUE(i == 1 || at > last) << i;
        last = at;
        if (i % 4 == 0) continue;
        const unsigned channels = 1 + i % 3;
        std::vector<float> repaired(3000 * i, static_cast<float>(i));
        if (i < channels) repaired[i] = 0.0f;  // bad from the first frame on
        EXPECT_TRUE(velmodsp::ReadBytes(folder / ("take" + std::to_string(i) + "-repaired.wav")) ==
                    Wav(repaired, channels));
    }
}

}  // namespace
}  // namespace velmohost
