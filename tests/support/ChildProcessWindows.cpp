#ifdef _WIN32

#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <stdexcept>

#include "platform/windows/VelmoDspWideText.h"
#include "support/ChildProcess.h"

namespace velmotest {
namespace {

std::wstring Wide(const std::string& text) { return velmodsp::ToWide(velmodsp::String(text)); }

/// The arguments of a shell's line in the form that Windows programs take theirs apart.
std::wstring CommandLine(const std::string& program, const std::string& arguments) {
    std::string line = "\"" + program + "\" ";
    bool isGrouped = false;
    for (const char character : arguments) {
        if (character == '\'') isGrouped = !isGrouped;
        line += character == '\'' ? '"' : character;
    }
    return Wide(line);
}

class File {
public:
    File(const std::string& path, DWORD access, DWORD creation) {
        SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        handle = CreateFileW(Wide(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, creation,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    ~File() { CloseHandle(handle); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    HANDLE handle;
};

}  // namespace

int RunProgram(const std::string& program, const std::string& arguments, const std::string& folder,
               const std::string& shellPrefix) {
    if (!shellPrefix.empty()) throw std::logic_error("no shell here");
    const File in(folder + "/stdin.txt", GENERIC_READ, OPEN_EXISTING);
    const File out(folder + "/stdout.txt", GENERIC_WRITE, CREATE_ALWAYS);
    const File err(folder + "/stderr.txt", GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = in.handle;
    start.hStdOutput = out.handle;
    start.hStdError = err.handle;
    std::wstring line = CommandLine(program, arguments);
    SetEnvironmentVariableW(L"HOME", Wide(folder).c_str());
    PROCESS_INFORMATION process{};
    const bool started = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, Wide(folder).c_str(),
                                        &start, &process);
    SetEnvironmentVariableW(L"HOME", nullptr);
    if (!started) return -1;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return status < 256 ? static_cast<int>(status) : -1;  // larger ones are the system's: a crash
}

}  // namespace velmotest

#endif
