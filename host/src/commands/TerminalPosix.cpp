#ifndef _WIN32

#include <poll.h>
#include <unistd.h>

#include "commands/Terminal.h"

namespace velmohost {

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) == 1; }

bool WaitForInput(std::chrono::milliseconds limit) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, limit.count() < 0 ? -1 : static_cast<int>(limit.count())) > 0;
}

}  // namespace velmohost

#endif
