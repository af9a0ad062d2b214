#include "platform/VelmoDspBacktraceLine.h"

#include <execinfo.h>

namespace velmodsp {

char** DescribeAddresses(void* const* addresses, unsigned int count) {
    return backtrace_symbols(addresses, static_cast<int>(count));
}

/// A line is frame number, module, address, symbol, "+" and decimal offset, with blanks between them:
/// "2   tesk.fixnan~   0x0000000104f2c3a4 _ZN8velmodsp6String6AppendEc + 28"
String SymbolOfBacktraceLine(const String& line) {
    String symbol = line.UpToLastOccurrenceOf("+", false, false);
    symbol.RemoveLeadingAndTrailingSpaces();
    symbol = symbol.FromLastOccurrenceOf(" ", true, false);
    symbol.RemoveLeadingAndTrailingSpaces();
    return symbol;
}

}  // namespace velmodsp
