#pragma once

#include <string>
#include <vector>

#include "batch/FileOutcome.h"
#include "report/ChannelPicture.h"

namespace velmohost {

/// What the report tells beside the outcomes.
struct ReportHeading {
    std::string date;         ///< of the repair, for people
    std::string replacement;  ///< what bad samples became
};

/// The report of a repair as one HTML page that needs nothing else: a table of all files and their damaged channels,
/// and for every channel that has a picture its waveform before and after, whole and close to where it first went bad.
/// It is made for screens of any width, light and dark, and for paper.
/// @param pictures for each outcome those of its channels, in the channels' order; empty where there are none
std::string FormatReport(const ReportHeading& heading, const std::vector<FileOutcome>& outcomes,
                         const std::vector<std::vector<ChannelPicture>>& pictures);

}  // namespace velmohost
