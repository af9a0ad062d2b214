#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/FileBytes.h"

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

inline Bytes WavFormat(unsigned int tag, unsigned int channels, unsigned int rate, unsigned int bits) {
    return RiffChunk("fmt ", Le16(tag) + Le16(channels) + Le32(rate) + Le32(rate * channels * bits / 8) +
                                 Le16(channels * bits / 8) + Le16(bits));
}

/// The last 14 bytes of the identifier that tells an extensible format; its first two are the tag.
const Bytes SubFormatTail = {0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};

/// A chunk with its id and big-endian size.
inline Bytes AiffChunk(const std::string& id, const Bytes& content) {
    return Text(id) + Be32(content.size()) + content;
}

/// A whole file of these chunks.
inline Bytes Riff(const Bytes& chunks) { return Text("RIFF") + Le32(4 + chunks.size()) + Text("WAVE") + chunks; }

inline Bytes Form(const std::string& type, const Bytes& chunks) {
    return Text("FORM") + Be32(4 + chunks.size()) + Text(type) + chunks;
}

/// 44100 Hz as an 80-bit number.
const Bytes Rate44100 = {0x40, 0x0E, 0xAC, 0x44, 0, 0, 0, 0, 0, 0};

/// @param compression four characters of AIFF-C, or "" for plain AIFF
inline Bytes AiffCommon(unsigned int channels, unsigned int frames, unsigned int bits,
                        const std::string& compression = "", const Bytes& rate = Rate44100) {
    return AiffChunk("COMM", Be16(channels) + Be32(frames) + Be16(bits) + rate + Text(compression));
}

inline Bytes AiffSound(const Bytes& data) { return AiffChunk("SSND", Be32(0) + Be32(0) + data); }

inline void WriteBytes(const std::string& path, const Bytes& bytes) {
    ::WriteBytes(path, std::string(bytes.begin(), bytes.end()));
}

inline Bytes ReadBytes(const std::string& path) { return Text(::ReadBytes(path)); }

}  // namespace velmodsp
