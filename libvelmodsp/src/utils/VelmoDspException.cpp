#include "utils/VelmoDspException.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <ostream>
#include <sstream>

#include "utils/VelmoDspConsoleLog.h"

namespace velmodsp {
namespace {

const char* LastPathComponent(const char* path) {
    if (path == nullptr) return "";
    const char* separator = std::strrchr(path, '/');
    return separator == nullptr ? path : separator + 1;
}

}  // namespace

Exception::Exception(const std::exception& cause, const char* sourcePath, unsigned long sourceLine, bool printLocation,
                     bool exitProgram)
    : Exception(String(cause.what()), sourcePath, sourceLine, printLocation, exitProgram) {}

Exception::Exception(const Exception& cause, const char* sourcePath, unsigned long sourceLine, bool printLocation,
                     bool exitProgram)
    : Exception(String(cause.what()), sourcePath, sourceLine, printLocation, exitProgram) {}

Exception::Exception(const String& text, const char* sourcePath, unsigned long sourceLine, bool printLocation,
                     bool exitProgram)
    : line(sourceLine) {
    try {
        fileName = LastPathComponent(sourcePath);
        message = text.Str();
    } catch (const std::bad_alloc&) {
        message = "out of memory";  // short enough for the string to need none
    }
    handleIt(printLocation, exitProgram);
}

void Exception::handleIt(bool printLocation, bool exitProgram) const {
    try {
        std::ostringstream report;
        if (printLocation) {
            report << "Exception occured in : " << fileName << " at line " << line << " : " << std::endl << "  ";
        } else {
            report << "Exception occured : ";
        }
        report << message << std::endl << std::endl;
        ConsoleLog::Print(report);
    } catch (...) {
        // The failure itself matters more than its report, which may want memory that there is none of.
    }
    if (exitProgram) std::exit(EXIT_FAILURE);  // NOLINT(concurrency-mt-unsafe): as whoever throws asks for
}

UnknownException::UnknownException(const char* sourcePath, unsigned long sourceLine, bool printLocation,
                                   bool exitProgram)
    : Exception(String("unknown exception"), sourcePath, sourceLine, printLocation, exitProgram) {}

}  // namespace velmodsp
