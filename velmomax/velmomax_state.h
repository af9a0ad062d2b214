/// An object's state: the values of its attributes, in alphabetical order and without those that users neither see nor
/// set. As one list of atoms it travels to and from the host's pattr and preset objects. Everything runs on the main
/// thread; problems are reported in the Max window in the name of the object.
#pragma once

#include <vector>

#include "velmomax_api.h"

namespace velmomax {

/// The names of the attributes that make up the state of `x`, in alphabetical order.
/// @throws std::bad_alloc
std::vector<t_symbol*> GetStateAttributes(void* x);

/// Handler of "getvalueof", by which pattr objects read the state. All values one after the other go to the memory that
/// the caller passes in (`*av` with room for `*ac` atoms) as far as they fit, or else, when either is 0, to new memory
/// that the caller frees with `sysmem_freeptr`. `*ac` becomes the number of atoms stored.
/// @return MAX_ERR_NONE
t_max_err velmomax_getvalueof(void* x, long* ac, t_atom** av) noexcept;

/// Handler of "setvalueof", by which pattr objects restore the state that `velmomax_getvalueof` gave. A list of another
/// length than the state's is refused as a whole.
/// @return MAX_ERR_NONE
t_max_err velmomax_setvalueof(void* x, long ac, t_atom* av) noexcept;

/// Handler of "preset": while a preset is being stored, adds the message to it that brings the state back.
void velmomax_preset(void* x) noexcept;

/// Handler of "recallpreset", the message that `velmomax_preset` stored.
t_max_err velmomax_recallpreset(void* x, t_symbol* s, long argc, t_atom* argv) noexcept;

}  // namespace velmomax
