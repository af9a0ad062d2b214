#pragma once

#include <string>

#include "commands/ObjectDescription.h"

namespace velmohost {

/// The description laid out for reading at 80 columns.
std::string FormatInfo(const ObjectDescription& description);

/// Its sections "Attributes" and "Messages" alone: what the object understands. Empty when it understands nothing.
std::string FormatVocabulary(const ObjectDescription& description);

/// A section's entry: a name and, in a column of its own, the text beside it. A line break in `text` stays one.
std::string FormatEntry(const std::string& name, const std::string& text);

/// The description as a JSON object, in UTF-8 and ending in a line break.
std::string FormatInfoAsJson(const ObjectDescription& description);

}  // namespace velmohost
