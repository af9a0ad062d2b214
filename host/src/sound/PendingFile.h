#pragma once

#include <filesystem>
#include <string>

namespace velmohost {

/// A file that is written beside its final place and takes its name only when it is complete. One that is given up, by
/// an error too, leaves everything as it was.
///
///     PendingFile file("out.wav");
///     write(file.TemporaryPath());   // "out.part.wav"
///     file.Finish();
class PendingFile {
public:
    /// Chooses the names; makes no file yet. The file behind a link will be replaced rather than the link.
    /// @throws SoundError when the final place is a folder or anything else but a plain file
    explicit PendingFile(const std::string& path);
    /// Removes what was written, unless `Finish` was called.
    ~PendingFile();
    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    /// Where the file will be.
    const std::string& Path() const { return path; }

    /// Where to write meanwhile: a name of its own in the same folder, with the same extension.
    const std::string& TemporaryPath() const { return temporaryPath; }

    /// @throws SoundError when the disk has less than `numBytes` left: better told at once than after an hour
    void CheckRoom(std::uintmax_t numBytes) const;

    /// Gives the file its name; to be called when it is closed. Returns whether an older file of that name went to the
    /// trash.
    /// @throws SoundError when that fails; the text then says where the new file is
    bool Finish();

private:
    const std::string path, temporaryPath;
    const std::filesystem::path temporaryFile;  // in the system's form, so that removing it takes no memory
    bool isFinished = false;
};

}  // namespace velmohost
