#pragma once

#include <optional>
#include <string>
#include <vector>

#include "batch/RepairObject.h"

namespace velmohost {

/// What `velmohost scan` or `velmohost repair` was asked for; the defaults are the command line's.
struct BatchOptions {
    std::vector<std::string> files;   ///< and folders, when `recursive`
    bool recursive = false;           ///< walk folders
    unsigned jobs = 0;                ///< files worked on at the same time; 0: as many as there are processors
    std::optional<std::string> json;  ///< file for what was found, for machines
    bool quiet = false;               ///< no progress display
};

/// What only `velmohost repair` has.
struct RepairOptions : BatchOptions {
    std::optional<std::string> output;  ///< file or folder for what is written; default: beside the source
    RepairMode mode;
    std::optional<std::string> report;  ///< HTML file for people
    bool overwrite = false;             ///< whether existing files may be replaced
    std::vector<std::string> paths;     ///< --path: searched for plug-ins first
};

}  // namespace velmohost
