#include <algorithm>
#include <deque>
#include <filesystem>
#include <limits>
#include <string>

#include "core/OutOfMemory.h"
#include "core/PathText.h"
#include "ext.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

/// The host's numbers for folders: 0 is the working directory, every other folder gets the next number below.
class FolderNumbers {
public:
    FolderNumbers() { folders.push_back(fs::current_path()); }

    short NumberOf(const fs::path& folder) {
        const auto found = std::find(folders.begin(), folders.end(), folder);
        const auto index = found - folders.begin();
        if (index > std::numeric_limits<short>::max()) return 0;
        if (found == folders.end()) folders.push_back(folder);
        return static_cast<short>(-index);
    }

    /// Null for a number that was never given.
    const fs::path* Find(short number) const {
        const auto index = static_cast<std::size_t>(-static_cast<long>(number));
        return number <= 0 && index < folders.size() ? &folders[index] : nullptr;
    }

private:
    std::deque<fs::path> folders;
};

FolderNumbers& Folders() {
    static FolderNumbers& numbers = *new FolderNumbers;
    return numbers;
}

bool Fits(const std::string& text, std::size_t size) { return text.size() < size; }

short GiveText(const std::string& text, char* buffer, std::size_t size) {
    if (buffer == nullptr || !Fits(text, size)) return MAX_ERR_GENERIC;
    strncpy_zero(buffer, text.c_str(), static_cast<long>(size));
    return MAX_ERR_NONE;
}

short GiveFullPath(short number, const char* file, char* name, bool mustExist) try {
    const fs::path* const folder = Folders().Find(number);
    if (folder == nullptr || file == nullptr) return MAX_ERR_GENERIC;
    // An absolute file name stands for itself.
    const fs::path full = file[0] != '\0' ? *folder / PathFromText(file) : *folder;
    std::error_code error;
    if (mustExist && !fs::exists(full, error)) return MAX_ERR_GENERIC;
    return GiveText(TextFromPath(full), name, MAX_PATH_CHARS);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

fs::path Conform(const fs::path& path, long type) {
    const fs::path& base = *Folders().Find(0);
    switch (type) {
        case PATH_TYPE_ABSOLUTE:
        case PATH_TYPE_PATH:
        case PATH_TYPE_BOOT:
            return (base / path).lexically_normal();
        case PATH_TYPE_RELATIVE:
            return (base / path).lexically_normal().lexically_proximate(base);
        default:
            return path;
    }
}

std::string InStyle(std::string text, long style) {
#ifdef _WIN32
    const bool useBackslashes = style == PATH_STYLE_NATIVE || style == PATH_STYLE_NATIVE_WIN;
#else
    const bool useBackslashes = style == PATH_STYLE_NATIVE_WIN;
#endif
    if (useBackslashes) std::replace(text.begin(), text.end(), '/', '\\');
    return text;
}

}  // namespace
}  // namespace velmohost

using namespace velmohost;

extern "C" {

short path_getdefault(void) { return 0; }

short path_topotentialname(const short path, const char* file, char* name, short check) {
    return GiveFullPath(path, file, name, check != 0);
}

short path_topathname(const short path, const char* file, char* name) { return GiveFullPath(path, file, name, true); }

short path_frompathname(const char* name, short* path, char* filename) try {
    if (name == nullptr || name[0] == '\0' || path == nullptr || filename == nullptr) return MAX_ERR_GENERIC;
    const fs::path full = (*Folders().Find(0) / PathFromText(name)).lexically_normal();
    std::error_code error;
    if (!fs::is_directory(full.parent_path(), error)) return MAX_ERR_GENERIC;
    const short result = GiveText(TextFromPath(full.filename()), filename, MAX_FILENAME_CHARS);
    if (result == MAX_ERR_NONE) *path = Folders().NumberOf(full.parent_path());
    return result;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

short path_nameconform(const char* src, char* dst, long style, long type) try {
    if (src == nullptr) return MAX_ERR_GENERIC;
    std::string text = src;
#ifdef _WIN32
    std::replace(text.begin(), text.end(), '\\', '/');
#endif
    return GiveText(InStyle(TextFromPath(Conform(PathFromText(text), type)), style), dst, MAX_PATH_CHARS);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err path_toabsolutesystempath(const short path, const char* file, char* name) {
    char full[MAX_PATH_CHARS];
    const short result = GiveFullPath(path, file, full, false);
    return result == MAX_ERR_NONE ? path_nameconform(full, name, PATH_STYLE_NATIVE, PATH_TYPE_ABSOLUTE) : result;
}

}  // extern "C"
