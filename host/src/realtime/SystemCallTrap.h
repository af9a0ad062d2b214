#pragma once

namespace velmohost {

/// Ends the program when the calling thread has called the system between `Close` and `Open`: standard error then tells
/// the number of its first call and the functions on the stack, and the exit status is 1. The call itself goes through,
/// so that whoever finds the breach first can report it.
///
/// It stands on the kernel's syscall user dispatch, hence Linux 5.11 and x86-64. Under an older kernel it never closes.
class SystemCallTrap {
public:
    /// Puts the calling thread under the trap, still open. Its first call allocates and calls the system.
    /// @returns whether this system has it
    static bool Prepare() noexcept;

    /// Closes and opens the trap of the calling thread, which is prepared.
    static void Close() noexcept;
    static void Open() noexcept;
};

}  // namespace velmohost
