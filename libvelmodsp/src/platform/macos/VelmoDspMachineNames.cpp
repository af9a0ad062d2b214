#include <sys/sysctl.h>

#include "platform/VelmoDspMachine.h"

namespace velmodsp::Machine {
namespace {

String SystemText(const char* name) {
    char text[256] = "";
    std::size_t size = sizeof text - 1;  // the last byte stays 0
    return sysctlbyname(name, text, &size, nullptr, 0) == 0 ? text : "";
}

}  // namespace

String OperatingSystem() { return String("macOS ") + SystemText("kern.osproductversion"); }

String Processor() { return SystemText("machdep.cpu.brand_string"); }

}  // namespace velmodsp::Machine
