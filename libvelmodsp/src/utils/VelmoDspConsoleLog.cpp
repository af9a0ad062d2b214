#include "utils/VelmoDspConsoleLog.h"

#include "platform/VelmoDspSystemLog.h"

namespace velmodsp {

void ConsoleLog::Print(const String& text) {
    std::ostringstream stream;
    stream << text << std::endl;
    Print(stream);
}

void ConsoleLog::Print(const std::ostringstream& text) { WriteToSystemLog(text.str().c_str()); }

}  // namespace velmodsp
