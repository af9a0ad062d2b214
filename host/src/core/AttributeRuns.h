#pragma once

#include <vector>

#include "ext.h"

namespace velmohost {

/// "@name" and the atoms up to the next such word.
struct AttributeRun {
    t_symbol* name;  // without the "@"
    long count;
    t_atom* values;  // within the atoms that were searched
};

/// Index of the first "@name"; `ac` when there is none.
long FindFirstRun(long ac, const t_atom* av);

/// All runs, in their order.
std::vector<AttributeRun> FindRuns(long ac, t_atom* av);

}  // namespace velmohost
