#include "platform/VelmoDspTimeZone.h"

#include <windows.h>

namespace velmodsp {
namespace {

SYSTEMTIME ToSystemTime(std::chrono::sys_seconds time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    SYSTEMTIME result{};
    result.wYear = static_cast<WORD>(static_cast<int>(date.year()));
    result.wMonth = static_cast<WORD>(static_cast<unsigned int>(date.month()));
    result.wDay = static_cast<WORD>(static_cast<unsigned int>(date.day()));
    result.wHour = static_cast<WORD>(clock.hours().count());
    result.wMinute = static_cast<WORD>(clock.minutes().count());
    result.wSecond = static_cast<WORD>(clock.seconds().count());
    return result;
}

std::chrono::sys_seconds FromSystemTime(const SYSTEMTIME& time) {
    const std::chrono::sys_days day(std::chrono::year(time.wYear) / time.wMonth / time.wDay);
    return day + std::chrono::hours(time.wHour) + std::chrono::minutes(time.wMinute) +
           std::chrono::seconds(time.wSecond);
}

}  // namespace

std::chrono::minutes LocalTimeOffset(std::chrono::sys_seconds utc) {
    const SYSTEMTIME universal = ToSystemTime(utc);
    SYSTEMTIME local{};
    if (!SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local)) return std::chrono::minutes(0);
    return std::chrono::duration_cast<std::chrono::minutes>(FromSystemTime(local) - utc);
}

}  // namespace velmodsp
