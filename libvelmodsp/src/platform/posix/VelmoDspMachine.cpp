#include "platform/VelmoDspMachine.h"

#include <sys/utsname.h>
#include <unistd.h>

namespace velmodsp::Machine {

String Architecture() {
    utsname system{};
    return uname(&system) < 0 ? "" : system.machine;
}

unsigned long long PhysicalMemory() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long bytesPerPage = sysconf(_SC_PAGESIZE);
    if (pages < 0 || bytesPerPage < 0) return 0;
    return static_cast<unsigned long long>(pages) * static_cast<unsigned long long>(bytesPerPage);
}

}  // namespace velmodsp::Machine
