#pragma once

#include "text/VelmoDspString.h"

namespace velmodsp {

/// Moves a file or folder to the user's trash, from where it can be taken back. Nothing is ever deleted for good: when
/// the trash cannot take it, it stays where it is.
/// @param path absolute, with "/" as separator
/// @return whether it is in the trash now
bool MoveToTrash(const String& path);

}  // namespace velmodsp
