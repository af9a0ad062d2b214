#pragma once

#include "commands/RunOptions.h"

namespace velmohost {

/// Creates the object, sends it messages and streams sound through it. Main thread.
/// @returns the exit status: 0 when done, 1 when the object could not be created
/// @throws UsageError, SoundError
int RunObject(const RunOptions& options);

}  // namespace velmohost
