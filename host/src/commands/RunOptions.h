#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmohost {

/// What `velmohost run` or `velmohost repl` was asked for; the defaults are the command line's.
struct RunOptions {
    std::string boxText;
    std::vector<std::string> paths;                       ///< --path: searched for plug-ins first
    std::optional<std::string> in, out;                   ///< sound files for the signal inlets / outlets
    int bits = 32;                                        ///< of the samples in `out`: 8, 16, 24 or 32
    double seconds = 1.0;                                 ///< length without `in`, 0 or more
    double samplerate = 44100.0;                          ///< in Hz without `in`, above 0
    long block = 64;                                      ///< signal vector in samples, 1 to `kMaxVectorSize`
    std::optional<std::string> inlets, outlets;           ///< lists of what is connected
    std::vector<std::string> messages;                    ///< sent before audio starts
    std::vector<std::pair<double, std::string>> atTimes;  ///< seconds and message, sent while audio runs
    std::optional<std::string> saveAs;                    ///< answer to the save-as dialog: a file, or a folder for it
    bool quiet = false;                                   ///< no progress display
};

/// Gives the save-as dialogs the answer that the options hold, or none.
/// @throws UsageError when it is empty; std::runtime_error when its folder does not exist
void ApplySaveAsAnswer(const RunOptions& options);

}  // namespace velmohost
