#include "platform/VelmoDspBacktraceLine.h"

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "platform/windows/VelmoDspWideText.h"
#include "utils/VelmoDspMemory.h"

// The system keeps no names of functions that a module does not export, and no debug information of this compiler's
// kind, so a line tells the place: "C:\folder\module.dll+0x1a2b", which debuggers and addr2line translate.

namespace velmodsp {
namespace {

std::string Hexadecimal(std::uintptr_t number) {
    std::string digits;
    do {
        digits.insert(digits.begin(), "0123456789abcdef"[number & 15]);
        number >>= 4;
    } while (number != 0);
    return "0x" + digits;
}

std::string Describe(void* address) {
    HMODULE module = nullptr;
    const DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    const auto place = reinterpret_cast<std::uintptr_t>(address);
    if (!GetModuleHandleExW(flags, static_cast<LPCWSTR>(address), &module)) return Hexadecimal(place);
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return FromWide(path).Str() + "+" + Hexadecimal(place - reinterpret_cast<std::uintptr_t>(module));
}

}  // namespace

unsigned int CaptureReturnAddresses(void** addresses, unsigned int capacity) {
    return CaptureStackBackTrace(0, capacity, addresses, nullptr);
}

char** DescribeAddresses(void* const* addresses, unsigned int count) {
    std::vector<std::string> lines;
    std::size_t size = count * sizeof(char*);
    for (unsigned int i = 0; i < count; ++i) size += lines.emplace_back(Describe(addresses[i])).size() + 1;
    // One block, as the caller releases it by one call: the pointers, then the texts they point to.
    auto* pointers = static_cast<char**>(Malloc(static_cast<unsigned long>(size)));
    if (pointers == nullptr) return nullptr;
    char* text = reinterpret_cast<char*>(pointers + count);
    for (unsigned int i = 0; i < count; ++i) {
        pointers[i] = text;
        std::memcpy(text, lines[i].c_str(), lines[i].size() + 1);
        text += lines[i].size() + 1;
    }
    return pointers;
}

String SymbolOfBacktraceLine(const String& line) {
    const std::string text = line.Str();
    return String(text.substr(text.find_last_of('\\') + 1));
}

}  // namespace velmodsp
