#pragma once

namespace velmohost {

/// From construction on, the user's break key and a request to end are noted instead of ending the program at once, so
/// that a half-written file can be taken away. At the end of the scope the system's own handling is back. One at a
/// time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Whether an end was asked for, by the break key or otherwise.
    bool Requested() const noexcept;

    /// Whether the break key was used since the last call, which takes it back: for a prompt, where it ends less than
    /// the program.
    bool TakeBreak() noexcept;
};

}  // namespace velmohost
