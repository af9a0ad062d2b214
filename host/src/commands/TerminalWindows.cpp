#ifdef _WIN32

#include <windows.h>

#include <io.h>

#include "commands/Terminal.h"

namespace velmohost {

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

bool WaitForInput(std::chrono::milliseconds limit) {
    const DWORD milliseconds = limit.count() < 0 ? INFINITE : static_cast<DWORD>(limit.count());
    return WaitForSingleObject(GetStdHandle(STD_INPUT_HANDLE), milliseconds) == WAIT_OBJECT_0;
}

}  // namespace velmohost

#endif
