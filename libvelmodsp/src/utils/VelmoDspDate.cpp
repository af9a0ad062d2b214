#include "utils/VelmoDspDate.h"

#include <cstdio>

#include "platform/VelmoDspTimeZone.h"

namespace velmodsp {
namespace {

/// What stands between the numbers of a text.
struct DateSeparators {
    const char* date;
    const char* time;
};
constexpr DateSeparators forPeople{"-", ":"};
constexpr DateSeparators forFileNames{"", ""};

String DateAndTime(std::chrono::sys_seconds time, const DateSeparators& separators) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    char text[64];
    std::snprintf(text, sizeof text, "%04d%s%02u%s%02uT%02d%s%02d%s%02d", static_cast<int>(date.year()),
                  separators.date, static_cast<unsigned int>(date.month()), separators.date,
                  static_cast<unsigned int>(date.day()), static_cast<int>(clock.hours().count()), separators.time,
                  static_cast<int>(clock.minutes().count()), separators.time,
                  static_cast<int>(clock.seconds().count()));
    return text;
}

String DistanceFromUtc(std::chrono::minutes offset, const DateSeparators& separators) {
    const std::chrono::hh_mm_ss distance(std::chrono::abs(offset));
    char text[32];
    std::snprintf(text, sizeof text, "%c%02d%s%02d", offset.count() < 0 ? '-' : '+',
                  static_cast<int>(distance.hours().count()), separators.time,
                  static_cast<int>(distance.minutes().count()));
    return text;
}

String LocalText(Date::Time time, const DateSeparators& separators) {
    const auto utc = std::chrono::floor<std::chrono::seconds>(time);
    const std::chrono::minutes offset = LocalTimeOffset(utc);
    return DateAndTime(utc + offset, separators) + DistanceFromUtc(offset, separators);
}

}  // namespace

String Date::ToUtcText(Time time) {
    return DateAndTime(std::chrono::floor<std::chrono::seconds>(time), forPeople) + "Z";
}

String Date::ToLocalText(Time time) { return LocalText(time, forPeople); }

String Date::ToFileNameText(Time time) { return LocalText(time, forFileNames); }

}  // namespace velmodsp
