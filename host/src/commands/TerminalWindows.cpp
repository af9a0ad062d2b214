#ifdef _WIN32

#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <io.h>

#include "commands/Terminal.h"

namespace velmohost {

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

bool WaitForInput(std::chrono::milliseconds limit) {
    return WaitForSingleObject(GetStdHandle(STD_INPUT_HANDLE), static_cast<DWORD>(limit.count())) == WAIT_OBJECT_0;
}

std::size_t ReadInput(char* bytes, std::size_t size) {
    const int count = _read(_fileno(stdin), bytes, static_cast<unsigned>(size));
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

}  // namespace velmohost

#endif
