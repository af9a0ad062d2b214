#include "report/WaveformSvg.h"

#include <algorithm>
#include <cmath>

#include "report/HtmlText.h"

namespace velmohost {
namespace {

using Column = WaveformView::Column;

// The picture's own units: two a column, so that columns have whole-numbered middles, and 200 from top to bottom. The
// page stretches them to the room there is.
constexpr int kHeight = 200;

int Left(std::size_t column) { return static_cast<int>(2 * column); }

/// From the top: 0 for `scale`, 100 for zero.
int Y(float sample, float scale) {
    const float ratio = std::clamp(sample / scale, -1.0f, 1.0f);
    return static_cast<int>(std::lround((1.0f - ratio) * kHeight / 2.0f));
}

float Lowest(const Column& column, RepairState state) {
    return state == RepairState::Before ? column.beforeMin : column.afterMin;
}

float Highest(const Column& column, RepairState state) {
    return state == RepairState::Before ? column.beforeMax : column.afterMax;
}

bool IsEmpty(const Column& column, RepairState state) { return Lowest(column, state) > Highest(column, state); }

std::string Point(const char* command, int x, int y) { return command + std::to_string(x) + " " + std::to_string(y); }

/// One run of columns with samples: along the highest to the right, along the lowest back.
std::string OutlineRun(const std::vector<Column>& columns, std::size_t first, std::size_t end, RepairState state,
                       float scale) {
    std::string path = Point("M", Left(first), Y(Highest(columns[first], state), scale));
    for (std::size_t i = first; i < end; ++i) path += Point("L", Left(i) + 1, Y(Highest(columns[i], state), scale));
    path += "h1";
    for (std::size_t i = end; i-- > first;) path += Point("L", Left(i) + 1, Y(Lowest(columns[i], state), scale));
    return path + "h-1z";
}

/// Calls `draw` with the first and the one past the last of every run of columns for which `belongs` holds.
template <class Belongs, class Draw>
void ForEachRun(const std::vector<Column>& columns, const Belongs& belongs, const Draw& draw) {
    for (std::size_t i = 0; i < columns.size();) {
        const std::size_t first = i;
        while (i < columns.size() && belongs(columns[i])) ++i;
        if (i > first) draw(first, i);
        while (i < columns.size() && !belongs(columns[i])) ++i;
    }
}

std::string Outline(const WaveformView& view, RepairState state, float scale) {
    std::string path;
    ForEachRun(
        view.Columns(), [state](const Column& column) { return !IsEmpty(column, state); },
        [&](std::size_t first, std::size_t end) { path += OutlineRun(view.Columns(), first, end, state, scale); });
    return path;
}

std::string Marks(const WaveformView& view) {
    std::string path;
    ForEachRun(
        view.Columns(), [](const Column& column) { return column.numBad > 0; },
        [&](std::size_t first, std::size_t end) {
            path += Point("M", Left(first), 0) + "H" + std::to_string(Left(end)) + "V" + std::to_string(kHeight) + "H" +
                    std::to_string(Left(first)) + "z";
        });
    return path;
}

}  // namespace

std::string DrawWaveform(const WaveformView& view, RepairState state, float scale, const std::string& label) {
    return "<svg viewBox=\"0 0 " + std::to_string(Left(view.Columns().size())) + " " + std::to_string(kHeight) +
           "\" preserveAspectRatio=\"none\" role=\"img\" aria-label=\"" + HtmlText(label) +
           "\"><path class=\"zero\" d=\"M0 100h" + std::to_string(Left(view.Columns().size())) +
           "\"/><path class=\"wave\" d=\"" + Outline(view, state, scale) + "\"/><path class=\"" +
           (state == RepairState::Before ? "bad" : "repaired") + "\" d=\"" + Marks(view) + "\"/></svg>\n";
}

}  // namespace velmohost
