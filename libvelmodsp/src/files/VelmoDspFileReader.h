#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "files/VelmoDspFile.h"

namespace velmodsp {

/// Unbuffered stream of a file's bytes, with typed reads.
///
///     FileReader reader(File("take.wav"));
///     unsigned int id = reader.ReadUnsignedIntBigEndian();
///     reader.SetPosition(44);
///     std::int64_t count = reader.Read(block, sizeof block);
///
/// Each read is one system call. Reads past the end or from a broken file give short counts and values of 0; only the
/// constructor throws. Integers are little-endian unless the name says otherwise. Positions and sizes are in bytes.
///
/// Copies share the file and the place in it that the system keeps: after a read through one of them, set the position
/// of the other before it reads. The last one closes the file. One thread at a time; never the audio thread.
class FileReader {
public:
    /// @throws Exception when the file does not exist or cannot be opened
    explicit FileReader(const File& file);

    /// As it was when the file was opened.
    std::int64_t GetSize() const { return size; }
    std::int64_t GetPosition() const { return position; }
    bool IsExhausted() const { return position >= size; }
    const String& GetFileName() const { return fileName; }

    /// Any position may be set; the next read finds out whether it exists. @return true
    bool SetPosition(std::int64_t newPosition);

    /// Bytes read; fewer than `length` at the end of the file, below 0 when the system reports an error.
    std::int64_t Read(void* buffer, std::size_t length);
    /// Moves on by `n` bytes, but not past the end, by reading them.
    void SkipNextBytes(std::size_t n);

    std::int8_t ReadByte();
    std::int16_t ReadShort();
    std::int16_t ReadShortBigEndian();
    std::int32_t ReadInt();
    std::int32_t ReadIntBigEndian();
    std::uint32_t ReadUnsignedInt();
    std::uint32_t ReadUnsignedIntBigEndian();
    std::int64_t ReadInt64();

private:
    bool SeekIfNeeded();
    template <typename Value>
    Value ReadValue(bool bigEndian);

    String fileName;
    std::int64_t size = 0;
    std::int64_t position = 0;
    int handle = 0;                               // 0: none
    bool needsSeek = true;                        // whether the descriptor stands elsewhere than `position`
    std::shared_ptr<const void> descriptorOwner;  // closes the descriptor with the last copy
};

}  // namespace velmodsp
