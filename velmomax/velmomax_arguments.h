/// Creation arguments of an object. The host hands them to the constructor as one dictionary: every attribute's default
/// and, in its stead, what was typed into the box as `@name value`. Main thread, in the constructor.
#pragma once

#include "velmomax_api.h"

namespace velmomax {

/// Sets every attribute that the arguments name. `check` has the host complain about entries that name none.
/// @return false, with a bug in the Max window, when the host gave no argument dictionary
bool dictionary_process_all(void* x, long argc, t_atom* argv, bool check) noexcept;

/// Sets only the `count` attributes whose names (`const char*`) follow: those that size the object and must be known
/// before anything else.
/// @return true when every one of them was set; what failed is reported in the Max window
/// @throws std::bad_alloc: an object of another size than the one asked for is none
bool dictionary_process_partial(void* x, long argc, t_atom* argv, int count, ...);

/// Sets the attribute `name` from the single atom that `dict` holds for it.
/// @return false, with an error in the Max window, when `dict` has no such entry or it is several atoms
/// @throws std::bad_alloc
bool attr_dictionary_process_atom(void* x, t_dictionary* dict, t_symbol* name);

}  // namespace velmomax
