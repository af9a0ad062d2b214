#include "platform/sndfile/VelmoDspMpegSearch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <map>

#include "platform/VelmoDspFileSystem.h"

namespace velmodsp {
namespace {

/// Where the sound may begin at the earliest: behind the tag that many files start with.
std::int64_t SkipId3Tag(int descriptor) {
    std::array<unsigned char, 10> tag{};
    FileSystem::SeekTo(descriptor, 0);
    FileSystem::Read(descriptor, tag.data(), tag.size());
    if (std::memcmp(tag.data(), "ID3", 3) != 0) return 0;
    std::int64_t size = 0;
    for (std::size_t i = 6; i < tag.size(); ++i) size = size << 7 | (tag[i] & 0x7F);  // seven bits of each byte count
    return size + static_cast<std::int64_t>(tag.size());
}

/// Eleven set bits, and no value that stands for nothing: of the version, the layer, the bit rate or the sample rate.
bool LooksLikeMpegHeader(const unsigned char* header) {
    return header[0] == 0xFF && (header[1] & 0xE0) == 0xE0 && (header[1] & 0x18) != 0x08 && (header[1] & 0x06) != 0 &&
           (header[2] & 0xF0) != 0xF0 && (header[2] & 0x0C) != 0x0C;
}

}  // namespace

std::vector<std::int64_t> FindMpegFrames(int descriptor) {
    constexpr std::size_t Range = 16384;  // bytes; eleven of the longest frames
    const std::int64_t start = SkipId3Tag(descriptor);
    std::vector<unsigned char> bytes(Range);
    if (FileSystem::SeekTo(descriptor, start) != start) return {};
    const std::int64_t count = FileSystem::Read(descriptor, bytes.data(), bytes.size());

    std::map<int, std::vector<std::int64_t>> offsets;
    for (std::int64_t i = 0; i + 2 < count; ++i) {
        const unsigned char* const header = bytes.data() + i;
        if (LooksLikeMpegHeader(header)) offsets[header[1] << 8 | (header[2] & 0x0C)].push_back(start + i);
    }
    const auto hasFewer = [](const auto& left, const auto& right) { return left.second.size() < right.second.size(); };
    const auto most = std::max_element(offsets.begin(), offsets.end(), hasFewer);
    return most != offsets.end() ? most->second : std::vector<std::int64_t>();
}

}  // namespace velmodsp
