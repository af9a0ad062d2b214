/// From the host's way of naming files to the system's. Main thread.
#pragma once

#include <fstream>
#include <string>

namespace velmomax {

/// The file-system path of a host path. A path that is absolute on this system is kept; any other begins with the name
/// of a volume and a colon, and becomes a path below "/Volumes/". A text without a colon is taken for the volume and
/// for the path on it. The host's classic encoding, Mac OS Roman, becomes UTF-8.
std::string TranslateAbsolutePath(const std::string& path);

/// Asks the user where to save a file, proposing "file.json".
/// @return the file's path as the system takes it, in UTF-8; empty when the user cancelled
std::string OpenSaveAsDialogForJSONFile();

/// Opens a text file for writing, in the place of one that is there.
/// @param path as the system takes it, in UTF-8
/// @return a stream, which is not good when the file could not be opened
std::ofstream OpenTextFile(const std::string& path);

}  // namespace velmomax
