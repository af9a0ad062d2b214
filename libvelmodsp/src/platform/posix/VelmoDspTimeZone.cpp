#include "platform/VelmoDspTimeZone.h"

#include <time.h>

#include <ctime>

namespace velmodsp {

std::chrono::minutes LocalTimeOffset(std::chrono::sys_seconds utc) {
    const std::time_t seconds = utc.time_since_epoch().count();
    std::tm local{};
    tzset();  // localtime_r need not notice that the zone has changed
    if (localtime_r(&seconds, &local) == nullptr) return std::chrono::minutes(0);
    return std::chrono::duration_cast<std::chrono::minutes>(std::chrono::seconds(local.tm_gmtoff));
}

}  // namespace velmodsp
