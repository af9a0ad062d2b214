#pragma once

#include <chrono>

namespace velmodsp {

/// How far the clocks of the user's time zone are ahead of UTC at that moment, summer time included, in whole minutes;
/// 0 when the system does not know. Any thread; not for the audio thread.
std::chrono::minutes LocalTimeOffset(std::chrono::sys_seconds utc);

}  // namespace velmodsp
