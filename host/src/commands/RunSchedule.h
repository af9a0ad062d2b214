#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace velmohost {

/// A message and the signal vector before which it is sent.
struct TimedMessage {
    std::uint64_t vector;
    double seconds;
    std::string text;
};

/// A run's length in the units that its parts count in.
struct RunLength {
    double samplerate;         ///< in Hz
    std::uint64_t frames;      ///< samples per channel
    unsigned long vectorSize;  ///< in frames

    /// Signal vectors that the run takes; the last one may be filled up with silence.
    std::uint64_t NumVectors() const { return frames / vectorSize + (frames % vectorSize != 0 ? 1 : 0); }

    /// The first vector that starts at or after a time of 0 or more; `NumVectors()` for a time that only the run's end
    /// reaches, more for one past it.
    std::uint64_t FirstVectorFrom(double seconds) const;
};

/// The messages in the order in which they are to be sent: by time, those of the same time in the order given.
std::vector<TimedMessage> ScheduleMessages(const std::vector<std::pair<double, std::string>>& messages,
                                           const RunLength& length);

}  // namespace velmohost
