#include "platform/VelmoDspBacktraceLine.h"

#include <execinfo.h>

namespace velmodsp {

char** DescribeAddresses(void* const* addresses, unsigned int count) {
    return backtrace_symbols(addresses, static_cast<int>(count));
}

/// A line is "module(symbol+0x1c) [0x7f3a…]". The symbol is missing for functions that their module does not export:
/// "module(+0x1a2b) [0x7f3a…]", "module() [0x7f3a…]" or "[0x7f3a…]".
String SymbolOfBacktraceLine(const String& line) {
    const String module = line.UpToLastOccurrenceOf("(", false, false);
    const String place = line.FromLastOccurrenceOf("(", false, false).UpToFirstOccurrenceOf(")", false, false);
    if (place.StartsWith('+')) return String(module.Str().substr(module.Str().find_last_of('/') + 1)) + place;
    return place.IndexOfFirstOccurence("+", false) < 0 ? place : place.UpToFirstOccurrenceOf("+", false, false);
}

}  // namespace velmodsp
