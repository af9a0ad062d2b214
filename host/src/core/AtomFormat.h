#pragma once

#include <cstdarg>
#include <vector>

#include "ext.h"

namespace velmohost {

/// The atoms that a format and its values describe; the letters are those of ext_obex_util.h. Counts of arrays are read
/// as `long`, a single atom ("a") as a pointer to it, an attribute ("@") as its object and its name's symbol.
/// @returns MAX_ERR_GENERIC for an unknown letter; what comes after it is not read
t_max_err FormatAtoms(const char* format, std::va_list values, std::vector<t_atom>& atoms);

}  // namespace velmohost
