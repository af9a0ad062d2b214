#pragma once

#include <filesystem>
#include <random>
#include <string>

#include "support/Utf8Path.h"

/// A new, empty folder for one test; it goes away with everything in it.
class TempFolder {
public:
    TempFolder() {
        std::random_device random;
        do {
            path = std::filesystem::temp_directory_path() / ("velmo-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path));
        path = std::filesystem::canonical(path);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& Path() const { return path; }
    /// Absolute path of something in the folder, in UTF-8 and with "/" as separator.
    std::string operator/(const std::string& name) const { return Utf8Text(path / Utf8Path(name)); }

private:
    std::filesystem::path path;
};
