#include "batch/SoundFileList.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>

#include "core/PathText.h"

namespace velmohost {
namespace {

namespace fs = std::filesystem;

/// Whether the file's name is that of a container in which floats are kept; others cannot hold a bad sample.
bool HasSoundExtension(const fs::path& path) {
    constexpr std::array<std::string_view, 7> extensions{".wav", ".bwf", ".rf64", ".aif", ".aiff", ".aifc", ".caf"};
    std::string extension = TextFromPath(path.extension());
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

std::vector<ListedFile> WalkFolder(const fs::path& folder) {
    std::vector<ListedFile> files;
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
        if (!entry.is_regular_file() || !HasSoundExtension(entry.path())) continue;
        files.push_back({TextFromPath(entry.path()), TextFromPath(entry.path().lexically_relative(folder))});
    }
    std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return files;
}

fs::path Identity(const fs::path& path) {
    std::error_code error;
    const fs::path canonical = fs::weakly_canonical(path, error);
    return error ? path : canonical;
}

}  // namespace

std::vector<ListedFile> ListSoundFiles(const std::vector<std::string>& arguments, bool recursive) {
    std::vector<ListedFile> files;
    std::set<fs::path> known;
    const auto add = [&](const ListedFile& file) {
        if (known.insert(Identity(SystemPath(file.path))).second) files.push_back(file);
    };
    for (const std::string& argument : arguments) {
        const fs::path path = SystemPath(argument);
        std::error_code error;
        if (recursive && fs::is_directory(path, error)) {
            for (const ListedFile& file : WalkFolder(path)) add(file);
        } else {
            add({argument, TextFromPath(path.filename())});
        }
    }
    return files;
}

}  // namespace velmohost
