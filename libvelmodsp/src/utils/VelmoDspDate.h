#pragma once

#include <chrono>

#include "text/VelmoDspString.h"

namespace velmodsp {

/// Points in time as ISO 8601 text, to whole seconds: when a measurement was made, what a recording is named after.
///
///     std::cout << "measured " << Date::ToLocalText() << "\n";
///     const File take(String("~/takes/") + Date::ToFileNameText() + ".wav");
///
/// Parts of a second are dropped. Years 0 to 9999. Any thread; not for the audio thread.
class Date {
public:
    using Time = std::chrono::system_clock::time_point;

    /// Coordinated universal time: "2024-02-29T23:30:00Z".
    static String ToUtcText(Time time = std::chrono::system_clock::now());

    /// Time of the user's zone with its distance from UTC: "2024-03-01T00:30:00+01:00".
    static String ToLocalText(Time time = std::chrono::system_clock::now());

    /// The same without what some systems forbid in file names: "20240301T003000+0100".
    static String ToFileNameText(Time time = std::chrono::system_clock::now());
};

}  // namespace velmodsp
