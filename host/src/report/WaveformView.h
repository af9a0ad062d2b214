#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velmohost {

/// A stretch of one channel before and after its repair, as a picture of it needs it: cut into columns, and for each
/// the range of its samples. Its size does not depend on how many samples there are.
///
///     WaveformView view(0, numFrames);        // the whole channel
///     view.Add(position, before, after, n);   // block by block; what lies outside the stretch is passed over
class WaveformView {
public:
    static constexpr std::uint64_t kMaxColumns = 400;

    /// The samples of a column. Bad ones have no place in `before`.
    struct Column {
        float beforeMin, beforeMax;  ///< no finite sample: min above max
        float afterMin, afterMax;    ///< no sample yet: min above max
        std::uint64_t numBad;        ///< bad samples before the repair
    };

    /// @param start, length of the stretch, in samples
    WaveformView(std::uint64_t start, std::uint64_t length);

    /// Takes in the channel's next samples, from `position` on.
    void Add(std::uint64_t position, const float* before, const float* after, std::size_t n);

    std::uint64_t Start() const { return start; }
    std::uint64_t Length() const { return length; }
    const std::vector<Column>& Columns() const { return columns; }

    /// The largest magnitude of a sample after the repair, before or after of the finite ones; 0 in an empty view.
    float Peak() const;

private:
    /// Where a column begins; for the one past the last, the end of the stretch.
    std::uint64_t ColumnStart(std::size_t column) const;

    std::uint64_t start, length;
    std::vector<Column> columns;
};

}  // namespace velmohost
