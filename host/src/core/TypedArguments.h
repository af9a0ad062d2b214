#pragma once

#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

/// An argument in the form in which a function takes it: a word or pointer, or a double in a register of its own kind.
struct Argument {
    bool isFloat;
    t_ptr_int word;
    double number;
};

/// What became of atoms that were to be the arguments of a type list.
struct TypedArguments {
    std::vector<Argument> values;
    const char* problem = nullptr;  ///< "missing", "bad" or "extra"; null when all is well
};

/// Converts atoms by a type list (e_max_atomtypes, ended by 0): longs and floats become each other, an A_DEF… type
/// fills in for what is left out, any other mismatch is a problem. `values` is complete unless arguments are missing or
/// bad.
TypedArguments ConvertArguments(const char* types, long ac, const t_atom* av);

/// Whether a type list asks for the atoms as they come.
bool TakesAtoms(const char* types);

/// Calls `function(x, arguments…)` with the true kind of every argument.
void* CallWithArguments(method function, t_object* x, const std::vector<Argument>& arguments);

/// The same without an object: a constructor.
void* CallWithArguments(method function, const std::vector<Argument>& arguments);

}  // namespace velmohost
