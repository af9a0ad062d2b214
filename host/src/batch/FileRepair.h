#pragma once

#include <functional>
#include <string>

#include "batch/FileScan.h"
#include "batch/RepairObject.h"

namespace velmohost {

/// Is shown every block of a channel on its way: `before` as it was recorded, `after` as it is written.
using RepairObserver =
    std::function<void(unsigned channel, const float* before, const float* after, unsigned long numFrames)>;

/// Frames that one `RepairObject` takes at a time for a file of so many channels.
unsigned long ChooseRepairFrames(unsigned numChannels);

/// Streams a damaged file through the object and writes a copy in which the bad samples are what the object made of
/// them. All else stays as it was, byte for byte. Any thread; blocks.
/// @param scan of the file
/// @param object made for its channels and `ChooseRepairFrames` frames
/// @param observer may be empty
/// @returns whether an older file of that name went to the trash
/// @throws SoundError; std::runtime_error when its frames are not plain ones
bool RepairSoundFile(const FileScan& scan, RepairObject& object, const std::string& outputPath,
                     const FileProgress& progress, const RepairObserver& observer);

}  // namespace velmohost
