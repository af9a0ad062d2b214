#pragma once

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace velmodsp {

/// Files spelled as bytes: pieces that are joined with `+`.
using Bytes = std::vector<unsigned char>;

inline Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline Bytes Text(const std::string& text) { return {text.begin(), text.end()}; }

inline Bytes LittleEndian(std::uint64_t value, int size) {
    Bytes bytes;
    for (int i = 0; i < size; ++i) bytes.push_back(static_cast<unsigned char>(value >> 8 * i));
    return bytes;
}

inline Bytes Le16(std::uint64_t value) { return LittleEndian(value, 2); }
inline Bytes Le32(std::uint64_t value) { return LittleEndian(value, 4); }
inline Bytes Le64(std::uint64_t value) { return LittleEndian(value, 8); }

inline Bytes BigEndian(std::uint64_t value, int size) {
    const Bytes reversed = LittleEndian(value, size);
    return {reversed.rbegin(), reversed.rend()};
}

inline Bytes Be16(std::uint64_t value) { return BigEndian(value, 2); }
inline Bytes Be32(std::uint64_t value) { return BigEndian(value, 4); }

/// A chunk with its id and little-endian size, padded to an even length.
inline Bytes RiffChunk(const std::string& id, const Bytes& content) {
    return Text(id) + Le32(content.size()) + content + Bytes(content.size() % 2);
}

/// A chunk with its id and big-endian size.
inline Bytes AiffChunk(const std::string& id, const Bytes& content) {
    return Text(id) + Be32(content.size()) + content;
}

inline void WriteBytes(const std::string& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

inline Bytes ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace velmodsp
