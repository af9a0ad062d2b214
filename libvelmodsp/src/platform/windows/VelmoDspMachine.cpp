#include "platform/VelmoDspMachine.h"

#include <windows.h>

#include "platform/windows/VelmoDspWideText.h"

namespace velmodsp::Machine {

String OperatingSystem() {
    // The documented call for the version answers with what the program's manifest asks for; this one does not.
    using RtlGetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    const auto getVersion = reinterpret_cast<RtlGetVersion>(GetProcAddress(system, "RtlGetVersion"));
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (getVersion == nullptr || getVersion(&version) != 0) return "Windows";
    return String("Windows ") + version.dwMajorVersion + "." + version.dwMinorVersion + "." + version.dwBuildNumber;
}

String Processor() {
    wchar_t name[256] = L"";
    DWORD size = sizeof name;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0", L"ProcessorNameString",
                     RRF_RT_REG_SZ, nullptr, name, &size) != ERROR_SUCCESS)
        return {};
    String text = FromWide(name);
    text.RemoveLeadingAndTrailingSpaces();
    return text;
}

String Architecture() {
    SYSTEM_INFO info{};
    GetSystemInfo(&info);
    switch (info.wProcessorArchitecture) {
        case PROCESSOR_ARCHITECTURE_AMD64:
            return "x86_64";
        case PROCESSOR_ARCHITECTURE_ARM64:
            return "arm64";
        default:
            return {};
    }
}

unsigned long long PhysicalMemory() {
    MEMORYSTATUSEX memory{};
    memory.dwLength = sizeof memory;
    return GlobalMemoryStatusEx(&memory) ? memory.ullTotalPhys : 0;
}

}  // namespace velmodsp::Machine
