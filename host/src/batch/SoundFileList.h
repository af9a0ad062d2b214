#pragma once

#include <string>
#include <vector>

namespace velmohost {

/// A sound file that a batch is to work on.
struct ListedFile {
    std::string path;      ///< as given, or below the folder that was given
    std::string relative;  ///< below the folder that was given; for a file that was given itself its bare name
};

/// The files that a batch's arguments mean: files stand for themselves, folders, when they are to be walked, for every
/// WAV, AIFF and CAF file in and below them, by name. Links to folders are not followed. A file that is reached twice
/// is listed once.
/// @throws std::exception when a folder cannot be read to its end
/// @param recursive whether folders are walked; otherwise they are listed as they are, and fail as files
std::vector<ListedFile> ListSoundFiles(const std::vector<std::string>& arguments, bool recursive);

}  // namespace velmohost
