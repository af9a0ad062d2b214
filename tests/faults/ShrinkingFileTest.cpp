// Files that become shorter while they are read: what they no longer hold is silence, and whoever asks is told so. None
// of it is read through memory that would go away with the file.

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "CommandRun.h"
#include "FloatFiles.h"
#include "audiofiles/SourceSound.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "batch/FileRepair.h"
#include "batch/FileScan.h"
#include "batch/RepairObject.h"
#include "files/VelmoDspFile.h"
#include "sound/SoundError.h"
#include "support/OutputOf.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace velmodsp {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr std::size_t NumFrames = 40000;

class ShrinkingFile : public testing::Test {
protected:
    File Write(const std::string& name, const std::string& bytes) {
        ::WriteBytes(folder / name, bytes);
        return File((folder / name).c_str());
    }

    void CutTo(const File& file, std::uintmax_t size) { fs::resize_file(file.GetFullPathName().C_Str(), size); }

    /// Reads in blocks and cuts the file before the one that begins at `cutFrame`, 0 for right after the opening.
    /// @returns the first channel, and how many frames the reader found to be there
    std::pair<std::vector<float>, unsigned long long> ReadAndCut(const File& file, std::size_t cutFrame,
                                                                 std::uintmax_t size) {
        constexpr std::size_t blockSize = 10000;
        const auto reader = AudioFileReader::CreateReaderFor(file);
        EXPECT_EQ(reader->GetNumStoredSamples(), NumFrames);
        AudioBuffer block(reader->GetNumChannels(), blockSize, true);
        std::vector<float> samples;
        for (std::size_t start = 0; start < NumFrames; start += blockSize) {
            if (start == cutFrame) CutTo(file, size);
            EXPECT_TRUE(reader->ReadSamples(block, 0, blockSize, start));
            samples.insert(samples.end(), block.GetChannel(0), block.GetChannel(0) + blockSize);
        }
        return {samples, reader->GetNumStoredSamples()};
    }

    TempFolder folder;
};

TEST_F(ShrinkingFile, ReadsAsSilenceFromWhereItEnds) {
    std::vector<float> samples(2 * NumFrames);
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<float>(i + 1);
    const struct {
        const char* name;
        std::string bytes;
        std::uintmax_t dataStart;
    } files[] = {{"a.wav", FloatWav(samples, 2), 44}, {"a.aifc", FloatAiff(samples, 2), 58}};
    for (const auto& [name, bytes, dataStart] : files) {
        for (const std::size_t cutFrame : {0u, 20000u}) {
            for (const std::size_t numLeft : {0u, 1u, 19999u, 20001u, 25000u, 39999u}) {
                for (const std::uintmax_t numBytesMore :
                     {0u, 5u}) {  // 5: the left sample of a frame, and a bit of the right
                    SCOPED_TRACE(std::string(name) + ", cut to " + std::to_string(numLeft) + " frames before " +
                                 std::to_string(cutFrame));
                    const auto [read, numStored] =
                        ReadAndCut(Write(name, bytes), cutFrame, dataStart + numLeft * 8 + numBytesMore);
                    const std::size_t numThere = std::max(numLeft + (numBytesMore > 0 ? 1 : 0), cutFrame);
                    EXPECT_EQ(numStored, numThere);
                    for (std::size_t i = 0; i < NumFrames; ++i) {
                        ASSERT_EQ(read[i], i < numThere ? samples[2 * i] : 0.0f) << i;
                    }
                }
            }
        }
        for (const std::uintmax_t size : {0u, 20u}) {  // nothing left of the header either
            EXPECT_EQ(ReadAndCut(Write(name, bytes), 20000, size).second, 20000u) << name;
        }
    }
}

TEST_F(ShrinkingFile, OfFramesLargerThanAnyBufferToo) {
    constexpr unsigned int numChannels = 20000;  // 80000 bytes a frame
    std::vector<float> samples(3 * numChannels, 0.5f);
    const File file = Write("wide.wav", FloatWav(samples, numChannels));
    const auto reader = AudioFileReader::CreateReaderFor(file);
    CutTo(file, 44 + 80000 + 40000);
    AudioBuffer block(numChannels, 3, true);
    EXPECT_TRUE(reader->ReadSamples(block, 0, 3, 0));
    EXPECT_EQ(reader->GetNumStoredSamples(), 2u);
    for (const auto& [channel, expected] :
         {std::pair{0u, std::vector{0.5f, 0.5f, 0.0f}}, {9999u, {0.5f, 0.5f, 0.0f}}, {10000u, {0.5f, 0.0f, 0.0f}}}) {
        EXPECT_EQ(std::vector(block.GetChannel(channel), block.GetChannel(channel) + 3), expected) << channel;
    }
}

