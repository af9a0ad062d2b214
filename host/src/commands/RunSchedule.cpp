#include "commands/RunSchedule.h"

#include <algorithm>
#include <cmath>

namespace velmohost {

std::uint64_t RunLength::FirstVectorFrom(double seconds) const {
    constexpr double kRoundingError = 1e-6;  // in frames; a time that means a whole frame may miss it by that much
    const double vector = std::ceil((seconds * samplerate - kRoundingError) / static_cast<double>(vectorSize));
    if (vector > static_cast<double>(NumVectors())) return NumVectors() + 1;
    return static_cast<std::uint64_t>(std::max(vector, 0.0));
}

std::vector<TimedMessage> ScheduleMessages(const std::vector<std::pair<double, std::string>>& messages,
                                           const RunLength& length) {
    std::vector<TimedMessage> schedule;
    schedule.reserve(messages.size());
    for (const auto& [seconds, text] : messages) schedule.push_back({length.FirstVectorFrom(seconds), seconds, text});
    std::stable_sort(schedule.begin(), schedule.end(),
                     [](const TimedMessage& a, const TimedMessage& b) { return a.seconds < b.seconds; });
    return schedule;
}

}  // namespace velmohost
