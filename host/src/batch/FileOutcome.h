#pragma once

#include <string>
#include <vector>

#include "batch/FileScan.h"

namespace velmohost {

/// What became of one file of a batch.
struct FileOutcome {
    enum class Status { Clean, Damaged, Repaired, Failed };

    std::string path;
    Status status = Status::Failed;
    FileScan scan;                   ///< empty when it failed before its end
    std::string output;              ///< of a repaired file
    bool replacedOlderFile = false;  ///< which is in the trash now
    std::string error;               ///< of a failed file; names it
};

/// What was found in a file, for people: a line for the file, and one for every channel with anything to tell.
std::string FormatScanOutcome(const FileOutcome& outcome);

/// What a repair did to a file, for people, in one line.
std::string FormatRepairOutcome(const FileOutcome& outcome);

/// "30 files: 12 repaired, 17 clean, 1 failed"
std::string FormatSum(const std::vector<FileOutcome>& outcomes);

/// All of it for machines: a JSON object with the array "files". Texts that are no UTF-8 get replacement characters.
std::string FormatOutcomesAsJson(const std::vector<FileOutcome>& outcomes);

}  // namespace velmohost
