#include <algorithm>

#include "batch/FileOutcome.h"
#include "batch/ScanText.h"
#include "commands/Notice.h"

namespace velmohost {
namespace {

using Status = FileOutcome::Status;

std::string FormatKinds(const BadSamples& channel) {
    std::string text;
    const auto add = [&text](std::uint64_t number, const char* kind) {
        if (number > 0) text += (text.empty() ? "" : ", ") + std::to_string(number) + " " + kind;
    };
    add(channel.numNaN, "NaN");
    add(channel.numPositiveInfinity, "+Inf");
    add(channel.numNegativeInfinity, "-Inf");
    add(channel.numSubnormal, "subnormal");
    return text;
}

std::string FormatChannel(std::size_t number, const BadSamples& channel, const FileScan& scan) {
    std::string text = "  channel " + std::to_string(number) + ": " + FormatKinds(channel);
    if (channel.first) {
        text += "; first bad: " + FormatPosition(*channel.first, scan) +
                ", longest run: " + std::to_string(channel.longestRun);
    }
    return text;
}

/// "channel 1: 120, channel 4: 12"
std::string FormatBadPerChannel(const FileScan& scan) {
    std::string text;
    for (std::size_t c = 0; c < scan.channels.size(); ++c) {
        const std::uint64_t numBad = scan.channels[c].NumBad();
        if (numBad == 0) continue;
        text += (text.empty() ? "" : ", ") + std::string("channel ") + std::to_string(c + 1) + ": " +
                std::to_string(numBad);
    }
    return text;
}

}  // namespace

std::string FormatScanOutcome(const FileOutcome& outcome) {
    const FileScan& scan = outcome.scan;
    std::string text = outcome.path + ": " + (scan.IsClean() ? "clean" : Count(scan.NumBad(), "bad sample")) + " (" +
                       FormatFormat(scan) + ")\n";
    for (std::size_t c = 0; c < scan.channels.size(); ++c) {
        const BadSamples& channel = scan.channels[c];
        if (channel.NumBad() + channel.numSubnormal > 0) text += FormatChannel(c + 1, channel, scan) + "\n";
    }
    return text;
}

std::string FormatRepairOutcome(const FileOutcome& outcome) {
    const FileScan& scan = outcome.scan;
    if (scan.IsClean()) return outcome.path + ": clean, nothing to write (" + FormatFormat(scan) + ")\n";
    return outcome.path + ": repaired " + Count(scan.NumBad(), "bad sample") + " (" + FormatBadPerChannel(scan) +
           "), first: " + FormatPosition(*scan.FirstBad(), scan) +
           ", longest run: " + std::to_string(scan.LongestRun()) + "; written to " + outcome.output +
           (outcome.replacedOlderFile ? ", the older one is in the trash" : "") + "\n";
}

std::string FormatSum(const std::vector<FileOutcome>& outcomes) {
    std::string text = Count(outcomes.size(), "file") + ":";
    const char* separator = " ";
    const auto add = [&](Status status, const char* name) {
        const auto number = std::count_if(outcomes.begin(), outcomes.end(),
                                          [status](const FileOutcome& outcome) { return outcome.status == status; });
        if (number == 0) return;
        text += separator + std::to_string(number) + " " + name;
        separator = ", ";
    };
    add(Status::Damaged, "damaged");
    add(Status::Repaired, "repaired");
    add(Status::Clean, "clean");
    add(Status::Failed, "failed");
    return text + "\n";
}

}  // namespace velmohost
