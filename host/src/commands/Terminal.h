#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace velmohost {

/// The arguments of the program, whose `main` got these, in UTF-8.
std::vector<std::string> ReadArguments(int argc, char** argv);

/// Has the program's terminal, if there is one, show UTF-8 text and obey escape sequences, for as long as it lives.
class Utf8Terminal {
public:
    Utf8Terminal();
    ~Utf8Terminal();
    Utf8Terminal(const Utf8Terminal&) = delete;
    Utf8Terminal& operator=(const Utf8Terminal&) = delete;

private:
    [[maybe_unused]] unsigned long encoding = 0, mode = 0;  // as they were; unused where terminals do so by themselves
};

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
