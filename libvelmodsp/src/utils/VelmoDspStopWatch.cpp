#include "utils/VelmoDspStopWatch.h"

#include "platform/VelmoDspCpuTime.h"

namespace velmodsp {

using Seconds = std::chrono::duration<double>;

void StopWatch::Restart() noexcept {
    cpuTimeAtStart = ProcessCpuTime();
    start = std::chrono::steady_clock::now();
}

double StopWatch::GetSeconds() const noexcept { return Seconds(std::chrono::steady_clock::now() - start).count(); }

double StopWatch::GetCpuSeconds() const noexcept { return Seconds(ProcessCpuTime() - cpuTimeAtStart).count(); }

}  // namespace velmodsp
