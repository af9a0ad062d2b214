#pragma once

namespace velmodsp {

/// Subnormal numbers (magnitudes below about 1.2e-38) are inaudible, but cost many processors a hundred times the work
/// of a normal number; decaying filters produce them by the thousand.
class Denormals {
public:
    /// Makes the calling thread read and write subnormal numbers as zeros (flush-to-zero and denormals-are-zero) until
    /// its control word is changed again; see `ScopedFloatingPointControl`. Any thread; real-time safe.
    static void TurnOff() noexcept;
};

}  // namespace velmodsp
