#pragma once

#include <vector>

#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

/// Makes the object of a box: hands the box's atoms to the constructor, or, when the class takes a dictionary, one with
/// the default of every attribute that has one, overridden by the `@name value…` settings. The symbols "#P" and "#B"
/// lead to patcher and box while the constructor runs, and so does the object's obex for good. Main thread.
/// @param name the name in the box, which may be an alias of the class's own
/// @param box, patcher may be null
/// @returns null after an error row when the constructor gives none
t_object* CreateInstance(t_class* c, t_symbol* name, long ac, t_atom* av, t_object* box, t_object* patcher);

/// Lets "#P" and "#B" lead to a patcher and a box within a scope, then to what they led to before.
class ScopedBoxContext {
public:
    ScopedBoxContext(t_object* patcher, t_object* box);
    ~ScopedBoxContext();
    ScopedBoxContext(const ScopedBoxContext&) = delete;
    ScopedBoxContext& operator=(const ScopedBoxContext&) = delete;

private:
    t_object* const previousPatcher;
    t_object* const previousBox;
};

}  // namespace velmohost
