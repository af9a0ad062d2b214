#include "sound/SoundPath.h"

#include <filesystem>
#include <system_error>

#include "core/PathText.h"

namespace velmohost {

namespace fs = std::filesystem;

velmodsp::File LibraryFile(const std::string& path) {
    std::error_code error;
    const fs::path absolute = fs::absolute(SystemPath(path), error);
    return velmodsp::File(velmodsp::String(error ? path : TextFromPath(absolute)));
}

bool IsSameFile(const std::string& path, const std::string& otherPath) {
    std::error_code error;
    return fs::equivalent(SystemPath(path), SystemPath(otherPath), error) && !error;
}

}  // namespace velmohost
