#pragma once

// Dictionaries that objects pass to each other by name. Main thread.

#include "ext_dictionary.h"

MAX_API_BEGIN

/// Registers a dictionary under `*name`; a null name is filled in with a unique one. When the name is taken, `d` is
/// freed and the dictionary that holds the name returned: go on with the result only.
t_dictionary* dictobj_register(t_dictionary* d, t_symbol** name);
/// Takes a dictionary's name away; the dictionary lives on.
t_max_err dictobj_unregister(t_dictionary* d);
/// A copy of a registered dictionary, owned by the caller; null when there is none.
t_dictionary* dictobj_findregistered_clone(t_symbol* name);
/// A registered dictionary, kept alive until dictobj_release; null when there is none.
t_dictionary* dictobj_findregistered_retain(t_symbol* name);
/// Gives back one findregistered_retain.
t_max_err dictobj_release(t_dictionary* d);
/// The name of a registered dictionary, or null.
t_symbol* dictobj_namefromptr(t_dictionary* d);

MAX_API_END
