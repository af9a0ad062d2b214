#include "platform/VelmoDspCpuTime.h"

#include <windows.h>

#include <ratio>

namespace velmodsp {
namespace {

/// The system counts in steps of 100 ns.
using Ticks = std::chrono::duration<long long, std::ratio<1, 10'000'000>>;

Ticks ToTicks(const FILETIME& time) noexcept {
    return Ticks((static_cast<long long>(time.dwHighDateTime) << 32) | time.dwLowDateTime);
}

}  // namespace

std::chrono::nanoseconds ProcessCpuTime() noexcept {
    FILETIME created{}, ended{}, inSystem{}, inProcess{};
    if (!GetProcessTimes(GetCurrentProcess(), &created, &ended, &inSystem, &inProcess)) return Ticks(0);
    return ToTicks(inSystem) + ToTicks(inProcess);
}

}  // namespace velmodsp
