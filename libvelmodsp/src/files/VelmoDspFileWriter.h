#pragma once

#include <cstddef>
#include <cstdint>

#include "files/VelmoDspFile.h"

namespace velmodsp {

/// Unbuffered stream of bytes into a file, with typed writes.
///
///     File file("~/sounds/take.wav");
///     file.OverwriteIfNeeded(true);
///     FileWriter writer(file);
///     bool written = writer.WriteIntBigEndian(0x52494646) && writer.WriteInt(36);
///
/// Each write is one system call and tells whether all its bytes were written. Integers are little-endian unless the
/// name says otherwise. Positions are in bytes. A file that was there before is written over from its start and keeps
/// its tail. The destructor closes the file. One thread at a time; never the audio thread.
class FileWriter {
public:
    /// Makes the file's folder if needed. When the file cannot be opened (which is logged), every write returns false.
    /// @throws Exception when the folder cannot be made
    explicit FileWriter(const File& file);
    ~FileWriter();
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;

    const String& GetFileName() const { return fileName; }
    /// -1 after a failed `SetPosition`.
    std::int64_t GetPosition() const { return position; }
    /// Positions beyond the end are allowed; a write there fills the gap with zeros.
    bool SetPosition(std::uint64_t newPosition);
    /// Cuts the file off at the position.
    bool Truncate();

    bool Write(const void* bytes, std::size_t length);
    /// Stops at the first byte that cannot be written.
    bool WriteRepeatedByte(unsigned char value, std::size_t count);
    bool WriteByte(char value);
    bool WriteShort(short value);
    bool WriteShortBigEndian(short value);
    bool WriteInt(int value);
    bool WriteIntBigEndian(int value);
    bool WriteInt64(long long value);
    bool WriteDouble(double value);

private:
    template <typename Value>
    bool WriteValue(Value value, bool bigEndian);

    String fileName;
    std::int64_t position = 0;
    int handle = 0;  // 0: none
};

}  // namespace velmodsp
