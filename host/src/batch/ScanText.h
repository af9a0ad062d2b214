#pragma once

#include <cstdint>
#include <string>

#include "batch/FileScan.h"

namespace velmohost {

// What a scan found, in words for people.

/// "0:00.100", "1:02:03.456".
std::string FormatTime(double seconds);

/// "sample 4410 (0:00.100)"
std::string FormatPosition(std::uint64_t sample, const FileScan& scan);

/// "2 channels, 48000 Hz, 32-bit float, 0:12.000", and what is missing at the end.
std::string FormatFormat(const FileScan& scan);

}  // namespace velmohost
