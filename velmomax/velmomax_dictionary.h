/// An object's state as a host dictionary: one entry per attribute, holding its atom or, for several, an array.
/// Everything runs on the main thread; problems are reported in the Max window in the name of the object.
#pragma once

#include "velmomax_api.h"

namespace velmomax {

/// A new dictionary with the object's whole state. The caller frees it with `object_free`, or the host keeps it once it
/// is registered.
/// @throws std::bad_alloc
t_dictionary* AddAttributesToDictionary(void* x);

/// Adds the current value of the attribute `name` to `dict`, or nothing when `dict` is null or the value is empty.
/// A single float is narrowed to 32 bits.
/// @throws std::bad_alloc: a state with a part missing would pass for the whole one
void AppendAttributeToDictionary(void* x, t_dictionary* dict, t_symbol* name);

/// Registers `dict` under a name of its own, sends that name out of the dump outlet and empties the dictionary when
/// everybody has had it. From then on it is the host's; when it could not be sent it stays the caller's.
void dump_dictionary(void* x, t_dictionary* dict) noexcept;

/// Sets every attribute that `dict` has values for. Entries that name no attribute have no effect.
/// @return false when the entries could not be listed
bool parse_dictionary(void* x, t_dictionary* dict) noexcept;

/// Handler of "dumpdict": sends the whole state, or the attributes that the arguments name, out of the dump outlet.
void dump_dict(void* x, t_symbol* s, long argc, t_atom* argv) noexcept;

/// Handler of "dictionary": takes the state over from the dictionary that is registered under `name`.
void readdict(void* x, t_symbol* name) noexcept;

}  // namespace velmomax
