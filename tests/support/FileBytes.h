#pragma once

#include <fstream>
#include <iterator>
#include <string>

/// Replaces the whole file by `bytes`.
inline void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// The whole file; "" when there is none.
inline std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