#ifdef VELMO_READS_COMPRESSED
TEST_F(ShrinkingFile, OfTheSystemsDecodersToo) {
    const SourceSound sound = Music(44100, 16, 1, NumFrames);
    WriteBytes(folder / "in.wav", sound.Wav());
    OutputOf("cd '" + folder.Path().string() + "' && flac -s in.wav 2>&1");
    const std::string flac = ::ReadBytes(folder / "in.flac");
    const Bytes caf = sound.Caf();
    for (const auto& [name, bytes] : {std::pair{"a.flac", flac}, {"a.caf", std::string(caf.begin(), caf.end())}}) {
        for (const std::size_t cutFrame : {0u, 20000u}) {
            for (const std::size_t size : {std::size_t{0}, std::size_t{30}, bytes.size() / 4, bytes.size() * 3 / 4}) {
                SCOPED_TRACE(std::string(name) + " cut to " + std::to_string(size));
                const auto [read, numStored] = ReadAndCut(Write(name, bytes), cutFrame, size);
                EXPECT_LT(numStored, NumFrames);
                for (std::size_t i = 0; i < NumFrames; ++i) {
                    ASSERT_EQ(read[i], i < numStored ? sound.Sample(0, i) : 0.0f) << i;
                }
            }
        }
    }
}
#endif

TEST_F(ShrinkingFile, IsNoticedByScanAndRepair) {
    constexpr float bad = std::numeric_limits<float>::quiet_NaN();
    std::vector<float> samples(200000, 0.25f);
    samples[7] = samples[199999] = bad;
    for (const auto& [name, bytes] : {std::pair{"a.wav", FloatWav(samples, 1)}, {"a.aifc", FloatAiff(samples, 1)}}) {
        const File file = Write(name, bytes);
        const std::string path = folder / name, output = folder / "repaired" + fs::path(name).extension().string();
        const auto cutInHalf = [&, half = bytes.size() / 2](double fraction) {
            if (fraction < 0.5) CutTo(file, half);
        };
        velmohost::FileScan scan = velmohost::ScanSoundFile(path, cutInHalf);
        EXPECT_EQ(scan.NumBad(), 1u);
        EXPECT_NEAR(static_cast<double>(scan.numMissingFrames), 100000, 20) << name;

        velmohost::RepairHost host({VELMO_EXTERNALS_DIR});
        velmohost::RepairObject object(host, {}, 1, 44100.0, velmohost::ChooseRepairFrames(1));
        const auto repair = [&](const velmohost::FileProgress& progress) {
            try {
                velmohost::RepairSoundFile(scan, object, output, progress, {});
            } catch (const std::exception& error) {
                return std::string(error.what());
            }
            return std::string("repaired");
        };
        ::WriteBytes(path, bytes);
        scan = velmohost::ScanSoundFile(path, [](double) {});
        EXPECT_EQ(repair(cutInHalf), "cannot read " + path + ": it became shorter meanwhile");
        EXPECT_EQ(repair([](double) {}), "the file has changed since it was scanned");
        ::WriteBytes(path, FloatWav(samples, 2));
        EXPECT_EQ(repair([](double) {}), "the file has changed since it was scanned");
        ::WriteBytes(path, bytes);
        EXPECT_EQ(repair([](double) {}), "repaired");
        fs::remove(path);
        fs::remove(output);
        EXPECT_TRUE(fs::is_empty(folder.Path()));
    }
}

TEST_F(ShrinkingFile, IsToldOfAfterARun) {
    const std::vector<float> samples(441000, 0.5f);
    ::WriteBytes(folder / "in.wav", FloatWav(samples, 1));
    const std::string printed =
        velmotest::RunCommand({"run", "tesk.fixnan~", "--path", VELMO_EXTERNALS_DIR, "--in", folder / "in.wav", "--out",
                               folder / "out.wav", "--at", "5", "exportdict \"" + folder / "in.wav" + "\""});
    EXPECT_THAT(printed, HasSubstr("0 velmohost: " + folder / "in.wav" + " is cut short: "));
    AudioBuffer out(1, 1, true);
    EXPECT_TRUE(out.LoadFromAudioFile(File((folder / "out.wav").c_str())));
    ASSERT_EQ(out.GetNumSamples(), samples.size());
    EXPECT_EQ(out.GetChannel(0)[220000], 0.5f);
    EXPECT_EQ(out.GetChannel(0)[440999], 0.0f);
}

}  // namespace
}  // namespace velmodsp
