#pragma once

#include <exception>
#include <string>

#include "text/VelmoDspString.h"

namespace velmodsp {

/// Every failure of the library: a message with the source file and line it was raised at.
///
/// Building one reports it on the console log, so whoever catches it need not print it again; copies report nothing.
///
///     throw Exception("Couldnt open file " + path, "libvelmodsp/src/files/VelmoDspFileHandle", __LINE__, true, false);
///
/// Constructor parameters:
/// - sourcePath: path with "/" as separator, of which the last component is kept; null counts as empty
/// - sourceLine: 0 when unknown
/// - printLocation: whether the report names file and line
/// - exitProgram: whether the process ends after the report, with status 1
///
/// Any thread may build one; it allocates and does system calls, so never on the audio thread. Without memory for the
/// message that becomes "out of memory".
class Exception : public std::exception {
public:
    /// Takes over the cause's message.
    Exception(const std::exception& cause, const char* sourcePath, unsigned long sourceLine, bool printLocation,
              bool exitProgram);
    /// Raises the cause again from a new location.
    Exception(const Exception& cause, const char* sourcePath, unsigned long sourceLine, bool printLocation,
              bool exitProgram);
    Exception(const String& text, const char* sourcePath, unsigned long sourceLine, bool printLocation,
              bool exitProgram);

    /// The message; lives as long as this object.
    const char* what() const noexcept override { return message.c_str(); }
    /// Last component of the source path, "" when unknown.
    String GetFileName() const { return String(fileName); }
    unsigned long GetLine() const { return line; }

    /// Writes the report to the console log, then ends the process if asked to. Every constructor calls it last.
    void handleIt(bool printLocation, bool exitProgram) const;

private:
    std::string fileName;
    std::string message;
    unsigned long line;
};

/// Stands for something that was thrown and is no standard exception; its message is "unknown exception".
class UnknownException : public Exception {
public:
    UnknownException(const char* sourcePath, unsigned long sourceLine, bool printLocation, bool exitProgram);
};

}  // namespace velmodsp
