#include "platform/VelmoDspBacktraceLine.h"

#include <execinfo.h>

#include <cstdint>
#include <cstdlib>

#include "platform/linux/VelmoDspElfSymbols.h"

namespace velmodsp {
namespace {

/// The address between the last brackets of a line; null without one.
const void* AddressInLine(const String& line) {
    const String address = line.FromLastOccurrenceOf("[", false, false);
    return reinterpret_cast<const void*>(static_cast<std::uintptr_t>(std::strtoull(address.C_Str(), nullptr, 16)));
}

}  // namespace

char** DescribeAddresses(void* const* addresses, unsigned int count) {
    return backtrace_symbols(addresses, static_cast<int>(count));
}

/// A line is "module(symbol+0x1c) [0x7f3a…]". The symbol is missing for functions that their module does not export:
/// "module(+0x1a2b) [0x7f3a…]", "module() [0x7f3a…]" or "[0x7f3a…]". Their names are in the module's file.
String SymbolOfBacktraceLine(const String& line) {
    const String place = line.FromLastOccurrenceOf("(", false, false).UpToFirstOccurrenceOf(")", false, false);
    const String offset = place.FromFirstOccurrenceOf("+", true, false);
    String symbol = place.SubString(0, place.Length() - offset.Length());
    if (!symbol.IsEmpty()) return symbol;
    String unexported = FunctionInModuleFile(AddressInLine(line));
    if (!unexported.IsEmpty() || offset.IsEmpty()) return unexported;
    const std::string module = line.UpToLastOccurrenceOf("(", false, false).Str();
    return String(module.substr(module.find_last_of('/') + 1)) + offset;
}

}  // namespace velmodsp
