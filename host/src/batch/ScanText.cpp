#include "batch/ScanText.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "commands/Notice.h"

namespace velmohost {
namespace {

std::string FormatSamplerate(double samplerate) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.10g Hz", samplerate);
    return text.data();
}

}  // namespace

std::string FormatTime(double seconds) {
    const auto milliseconds = static_cast<unsigned long long>(std::llround(seconds * 1000.0));
    const unsigned long long minutes = milliseconds / 60000;
    std::array<char, 48> text{};
    if (minutes < 60) {
        std::snprintf(text.data(), text.size(), "%llu:%06.3f", minutes,
                      static_cast<double>(milliseconds % 60000) / 1000.0);
    } else {
        std::snprintf(text.data(), text.size(), "%llu:%02llu:%06.3f", minutes / 60, minutes % 60,
                      static_cast<double>(milliseconds % 60000) / 1000.0);
    }
    return text.data();
}

std::string FormatPosition(std::uint64_t sample, const FileScan& scan) {
    return "sample " + std::to_string(sample) + " (" + FormatTime(static_cast<double>(sample) / scan.samplerate) + ")";
}

std::string FormatFormat(const FileScan& scan) {
    std::string text = Count(scan.channels.size(), "channel") + ", " + FormatSamplerate(scan.samplerate) + ", " +
                       std::to_string(scan.bitsPerSample) + (scan.holdsFloats ? "-bit float, " : "-bit integer, ") +
                       FormatTime(static_cast<double>(scan.numFrames) / scan.samplerate);
    if (scan.numMissingFrames > 0) {
        text += ", cut short: " + Count(scan.numMissingFrames, "frame") + " missing at the end";
    }
    return text;
}

}  // namespace velmohost
