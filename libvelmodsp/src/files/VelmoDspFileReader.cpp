#include "files/VelmoDspFileReader.h"

#include <algorithm>
#include <array>
#include <bit>

#include "files/VelmoDspFileHandle.h"
#include "platform/VelmoDspFileSystem.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

static_assert(std::endian::native == std::endian::little, "files are read in the machine's byte order");

constexpr const char* fileReaderSource = "libvelmodsp/src/files/VelmoDspFileReader";

/// A descriptor that is closed at the end.
struct Descriptor {
    ~Descriptor() {
        if (number != 0) FileSystem::Close(number);
    }
    int number = 0;
};

}  // namespace

FileReader::FileReader(const File& file) : fileName(file.GetFullPathName()) {
    if (!file.ExistsAsFile()) {
        throw Exception("File : " + fileName + " does not exist", fileReaderSource, __LINE__, true, false);
    }
    size = FileSystem::GetSize(fileName).value_or(0);
    const auto descriptor = std::make_shared<Descriptor>();  // before there is anything to close
    handle = descriptor->number = FileHandle::OpenFileForReading(file);
    descriptorOwner = descriptor;
    if (handle == 0) {
        throw Exception("Could not open file : " + fileName + " for reading", fileReaderSource, __LINE__, true, false);
    }
}

bool FileReader::SetPosition(std::int64_t newPosition) {
    if (newPosition != position) needsSeek = true;
    position = newPosition;
    return true;
}

bool FileReader::SeekIfNeeded() {
    if (!needsSeek) return true;
    if (handle == 0 || position < 0 || FileSystem::SeekTo(handle, position) != position) return false;
    needsSeek = false;
    return true;
}

std::int64_t FileReader::Read(void* buffer, std::size_t length) {
    if (!SeekIfNeeded()) return 0;
    const std::int64_t count = FileSystem::Read(handle, buffer, length);
    position += count;
    return count;
}

void FileReader::SkipNextBytes(std::size_t n) {
    std::array<char, 4096> skipped;
    while (n > 0) {
        const std::size_t length = std::min(n, skipped.size());
        if (Read(skipped.data(), length) != static_cast<std::int64_t>(length)) return;
        n -= length;
    }
}

template <typename Value>
Value FileReader::ReadValue(bool bigEndian) {
    std::array<unsigned char, sizeof(Value)> bytes{};
    if (Read(bytes.data(), bytes.size()) != static_cast<std::int64_t>(bytes.size())) return 0;
    if (bigEndian) std::reverse(bytes.begin(), bytes.end());
    return std::bit_cast<Value>(bytes);
}

std::int8_t FileReader::ReadByte() { return ReadValue<std::int8_t>(false); }

std::int16_t FileReader::ReadShort() { return ReadValue<std::int16_t>(false); }

std::int16_t FileReader::ReadShortBigEndian() { return ReadValue<std::int16_t>(true); }

std::int32_t FileReader::ReadInt() { return ReadValue<std::int32_t>(false); }

std::int32_t FileReader::ReadIntBigEndian() { return ReadValue<std::int32_t>(true); }

std::uint32_t FileReader::ReadUnsignedInt() { return ReadValue<std::uint32_t>(false); }

std::uint32_t FileReader::ReadUnsignedIntBigEndian() { return ReadValue<std::uint32_t>(true); }

std::int64_t FileReader::ReadInt64() { return ReadValue<std::int64_t>(false); }

}  // namespace velmodsp
