#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// Replaces the whole file by `bytes`. It is never emptied first: a file system may take that as a reason to wait for
/// the disk when the file is closed.
inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::app);
    std::fstream(path, std::ios::binary | std::ios::in | std::ios::out) << bytes;
    std::filesystem::resize_file(path, bytes.size());
}

/// The whole file; "" when there is none.
inline std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
