#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "audiofiles/VelmoDspFrameLayout.h"
#include "files/VelmoDspFileReader.h"
#include "files/VelmoDspFileWriter.h"
#include "sound/PendingFile.h"

namespace velmohost {

/// A copy of a sound file, byte for byte but for single samples: container, depth, rate, markers and whatever else
/// programs keep in their files stay as they are.
///
///     SoundFileCopy copy("take.wav", layout, "take-repaired.wav");
///     while (const unsigned long n = copy.ReadFrames(4096)) {
///         copy.GetChannels({left, right});
///         copy.Replace(0, 17, 0.5f);   // channel 0 of the 18th of these frames
///         copy.WriteFrames();
///     }
///     copy.Finish();
///
/// The copy takes its name when it is complete; see `PendingFile`. One thread at a time; blocks.
class SoundFileCopy {
public:
    /// Copies what stands before the first frame.
    /// @param layout of the source, with 32-bit floats
    /// @throws SoundError when the source cannot be read or the copy not be made, or the disk has no room for it
    SoundFileCopy(const std::string& sourcePath, const velmodsp::FrameLayout& layout, const std::string& path);

    /// Takes up the next frames, `maxFrames` at most, and returns how many: 0 behind the last one that the file holds.
    /// @throws SoundError when they cannot be read
    unsigned long ReadFrames(unsigned long maxFrames);

    /// Puts the samples of the frames taken up, as floats, where there is room for those of each channel. What the end
    /// of the file cuts off is silence.
    void GetChannels(const std::vector<float*>& channels) const;

    /// Replaces a sample of the frames taken up.
    void Replace(unsigned channel, unsigned long frame, float value);

    /// Writes the frames taken up.
    /// @throws SoundError when the disk is full
    void WriteFrames();

    /// Copies what stands behind the frames, gives the copy the source's permissions and its name. Returns whether an
    /// older file of that name went to the trash.
    /// @throws SoundError
    bool Finish();

private:
    void CopyBytes(std::uint64_t numBytes);
    std::size_t ReadBytes(std::size_t numBytes);
    void WriteBytes(std::size_t numBytes);

    const std::string sourcePath;
    const velmodsp::FrameLayout layout;
    PendingFile pending;                           // outlives the writer, which holds it open
    std::unique_ptr<velmodsp::FileReader> source;  // until the copy is complete
    std::unique_ptr<velmodsp::FileWriter> writer;  // likewise
    std::vector<unsigned char> bytes;              // of the frames taken up
    unsigned long numFrames = 0;                   // taken up
    std::size_t numStoredBytes = 0;                // of those, less than `bytes` where the end cuts off the last
    std::uint64_t nextFrame = 0;
};

}  // namespace velmohost
