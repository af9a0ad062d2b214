#include "sound/SoundPath.h"

#include <filesystem>
#include <system_error>

namespace velmohost {

namespace fs = std::filesystem;

velmodsp::File LibraryFile(const std::string& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    return velmodsp::File(velmodsp::String((error ? fs::path(path) : absolute).generic_string().c_str()));
}

bool IsSameFile(const std::string& path, const std::string& otherPath) {
    std::error_code error;
    return fs::equivalent(path, otherPath, error) && !error;
}

}  // namespace velmohost
