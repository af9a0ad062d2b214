#pragma once

#include "commands/BatchOptions.h"

namespace velmohost {

/// `velmohost repair`: streams damaged sound files through tesk.fixnan~ and writes repaired copies.
/// @returns 0 when every file was clean or is repaired, 1 when one failed
/// @throws UsageError, SoundError; std::runtime_error when the object cannot be created
int RepairFiles(const RepairOptions& options);

}  // namespace velmohost
