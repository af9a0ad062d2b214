#include "platform/VelmoDspTrash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "platform/VelmoDspFileSystem.h"
#include "platform/VelmoDspHomeDirectory.h"

// The home trash of the freedesktop.org Trash specification 1.0: the thing itself goes to Trash/files, and a file of
// the same name plus ".trashinfo" in Trash/info tells where it came from and when. Making that second file claims the
// name against everybody else who uses the trash.

namespace velmodsp {
namespace {

namespace fs = std::filesystem;

constexpr const char* infoSuffix = ".trashinfo";
constexpr std::size_t longestFileName = 255;  // bytes, on every usual file system
constexpr int mostNames = 100000;             // things of one name in the trash, far more than anybody keeps

/// $XDG_DATA_HOME, which must be absolute to count, else ~/.local/share.
std::optional<fs::path> DataHome() {
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    if (dataHome != nullptr && *dataHome == '/') return fs::path(dataHome);
    const char* home = std::getenv("HOME");
    if (home != nullptr && *home == '/') return fs::path(home) / ".local/share";
    const std::optional<String> knownHome = HomeDirectoryOfCurrentUser();
    if (!knownHome || !knownHome->StartsWith('/')) return std::nullopt;
    return fs::path(knownHome->Str()) / ".local/share";
}

/// Makes the folder, for its owner only, and those above it.
void MakePrivateDirectory(const fs::path& path) {
    fs::create_directories(path.parent_path());
    if (mkdir(path.c_str(), S_IRWXU) != 0 && !fs::is_directory(path)) {
        throw std::system_error(errno, std::generic_category());
    }
}

/// `text` cut to `length` bytes, or a little less where that would cut a UTF-8 character in two.
std::string CutToLength(const std::string& text, std::size_t length) {
    if (text.size() <= length) return text;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    return text.substr(0, length);
}

/// "take.wav", "take.2.wav", "take.3.wav" and so on, so short that the name of the second file fits as well.
std::string NumberedName(const fs::path& name, int number) {
    std::string ending;
    if (number > 1) ending.append(".").append(std::to_string(number));
    ending += name.extension().string();
    const std::size_t room = longestFileName - std::string(infoSuffix).size();
    if (ending.size() >= room) return CutToLength(name.string(), room - 8) + "." + std::to_string(number);
    return CutToLength(name.stem().string(), room - ending.size()) + ending;
}

/// Bytes other than RFC 2396's unreserved characters and "/" as "%" and two hexadecimal digits.
std::string PercentEncoded(const std::string& path) {
    static const std::string plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.!~*'()/";
    static const char* digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char character : path) {
        if (plain.find(character) != std::string::npos) {
            encoded += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            encoded.append({'%', digits[byte >> 4], digits[byte & 15]});
        }
    }
    return encoded;
}

std::string LocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[sizeof "2000-01-01T00:00:00" + 8];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &local)};
}

/// Whether something is there, be it a link that leads nowhere.
bool IsThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

/// A name in the trash, claimed by its file in info; gives the claim back when nothing came to lie under that name.
class TrashEntry {
public:
    TrashEntry(const fs::path& trash, const fs::path& name) {
        for (int number = 1; number <= mostNames && descriptor < 0; ++number) {
            const std::string candidate = NumberedName(name, number);
            infoPath = trash / "info" / (candidate + infoSuffix);
            filePath = trash / "files" / candidate;
            descriptor = open(infoPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
            if (descriptor < 0 && errno != EEXIST) break;
            if (descriptor >= 0 && IsThere(filePath)) GiveUp();  // a file that lost its info must not be written over
        }
        if (descriptor < 0) throw std::system_error(errno, std::generic_category());
    }
    ~TrashEntry() {
        if (!IsThere(filePath)) unlink(infoPath.c_str());
        close(descriptor);
    }
    TrashEntry(const TrashEntry&) = delete;
    TrashEntry& operator=(const TrashEntry&) = delete;

    void WriteInfo(const std::string& originalPath) {
        const std::string info =
            "[Trash Info]\nPath=" + PercentEncoded(originalPath) + "\nDeletionDate=" + LocalTime() + "\n";
        if (FileSystem::Write(descriptor, info.data(), info.size()) != static_cast<std::int64_t>(info.size())) {
            throw std::system_error(errno, std::generic_category());
        }
    }
    const fs::path& FilePath() const { return filePath; }

private:
    void GiveUp() {
        unlink(infoPath.c_str());
        close(descriptor);
        descriptor = -1;
        errno = EEXIST;
    }

    fs::path infoPath;
    fs::path filePath;
    int descriptor = -1;
};

void SyncToDisk(const fs::path& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) throw std::system_error(errno, std::generic_category());
    const int result = fsync(descriptor);
    close(descriptor);
    if (result != 0) throw std::system_error(errno, std::generic_category());
}

/// For a trash on another file system. The original goes only when its copy is complete and on the disk.
void CopyThenRemove(const fs::path& from, const fs::path& to) {
    try {
        fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
        if (fs::is_regular_file(fs::symlink_status(to))) {
            fs::last_write_time(to, fs::last_write_time(from));
            SyncToDisk(to);
        }
    } catch (...) {
        std::error_code ignored;
        fs::remove_all(to, ignored);
        throw;
    }
    std::error_code failure;
    fs::remove_all(from, failure);
    if (!failure) return;
    // A file that cannot be removed is still whole, so its copy is of no use; a folder may have lost a part of itself.
    if (!fs::is_directory(from)) fs::remove(to);
    throw std::system_error(failure);
}

void MoveAcross(const fs::path& from, const fs::path& to) {
    if (rename(from.c_str(), to.c_str()) == 0) return;
    if (errno != EXDEV) throw std::system_error(errno, std::generic_category());
    CopyThenRemove(from, to);
}

bool HasNameOfItsOwn(const fs::path& path) {
    return path.has_filename() && path.filename() != "." && path.filename() != "..";
}

}  // namespace

bool MoveToTrash(const String& path) {
    try {
        const fs::path original = path.Str();
        const std::optional<fs::path> dataHome = DataHome();
        if (!dataHome || !HasNameOfItsOwn(original) || !IsThere(original)) return false;
        const fs::path trash = *dataHome / "Trash";
        MakePrivateDirectory(trash);
        MakePrivateDirectory(trash / "files");
        MakePrivateDirectory(trash / "info");
        TrashEntry entry(trash, original.filename());
        entry.WriteInfo(original.string());
        MoveAcross(original, entry.FilePath());
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace velmodsp
