#pragma once

#include <string>

#include "report/WaveformView.h"

namespace velmohost {

/// Which of its two states a stretch is drawn in.
enum class RepairState { Before, After };

/// Draws a stretch as an SVG element: the range of the samples in each column, and over it the columns in which samples
/// were bad. What exceeds full scale is cut off there.
/// @param scale the magnitude at the upper and lower border, above 0
/// @param label what the picture shows, for those who cannot see it; plain text
std::string DrawWaveform(const WaveformView& view, RepairState state, float scale, const std::string& label);

}  // namespace velmohost
