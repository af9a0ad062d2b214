/// An object's state as a JSON file. Main thread.
#pragma once

#include <string>

#include "velmomax_api.h"

namespace velmomax {

/// Writes the atoms to `out` as a JSON value: one atom plainly, several as an array, none as nothing. Floats are
/// written as 32-bit values with six decimals. JSON has no form for NaN, infinities and objects: they become null. In
/// symbols quotes, backslashes and control characters are escaped, and all other bytes stay as they are.
void atomarray2json(long argc, const t_atom* argv, std::string& out);

/// Writes `dict` to the file at `path`, one entry a line in the order of the dictionary. A file that is there already
/// is replaced. The values of entries that are no atoms are left out, which is reported as an error of `x`.
/// @param path as the system takes it, in UTF-8
/// @return false when `dict` is null or the file cannot be written, which is reported once it is open; there is no file
/// then
bool export_dictionary_json(void* x, t_dictionary* dict, const std::string& path) noexcept;

/// Handler of "exportdict": writes the whole state to the file that the argument names, or that the user picks.
void export_dict(void* x, t_symbol* s, long argc, t_atom* argv) noexcept;

}  // namespace velmomax
