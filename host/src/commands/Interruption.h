#pragma once

namespace velmohost {

/// What the user's break key means.
enum class BreakKey {
    EndsProgram,  ///< the same as a request to end
    IsTaken       ///< something less, at a prompt: see `Interruption::TakeBreak`
};

/// From construction on, the user's break key and a request to end are noted instead of ending the program at once, so
/// that a half-written file can be taken away. At the end of the scope the system's own handling is back. One at a
/// time.
class Interruption {
public:
    explicit Interruption(BreakKey breakKey = BreakKey::EndsProgram);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Whether an end was asked for.
    bool Requested() const noexcept;

    /// Whether the break key was used since the last call, where it does not end the program; false where it does.
    bool TakeBreak() noexcept;

private:
    const BreakKey breakKey;
};

}  // namespace velmohost
