#pragma once

#include "commands/RunOptions.h"

namespace velmohost {

/// Creates the object and sends it the lines that are typed, or come through a pipe, until the input ends. Main thread.
/// @returns the exit status: 0 at the end of the input; 1 when the object could not be created, a sound file could not
/// be read or written, or the session was interrupted
/// @throws UsageError, SoundError
int RunRepl(const RunOptions& options);

}  // namespace velmohost
