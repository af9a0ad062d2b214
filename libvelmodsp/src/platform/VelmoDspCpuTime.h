#pragma once

#include <chrono>

namespace velmodsp {

/// Processor time that all threads of this process have taken so far, for themselves and inside the system; 0 when the
/// system does not know. Any thread; real-time safe.
std::chrono::nanoseconds ProcessCpuTime() noexcept;

}  // namespace velmodsp
