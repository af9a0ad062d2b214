#pragma once

#include <string>
#include <vector>

#include "commands/ObjectDescription.h"

namespace velmohost {

/// The words, in alphabetical order, that the last word of a line may be meant to become. The first word is a message
/// to the object, an attribute to set or, behind "get", to read, or one of the prompt's own; a later one depends on the
/// first: a choice of an attribute, or the name of an attribute for a message that takes arguments.
std::vector<std::string> CompleteLine(const ObjectDescription& object, const std::string& text);

}  // namespace velmohost
