#pragma once

#include "ext.h"

namespace velmohost {

/// Calls a typed method with atoms converted by its type list. `result` may be null and is written by methods that give
/// one (A_GIMMEBACK) only.
/// @returns what is wrong with the atoms ("missing", "bad" or "extra"), in which case nothing was called; null if all
/// went well
const char* CallTyped(t_object* x, const t_messlist& entry, t_symbol* selector, long ac, t_atom* av, t_atom* result);

}  // namespace velmohost
