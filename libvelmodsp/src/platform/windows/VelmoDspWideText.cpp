#include "platform/windows/VelmoDspWideText.h"

#include <windows.h>

namespace velmodsp {

std::wstring ToWide(const String& text) {
    const int length = static_cast<int>(text.Length());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.C_Str(), length, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.C_Str(), length, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

String FromWide(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return String(bytes);
}

}  // namespace velmodsp
