#pragma once

#include <filesystem>
#include <string>

namespace velmohost {

/// The system's path for a UTF-8 text. Everything that takes a path of text goes this way, since a path made of plain
/// text is read in an old code page on Windows.
std::filesystem::path SystemPath(const std::string& text);

/// The system's path for a path in the host's form: UTF-8 with "/" between its parts, on macOS also "VOLUME:/FOLDER".
std::filesystem::path PathFromText(const std::string& text);

/// The host's text for a path: UTF-8 with "/" between its parts.
std::string TextFromPath(const std::filesystem::path& path);

/// "VOLUME:/FOLDER/FILE" as the path through which macOS reaches the volume, "/Volumes/VOLUME/FOLDER/FILE"; any other
/// text stays as it is.
std::string TranslateVolume(const std::string& text);

}  // namespace velmohost
