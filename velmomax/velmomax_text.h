/// Numbers, atoms and host errors as text, and rows of the Max window made from them.
#pragma once

#include <string>

#include "velmomax_api.h"

namespace velmomax {

/// The number as a stream prints it by default: whole numbers in decimal.
std::string long2string(long value);

/// The number as a stream prints it by default: at most six significant digits, so one million reads "1e+06" as a
/// float. Made for `unsigned int`, `int` and `float`.
template <typename Number>
std::string float2string(Number value);

/// The number as a 32-bit value with six decimals, as `printf` writes it with "%f".
std::string fixedFloat(double value);

/// Writes the atoms to `out`, each followed by one blank: symbols by name, longs in decimal, floats as 32-bit values
/// with six decimals of which trailing zeros are cut, so a whole float keeps its point ("2."). Atoms of other types are
/// passed over. `out` is empty when there are no atoms.
void atomarray2string(long argc, const t_atom* argv, std::string& out);

/// Cuts the white space (as `isspace` knows it) at the end of `text`.
void removeTrailingSpaces(std::string& text);

/// The name of a host error code, for example "MAX_ERR_GENERIC"; "unknown MAX_ERR" for a code that has none.
const char* GetErrorName(t_max_err code) noexcept;

/// Posts the name and the atoms as text: "numchannels : 2 ". Main thread.
/// @throws std::bad_alloc
void post_message(void* x, long argc, const t_atom* argv, const char* name);

/// Posts the text and the atoms, or the text alone when there are none, as an error of `x`. Main thread.
/// @throws std::bad_alloc
void post_error_message(void* x, long argc, const t_atom* argv, const char* text);

}  // namespace velmomax
