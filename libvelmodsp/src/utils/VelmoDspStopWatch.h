#pragma once

#include <chrono>

namespace velmodsp {

/// Measures what processing costs: the time that passes and the processor time that this process takes.
///
///     StopWatch watch;
///     for (const Block& block : blocks) engine.Process(...);       // audioSeconds of sound
///     double load = watch.GetCpuSeconds() / audioSeconds;          // 0.02: 2 % of one core
///     double speed = audioSeconds / watch.GetSeconds();            // 50: fifty times as fast as it plays
///
/// Time that passes is monotonic: setting the clock does not change it. Processor time stands still while the process
/// sleeps, so it tells the load even on a busy machine.
///
/// Threads: one at a time. Real-time safe: no allocation and no lock; `Restart` and `GetCpuSeconds` are a call into the
/// system.
class StopWatch {
public:
    /// Starts at once.
    StopWatch() noexcept { Restart(); }

    /// Starts again at 0.
    void Restart() noexcept;

    /// Seconds since the start.
    double GetSeconds() const noexcept;

    /// Seconds of processor time since the start, of all threads of this process together, so that n busy threads take
    /// up to n seconds a second. Comes in steps of up to 16 ms on Windows, of microseconds and less elsewhere.
    double GetCpuSeconds() const noexcept;

private:
    std::chrono::steady_clock::time_point start;
    std::chrono::nanoseconds cpuTimeAtStart;
};

}  // namespace velmodsp
