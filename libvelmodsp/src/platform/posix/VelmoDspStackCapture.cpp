#include <execinfo.h>

#include "platform/VelmoDspBacktraceLine.h"

namespace velmodsp {

unsigned int CaptureReturnAddresses(void** addresses, unsigned int capacity) {
    const int count = backtrace(addresses, static_cast<int>(capacity));
    return count < 0 ? 0 : static_cast<unsigned int>(count);
}

}  // namespace velmodsp
