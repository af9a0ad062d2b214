#pragma once

#include <chrono>
#include <cstdio>

namespace velmohost {

/// Whether a stream such as `stdin` is a terminal, where somebody may type or read.
bool IsTerminal(std::FILE* stream);

/// Waits until the standard input, a terminal, has something to read, its end included.
/// @param limit how long to wait at most; negative for no limit
/// @returns false when the time is over or a signal came in between
bool WaitForInput(std::chrono::milliseconds limit);

}  // namespace velmohost
