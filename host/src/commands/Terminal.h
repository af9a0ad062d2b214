#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>

namespace velmohost {

/// Whether a stream such as `stdin` is a terminal, where somebody may type or read.
bool IsTerminal(std::FILE* stream);

/// Waits until the standard input has something to read, its end included. Where the system can wait for terminals
/// only, other input is taken to be there.
/// @param limit how long to wait at most, 0 or more
/// @returns false when the time is over or a signal came in between
bool WaitForInput(std::chrono::milliseconds limit);

/// Reads what the standard input has, `size` bytes at most; waits only when there is nothing.
/// @returns the number of bytes, 0 at the end of the input and for an input that cannot be read
std::size_t ReadInput(char* bytes, std::size_t size);

}  // namespace velmohost
