#include "sound/PendingFile.h"

#include <exception>
#include <system_error>

#include "core/PathText.h"
#include "sound/SoundError.h"
#include "sound/SoundPath.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

/// Follows links, so that the file behind one is replaced rather than the link.
std::string ResolveLinks(const std::string& path) {
    std::error_code error;
    const fs::path resolved = fs::weakly_canonical(SystemPath(path), error);
    return error ? path : TextFromPath(resolved);
}

void CheckFinalPath(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(SystemPath(path), error);
    if (fs::is_directory(status)) throw CannotWrite(path, "it is a folder");
    if (fs::exists(status) && !fs::is_regular_file(status)) throw CannotWrite(path, "it is not a plain file");
}

/// "out.wav" gives "out.part.wav".
std::string FindTemporaryPath(const fs::path& path) {
    std::error_code error;
    fs::path candidate;
    for (unsigned number = 1; number == 1 || fs::exists(fs::symlink_status(candidate, error)); ++number) {
        const std::string mark = number == 1 ? ".part" : ".part" + std::to_string(number);
        candidate = path.parent_path() / path.stem();
        candidate += SystemPath(mark);
        candidate += path.extension();
    }
    return TextFromPath(candidate);
}

}  // namespace

PendingFile::PendingFile(const std::string& finalPath)
    : path(ResolveLinks(finalPath)),
      temporaryPath(FindTemporaryPath(SystemPath(path))),
      temporaryFile(SystemPath(temporaryPath)) {
    CheckFinalPath(path);
}

PendingFile::~PendingFile() {
    if (isFinished) return;
    std::error_code error;
    fs::remove(temporaryFile, error);
}

void PendingFile::CheckRoom(std::uintmax_t numBytes) const {
    std::error_code error;
    const fs::space_info space = fs::space(fs::absolute(SystemPath(path)).parent_path(), error);
    if (error) return;  // the folder is yet to be made, or its system does not tell
    if (numBytes > space.available) {
        throw CannotWrite(path, "its " + std::to_string(numBytes) + " bytes do not fit on the disk");
    }
}

bool PendingFile::Finish() {
    isFinished = true;
    try {
        const bool replaces = fs::exists(SystemPath(path));
        LibraryFile(path).OverwriteIfNeeded(true);
        fs::rename(temporaryFile, SystemPath(path));
        return replaces;
    } catch (const std::exception& cause) {
        throw CannotWrite(path, std::string(cause.what()) + "; the new one is " + temporaryPath);
    }
}

}  // namespace velmohost
