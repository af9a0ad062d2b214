/// From the host's way of naming files to the system's. Main thread.
#pragma once

#include <filesystem>
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

/// A text file in the making, in the place of one that is there. One that is not finished is removed: half a file would
/// pass for a whole one.
///
///     NewTextFile file(path);
///     if (file.IsOpen()) file.Stream() << text;
///     const bool isWritten = file.Finish();
class NewTextFile {
public:
    /// @param path as the system takes it, in UTF-8
    explicit NewTextFile(const std::string& path);
    ~NewTextFile();
    NewTextFile(const NewTextFile&) = delete;
    NewTextFile& operator=(const NewTextFile&) = delete;

    bool IsOpen() const { return stream.is_open(); }
    std::ostream& Stream() { return stream; }

    /// Closes the file.
    /// @return false, and the file is gone, when it could not be opened or written as a whole, as on a full disk
    bool Finish();

private:
    void closeAndRemove() noexcept;

    std::filesystem::path file;
    std::ofstream stream;
};

}  // namespace velmomax
