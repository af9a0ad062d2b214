#include "platform/VelmoDspSystemLog.h"

#include <process.h>

#include <cstdio>
#include <string>

namespace velmodsp {

/// The system's event log wants sources registered by an installer, so what remains is the copy on standard error, in
/// the form that other systems give it, written at once so that messages of several threads do not mix.
void WriteToSystemLog(const char* text) {
    std::string line = "velmodsp[" + std::to_string(_getpid()) + "]: " + text;
    if (line.back() != '\n') line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

}  // namespace velmodsp
