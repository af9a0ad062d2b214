#pragma once

#include "commands/BatchOptions.h"

namespace velmohost {

/// The exit status of a scan that found bad samples.
inline constexpr int kBadSamplesFound = 3;

/// `velmohost scan`: tells what bad samples are in sound files, and changes nothing.
/// @returns 0 when all files are clean, `kBadSamplesFound`, or 1 when a file could not be read
/// @throws UsageError, SoundError
int ScanFiles(const BatchOptions& options);

}  // namespace velmohost
