#include "utils/VelmoDspBacktrace.h"

#include <algorithm>
#include <vector>

#include "platform/VelmoDspBacktraceLine.h"
#include "text/VelmoDspStringArray.h"
#include "utils/VelmoDspDemangling.h"
#include "utils/VelmoDspMemory.h"

namespace velmodsp {
namespace {

/// Frames that may lie between the place of capture and the function that asks: those of the platform's own functions.
constexpr unsigned int innerFrames = 8;

/// The return addresses of the stack from the function that returns to `returnAddress` on, at most `count`.
std::vector<void*> CaptureFrom(const void* returnAddress, unsigned int count) {
    std::vector<void*> addresses(std::size_t{count} + innerFrames);
    addresses.resize(CaptureReturnAddresses(addresses.data(), static_cast<unsigned int>(addresses.size())));
    const auto caller = std::find(addresses.begin(), addresses.end(), returnAddress);
    if (caller != addresses.end() && caller != addresses.begin()) addresses.erase(addresses.begin(), caller - 1);
    if (addresses.size() > count) addresses.resize(count);
    return addresses;
}

String FunctionName(const char* line) {
    const String symbol = SymbolOfBacktraceLine(line);
    return symbol == "main" ? symbol : Demangling::Demangle(symbol);
}

}  // namespace

// Both functions count on being frames of their own: they are never inlined, and never end in a call.

[[gnu::noinline]] void Backtrace::GetStack(StringArray& out, unsigned int depth) {
    const std::vector<void*> addresses = CaptureFrom(__builtin_return_address(0), depth + 1);
    const auto count = static_cast<unsigned int>(addresses.size());
    char** lines = DescribeAddresses(addresses.data(), count);
    out.Resize(lines == nullptr || count == 0 ? 0 : count - 1);
    for (unsigned long i = 0; i < out.Size(); ++i) out[i] = FunctionName(lines[i]);
    Free(lines);
}

[[gnu::noinline]] String Backtrace::GetCallerFunctionName() {
    StringArray names;
    GetStack(names, 4);
    return names.Size() < 4 ? String() : names[3];
}

}  // namespace velmodsp
