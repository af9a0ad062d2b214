// Memory that runs out while sound files are opened, read and written.

#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

#include "EachAllocation.h"
#include "audiofiles/SourceSound.h"
#include "audiofiles/VelmoDspAudioFileReader.h"
#include "audiofiles/VelmoDspAudioFileWriter.h"
#include "files/VelmoDspFile.h"
#include "math/VelmoDspMatFileWriter.h"
#include "math/VelmoDspMatrix.h"
#include "support/TempFolder.h"
#include "utils/VelmoDspAudioBuffer.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

using velmotest::FailEachAllocation;
using velmotest::FailingAllocations;

constexpr unsigned int NumChannels = 2;
constexpr std::size_t NumFrames = 5000;

long NumOpenFiles() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

class MemoryRunsOutWithFiles : public testing::Test {
protected:
    /// Has each allocation of `operation` fail, which gives false or throws when it does not do its work.
    /// @param isComplete whether what it did is there afterwards
    void FailEach(const std::string& name, const std::function<bool()>& operation,
                  const std::function<bool()>& isComplete) {
        FailEachAllocation(name, [&](unsigned long n, FailingAllocations::Extent extent) {
            const long numOpenBefore = NumOpenFiles();
            FailingAllocations failing(n, extent);
            bool isDone = false;
            try {
                isDone = operation();
            } catch (const Exception&) {
            } catch (const std::bad_alloc&) {
            }
            failing.Stop();
            EXPECT_TRUE(!isDone || isComplete());
            EXPECT_EQ(NumOpenFiles(), numOpenBefore) << "files stay open";
            return velmotest::Attempted{failing.NumFailed() > 0, !isDone};
        });
    }

    void FailEachOfReading(const std::string& name) {
        const File file((folder / name).c_str());
        AudioBuffer buffer(NumChannels, NumFrames, true);
        FailEach(
            "read " + name,
            [&] {
                buffer.Zero();
                const auto reader = AudioFileReader::CreateReaderFor(file);
                return reader != nullptr && reader->ReadSamples(buffer, 0, NumFrames, 0);
            },
            [&] {
                return buffer.GetChannel(0)[0] == sound.Sample(0, 0) &&
                       buffer.GetChannel(1)[NumFrames - 1] == sound.Sample(1, NumFrames - 1);
            });
    }

    TempFolder folder;
    const SourceSound sound = Music(44100, 16, NumChannels, NumFrames);
};

TEST_F(MemoryRunsOutWithFiles, WhileTheyAreReadOrWritten) {
    AudioBuffer samples(NumChannels, NumFrames, true);
    for (unsigned int k = 0; k < NumChannels; ++k)
        for (unsigned long i = 0; i < NumFrames; ++i) samples.GetChannel(k)[i] = sound.Sample(k, i);
    AudioBuffer back(1, 1, true);
    for (const char* name : {"a.wav", "a.aiff"}) {
        const File file((folder / name).c_str());
        const auto isComplete = [&] {
            back.LoadFromAudioFile(file);
            const bool isEqual =
                back.GetNumSamples() == NumFrames &&
                std::equal(samples.GetChannel(1), samples.GetChannel(1) + NumFrames, back.GetChannel(1));
            back.Resize(1, 1);
            return isEqual;
        };
        FailEach(
            std::string("write ") + name,
            [&] {
                file.DeleteFile();
                return samples.SaveAsAudioFile(file, 44100, 24, false);
            },
            isComplete);
        FailEachOfReading(name);
    }
    WriteBytes(folder / "a.caf", sound.Caf());
    FailEachOfReading("a.caf");

    const File matFile((folder / "a.mat").c_str());
    FailEach(
        "write a.mat",
        [&] {
            matFile.DeleteFile();
            return samples.SaveAsMatFile(matFile, "a");
        },
        [&] { return std::filesystem::file_size(folder / "a.mat") > NumChannels * NumFrames * sizeof(float); });
}

}  // namespace
}  // namespace velmodsp
