#ifdef _WIN32

#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <io.h>
#include <shellapi.h>

#include <array>
#include <string>

#include "commands/Terminal.h"
#include "platform/windows/VelmoDspWideText.h"

namespace velmohost {
namespace {

using Clock = std::chrono::steady_clock;

/// Whether the console has a pressed key to read. Its other events, such as released keys and a resized window, would
/// wake who waits for input and are no input; they are taken away.
bool HasPressedKey(HANDLE console) {
    INPUT_RECORD event;
    DWORD count = 0;
    while (PeekConsoleInputW(console, &event, 1, &count) && count > 0) {
        if (event.EventType == KEY_EVENT && event.Event.KeyEvent.bKeyDown) return true;
        ReadConsoleInputW(console, &event, 1, &count);
    }
    return false;
}

/// What was typed at the console, read as the system's own characters: bytes would be in an old code page.
std::size_t ReadTyped(char* bytes, std::size_t size) {
    std::array<wchar_t, 4096> characters;
    static std::string waiting;  // UTF-8 that did not fit
    if (waiting.empty()) {
        DWORD count = 0;
        ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), characters.data(), characters.size(), &count, nullptr);
        const std::wstring typed(characters.data(), count);
        constexpr wchar_t kEndOfInput = L'\x1a';
        if (typed.starts_with(kEndOfInput)) return 0;
        waiting = velmodsp::FromWide(typed).Str();
    }
    const std::size_t taken = waiting.copy(bytes, size);
    waiting.erase(0, taken);
    return taken;
}

}  // namespace

/// `main` itself gets them in the system's old code page, which lacks most characters.
std::vector<std::string> ReadArguments(int, char**) {
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> texts;
    for (int i = 0; i < count; ++i) texts.push_back(velmodsp::FromWide(wide[i]).Str());
    LocalFree(wide);
    return texts;
}

Utf8Terminal::Utf8Terminal() : encoding(GetConsoleOutputCP()) {
    SetConsoleOutputCP(CP_UTF8);
    const HANDLE errorOutput = GetStdHandle(STD_ERROR_HANDLE);
    if (GetConsoleMode(errorOutput, &mode)) SetConsoleMode(errorOutput, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

Utf8Terminal::~Utf8Terminal() {
    if (encoding != 0) SetConsoleOutputCP(encoding);
    if (mode != 0) SetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), mode);
}

bool IsTerminal(std::FILE* stream) { return _isatty(_fileno(stream)) != 0; }

bool WaitForInput(std::chrono::milliseconds limit) {
    if (!IsTerminal(stdin)) return true;
    const HANDLE console = GetStdHandle(STD_INPUT_HANDLE);
    const auto end = Clock::now() + limit;
    for (auto left = limit; left.count() >= 0;
         left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now())) {
        if (WaitForSingleObject(console, static_cast<DWORD>(left.count())) != WAIT_OBJECT_0) return false;
        if (HasPressedKey(console)) return true;
    }
    return false;
}

std::size_t ReadInput(char* bytes, std::size_t size) {
    if (IsTerminal(stdin)) return ReadTyped(bytes, size);
    const int count = _read(_fileno(stdin), bytes, static_cast<unsigned>(size));
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

}  // namespace velmohost

#endif
