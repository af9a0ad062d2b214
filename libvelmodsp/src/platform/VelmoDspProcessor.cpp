#include "platform/VelmoDspProcessor.h"

namespace velmodsp {

#if defined(__x86_64__)

bool Processor::HasAvx2() noexcept {
    __builtin_cpu_init();  // does nothing but for what runs before the compiler's own start-up code
    return __builtin_cpu_supports("avx2") != 0;
}

#else

bool Processor::HasAvx2() noexcept { return false; }

#endif

}  // namespace velmodsp
