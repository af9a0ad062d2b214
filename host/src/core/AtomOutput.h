#pragma once

#include <vector>

#include "ext.h"

namespace velmohost {

/// Hands atoms to a caller by the API's rule for results: when both `*ac` and `*av` are set on entry they are the
/// caller's memory and receive as many atoms as fit; else `*av` becomes a copy to free with sysmem_freeptr, null for no
/// atoms. `*ac` becomes the number of atoms.
/// @throws std::bad_alloc, leaving both as they were but for `*av`, which is null where it was to be set
t_max_err GiveAtoms(const std::vector<t_atom>& atoms, long* ac, t_atom** av);

}  // namespace velmohost
