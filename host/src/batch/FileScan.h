#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/BadSamples.h"

namespace velmohost {

/// What a sound file holds, and what of it is bad.
struct FileScan {
    std::string path;
    double samplerate = 0.0;             ///< in Hz
    unsigned bitsPerSample = 0;          ///< as stored
    bool holdsFloats = false;            ///< only floats can be bad
    std::uint64_t numFrames = 0;         ///< samples per channel
    std::uint64_t numMissingFrames = 0;  ///< of those, at the end of a file that was cut short
    std::vector<BadSamples> channels;    ///< one per channel of the file

    std::uint64_t NumBad() const;
    bool IsClean() const { return NumBad() == 0; }

    /// The first bad sample of all channels, counted from 0; nothing in a clean file.
    std::optional<std::uint64_t> FirstBad() const;
    /// The longest run of bad samples in any channel.
    std::uint64_t LongestRun() const;
};

/// Is told on the way how much of a file is through, from 0 to 1; may throw to give it up.
using FileProgress = std::function<void(double)>;

/// Reads a whole sound file and counts its bad samples. Files of integers, which cannot hold any, are not read through.
/// Any thread; blocks.
/// @throws SoundError when it is missing, unreadable or in an encoding that is not known
FileScan ScanSoundFile(const std::string& path, const FileProgress& progress);

}  // namespace velmohost
