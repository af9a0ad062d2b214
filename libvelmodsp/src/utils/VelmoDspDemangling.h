#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// From the linker's names to those of the source.
class Demangling {
public:
    /// "_ZN8velmodsp6String6AppendEc" gives "velmodsp::String::Append(char)". What is no mangled name comes back
    /// unchanged.
    static String Demangle(const String& name);
};

}  // namespace velmodsp
