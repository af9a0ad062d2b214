#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

class StringArray;

/// Names of the functions on this thread's call stack, for messages.
///
/// Inlined functions have no frame of their own and so no name here. A function whose name the system cannot tell is
/// given by its place: module file, "+", hexadecimal offset. Any thread; never the audio thread.
class Backtrace {
public:
    /// Puts the demangled names of up to `depth` functions into `out`, the innermost first; the first is this function.
    static void GetStack(StringArray& out, unsigned int depth);

    /// Name of the function that called the function that calls this one; "" when the stack is too shallow.
    static String GetCallerFunctionName();
};

}  // namespace velmodsp
