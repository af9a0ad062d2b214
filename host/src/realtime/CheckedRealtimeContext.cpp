#include "realtime/CheckedRealtimeContext.h"

#include <sys/resource.h>

#include <atomic>

#include "realtime/RealtimeContext.h"
#include "realtime/SystemCallTrap.h"

// The RealtimeSanitizer run-time library, which has no header for programs that the compiler did not instrument.
extern "C" {
void __rtsan_realtime_enter();
void __rtsan_realtime_exit();
}

namespace velmohost {
namespace {

std::atomic<unsigned long> pageFaults{0};
thread_local unsigned long pageFaultsBefore = 0;

unsigned long PageFaultsOfThread() noexcept {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return static_cast<unsigned long>(usage.ru_minflt + usage.ru_majflt);
}

}  // namespace

RealtimeContext::RealtimeContext() noexcept {
    SystemCallTrap::Prepare();
    __rtsan_realtime_enter();
    pageFaultsBefore = PageFaultsOfThread();  // last of what calls the system
    SystemCallTrap::Close();
}

RealtimeContext::~RealtimeContext() {
    SystemCallTrap::Open();
    pageFaults.fetch_add(PageFaultsOfThread() - pageFaultsBefore, std::memory_order_relaxed);
    __rtsan_realtime_exit();
}

unsigned long CountRealtimePageFaults() noexcept { return pageFaults.load(std::memory_order_relaxed); }

}  // namespace velmohost
