#pragma once

#include <string>
#include <vector>

#include "batch/SoundFileList.h"
#include "commands/BatchOptions.h"

namespace velmohost {

/// Where the repaired copy of each file goes: beside its source as "NAME-repaired.EXT"; with -o FOLDER under its own
/// name below that folder; with -o FILE, for a single file, there.
/// @throws UsageError when -o names a file for several, or one with another extension than the source has
std::vector<std::string> ChooseOutputs(const RepairOptions& options, const std::vector<ListedFile>& files);

}  // namespace velmohost
