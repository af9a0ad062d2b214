#pragma once

#include "ext.h"

namespace velmohost {

/// Calls a class's constructor with atoms as its type list asks for them; `name` is the one typed. Null when it gives
/// none or, after an error row, when the atoms do not suit it.
t_object* Construct(t_class* c, t_symbol* name, long ac, t_atom* av);

}  // namespace velmohost
