#include "report/WaveformView.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmohost {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr WaveformView::Column kEmptyColumn{kInfinity, -kInfinity, kInfinity, -kInfinity, 0};

void Widen(float& lowest, float& highest, float sample) {
    lowest = std::min(lowest, sample);
    highest = std::max(highest, sample);
}

void AddSample(WaveformView::Column& column, float before, float after) {
    if (std::isfinite(before)) {
        Widen(column.beforeMin, column.beforeMax, before);
    } else {
        ++column.numBad;
    }
    Widen(column.afterMin, column.afterMax, after);
}

}  // namespace

WaveformView::WaveformView(std::uint64_t firstSample, std::uint64_t numSamples)
    : start(firstSample),
      length(numSamples),
      columns(static_cast<std::size_t>(std::min(numSamples, kMaxColumns)), kEmptyColumn) {}

// floor(column * length / number of columns), without a product that could exceed 64 bits.
std::uint64_t WaveformView::ColumnStart(std::size_t column) const {
    const std::uint64_t whole = length / columns.size(), rest = length % columns.size();
    return start + column * whole + column * rest / columns.size();
}

void WaveformView::Add(std::uint64_t position, const float* before, const float* after, std::size_t n) {
    const std::uint64_t end = std::min(position + n, start + length);
    std::uint64_t i = std::max(position, start);
    for (std::size_t column = 0; column < columns.size() && i < end; ++column) {
        for (const std::uint64_t columnEnd = std::min(ColumnStart(column + 1), end); i < columnEnd; ++i) {
            AddSample(columns[column], before[i - position], after[i - position]);
        }
    }
}

float WaveformView::Peak() const {
    float peak = 0.0f;
    for (const Column& column : columns) {
        for (const float sample : {column.beforeMin, column.beforeMax, column.afterMin, column.afterMax}) {
            if (std::isfinite(sample)) peak = std::max(peak, std::abs(sample));
        }
    }
    return peak;
}

}  // namespace velmohost
