#pragma once

namespace velmodsp {

/// What this processor can do beyond what every one of its family can.
class Processor {
public:
    /// Whether it has the AVX2 vectors and the system keeps their registers; false where there is no such thing.
    /// Any thread, also while the program or plug-in is being loaded.
    static bool HasAvx2() noexcept;
};

}  // namespace velmodsp
