#pragma once

#include <optional>

#include "text/VelmoDspString.h"

namespace velmodsp {

/// Home directory of the user of that name; nothing when there is no such user. "/" is the separator. Any thread.
std::optional<String> HomeDirectoryOfUser(const String& userName);

/// Home directory of the user who runs this process, as the system knows it, whatever the environment says; nothing
/// when the system knows none. "/" is the separator. Any thread.
std::optional<String> HomeDirectoryOfCurrentUser();

/// Whether the system sets no variable "HOME", so that the directory must be asked for.
bool SystemHasNoHomeVariable();

}  // namespace velmodsp
