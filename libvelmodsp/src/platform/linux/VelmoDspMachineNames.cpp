#include <sys/utsname.h>

#include <fstream>
#include <string>

#include "platform/VelmoDspMachine.h"

namespace velmodsp::Machine {
namespace {

/// Value of the first line "KEY SEPARATOR VALUE" of a text file, without blanks and quotes around it; "" when there is
/// no such line.
String ValueInFile(const char* path, char separator, const char* key) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        const std::size_t end = line.find(separator);
        if (end == std::string::npos) continue;
        String name(line.substr(0, end));
        name.RemoveLeadingAndTrailingSpaces();
        if (name != key) continue;
        String value(line.substr(end + 1));
        value.RemoveLeadingAndTrailingSpaces();
        value.RemoveAllOccurence("\"");
        return value;
    }
    return {};
}

String KernelNameAndVersion() {
    utsname system{};
    if (uname(&system) < 0) return {};
    return String(system.sysname) + " " + system.release;
}

}  // namespace

String OperatingSystem() {
    for (const char* path : {"/etc/os-release", "/usr/lib/os-release"}) {
        String name = ValueInFile(path, '=', "PRETTY_NAME");
        if (!name.IsEmpty()) return name;
    }
    return KernelNameAndVersion();
}

String Processor() {
    // ARM kernels give the processor's numbers alone; many of them name the board.
    for (const char* key : {"model name", "Hardware", "Model"}) {
        String name = ValueInFile("/proc/cpuinfo", ':', key);
        if (!name.IsEmpty()) return name;
    }
    return {};
}

}  // namespace velmodsp::Machine
