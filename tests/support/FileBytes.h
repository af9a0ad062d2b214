#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/Utf8Path.h"

/// Replaces the whole file by `bytes`. It is never emptied first: a file system may take that as a reason to wait for
/// the disk when the file is closed.
inline void WriteBytes(const std::string& name, const std::string& bytes) {
    const std::filesystem::path path = Utf8Path(name);
    std::ofstream(path, std::ios::binary | std::ios::app).close();
    std::fstream(path, std::ios::binary | std::ios::in | std::ios::out) << bytes;
    std::filesystem::resize_file(path, bytes.size());
}

/// The whole file; "" when there is none.
inline std::string ReadBytes(const std::string& path) {
    std::ifstream file(Utf8Path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The whole text file, with "\n" at the end of its lines whatever the system puts there; "" when there is none.
inline std::string ReadText(const std::string& path) {
    std::ifstream file(Utf8Path(path));
    return {std::istreambuf_iterator<char>(file), {}};
}
