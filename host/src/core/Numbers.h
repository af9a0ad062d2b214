#pragma once

#include <string>

#include "ext.h"

namespace velmohost {

/// Whether the whole of `text` reads as a number; if so, `number` becomes the long or, with a decimal point, an
/// exponent or more than 64 bits, the float. Words such as "inf" and "nan" are none.
bool ReadNumber(const std::string& text, t_atom& number);

/// `value` without its fraction, limited to what a long holds; 0 for NaN.
t_atom_long TruncateToLong(double value);

}  // namespace velmohost
