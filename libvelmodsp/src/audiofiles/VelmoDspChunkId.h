#pragma once

#include <array>
#include <cstring>
#include <limits>

#include "files/VelmoDspFileReader.h"

namespace velmodsp {

/// The four characters that name a chunk of a RIFF or AIFF file.
struct ChunkId {
    std::array<char, 4> characters = {};

    /// @param id four characters, zero-terminated
    bool operator==(const char* id) const { return std::memcmp(characters.data(), id, characters.size()) == 0; }
};

/// The next four bytes; zeros stand for those that the file lacks.
inline ChunkId ReadChunkId(FileReader& input) {
    ChunkId id;
    input.Read(id.characters.data(), id.characters.size());
    return id;
}

/// Sizes in headers may be anything: sums of file positions stop at the largest number instead of wrapping.
inline unsigned long long AddSaturated(unsigned long long a, unsigned long long b) {
    return a > std::numeric_limits<unsigned long long>::max() - b ? std::numeric_limits<unsigned long long>::max()
                                                                  : a + b;
}

inline unsigned long long Position(const FileReader& input) {
    return static_cast<unsigned long long>(input.GetPosition());
}

/// @return false when no file can have that position
inline bool GoTo(FileReader& input, unsigned long long position) {
    if (position > static_cast<unsigned long long>(std::numeric_limits<long long>::max())) return false;
    return input.SetPosition(static_cast<long long>(position));
}

}  // namespace velmodsp
