#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// Mangled name of the function that `returnAddress` leads back into, read from the file of the module that holds it.
/// Finds functions that the module does not export too, unless the file was stripped. "" when there is none.
String FunctionInModuleFile(const void* returnAddress);

}  // namespace velmodsp
