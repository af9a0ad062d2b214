#pragma once

#include <sstream>

#include "text/VelmoDspString.h"

namespace velmodsp {

/// The library's messages to the outside: the system log (identity "velmodsp", priority notice) with a copy on standard
/// error. Where a system has no such log, the copy remains.
///
/// Any thread may print: a message is one call to the system log, so messages never mix. Errors of the system log are
/// ignored. Not for the audio thread.
class ConsoleLog {
public:
    /// Writes `text` and a line break.
    static void Print(const String& text);
    /// Writes the stream's whole text as it is.
    static void Print(const std::ostringstream& text);
};

}  // namespace velmodsp
