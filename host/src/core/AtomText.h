#pragma once

#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

/// The atoms of a text as it is typed into a box. Blanks separate. A word that reads as an integer is a long (one
/// beyond 64 bits a float), one that reads as a decimal or exponent number is a float, any other is a symbol. Double
/// quotes keep blanks, and numbers, in one symbol; a backslash takes the next character as it is. Main thread.
std::vector<t_atom> ParseAtoms(const std::string& text);

/// The text of atoms, separated by single blanks, which `ParseAtoms` reads back: whole floats keep a decimal point, and
/// symbols that hold blanks or read as numbers are quoted. Objects show as "<" class name ">". Main thread.
/// @param flags of atom_gettext (e_max_atom_gettext_flags)
std::string AtomsToText(long ac, const t_atom* av, long flags = 0);

}  // namespace velmohost
