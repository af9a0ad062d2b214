#include "files/VelmoDspFileWriter.h"

#include <algorithm>
#include <array>
#include <bit>

#include "files/VelmoDspFileHandle.h"
#include "platform/VelmoDspFileSystem.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

static_assert(std::endian::native == std::endian::little, "files are written in the machine's byte order");
static_assert(sizeof(short) == 2 && sizeof(int) == 4 && sizeof(long long) == 8 && sizeof(double) == 8);

constexpr const char* fileWriterSource = "libvelmodsp/src/files/VelmoDspFileWriter";

/// 0 when the file cannot be opened; the exception that told so has logged the reason.
int OpenOrNone(const File& file) {
    try {
        return FileHandle::OpenFileForWriting(file);
    } catch (const Exception&) {
        return 0;
    }
}

}  // namespace

FileWriter::FileWriter(const File& file) : fileName(file.GetFullPathName()) {
    if (!file.CreateDirectoryFor()) {
        throw Exception("Couldnt create or write in folder : " + file.GetParentDirectory(), fileWriterSource, __LINE__,
                        true, false);
    }
    handle = OpenOrNone(file);
    if (handle != 0) position = FileSystem::GetOffset(handle);
}

FileWriter::~FileWriter() {
    if (handle != 0) FileSystem::Close(handle);
}

bool FileWriter::SetPosition(std::uint64_t newPosition) {
    if (position >= 0 && static_cast<std::uint64_t>(position) == newPosition) return true;
    position = handle == 0 ? -1 : FileSystem::SeekTo(handle, static_cast<std::int64_t>(newPosition));
    return position >= 0;
}

bool FileWriter::Truncate() { return handle != 0 && position >= 0 && FileSystem::SetSize(handle, position); }

bool FileWriter::Write(const void* bytes, std::size_t length) {
    const std::int64_t count = handle == 0 ? 0 : FileSystem::Write(handle, bytes, length);
    position += count;
    return count == static_cast<std::int64_t>(length);
}

bool FileWriter::WriteRepeatedByte(unsigned char value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (!Write(&value, 1)) return false;
    }
    return true;
}

template <typename Value>
bool FileWriter::WriteValue(Value value, bool bigEndian) {
    auto bytes = std::bit_cast<std::array<unsigned char, sizeof(Value)>>(value);
    if (bigEndian) std::reverse(bytes.begin(), bytes.end());
    return Write(bytes.data(), bytes.size());
}

bool FileWriter::WriteByte(char value) { return WriteValue(value, false); }

bool FileWriter::WriteShort(short value) { return WriteValue(value, false); }

bool FileWriter::WriteShortBigEndian(short value) { return WriteValue(value, true); }

bool FileWriter::WriteInt(int value) { return WriteValue(value, false); }

bool FileWriter::WriteIntBigEndian(int value) { return WriteValue(value, true); }

bool FileWriter::WriteInt64(long long value) { return WriteValue(value, false); }

bool FileWriter::WriteDouble(double value) { return WriteValue(value, false); }

}  // namespace velmodsp
