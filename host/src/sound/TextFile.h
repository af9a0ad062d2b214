#pragma once

#include <string>

namespace velmohost {

/// Writes a whole file of text. It takes its name when it is complete; an older file of that name goes to the trash.
/// @throws SoundError
void WriteTextFile(const std::string& path, const std::string& text);

}  // namespace velmohost
