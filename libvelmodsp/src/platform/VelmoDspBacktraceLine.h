#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// The calling thread's return addresses, innermost first, into `addresses`; the first ones may belong to the capture
/// itself. @return how many there are, `capacity` at most
unsigned int CaptureReturnAddresses(void** addresses, unsigned int capacity);

/// One line of text per address, in the system's own format; to be released with `Free`. Null when there is no memory.
char** DescribeAddresses(void* const* addresses, unsigned int count);

/// The mangled symbol in such a line. Without one, the place: module file, "+" and hexadecimal offset, where known.
String SymbolOfBacktraceLine(const String& line);

}  // namespace velmodsp
