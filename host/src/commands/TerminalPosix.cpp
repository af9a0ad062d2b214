#ifndef _WIN32

#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "commands/Terminal.h"

namespace velmohost {

std::vector<std::string> ReadArguments(int argc, char** argv) { return {argv, argv + argc}; }

Utf8Terminal::Utf8Terminal() = default;

Utf8Terminal::~Utf8Terminal() = default;

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) == 1; }

bool WaitForInput(std::chrono::milliseconds limit) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, static_cast<int>(limit.count())) > 0;
}

std::size_t ReadInput(char* bytes, std::size_t size) {
    ssize_t count = -1;
    do {
        count = read(STDIN_FILENO, bytes, size);
    } while (count < 0 && errno == EINTR);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

}  // namespace velmohost

#endif
