#include "platform/VelmoDspCpuTime.h"

#include <time.h>

namespace velmodsp {

std::chrono::nanoseconds ProcessCpuTime() noexcept {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace velmodsp
