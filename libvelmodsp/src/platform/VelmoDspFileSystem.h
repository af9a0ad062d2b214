#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "text/VelmoDspString.h"

/// The system's file calls, with 64-bit positions and lengths everywhere. Paths are those of `File`: UTF-8 where the
/// system wants characters, with "/" as separator. Any thread; all of them may block.
namespace velmodsp::FileSystem {

/// Whether something is at `path`, be it a file, a folder or anything else.
bool Exists(const String& path);
bool IsDirectory(const String& path);
/// In bytes; nothing when the system does not tell.
std::optional<std::int64_t> GetSize(const String& path);

/// True when the folder is there afterwards. Its parent must exist.
bool MakeDirectory(const String& path);
/// Removes an empty folder.
bool RemoveEmptyDirectory(const String& path);
bool RemoveFile(const String& path);

/// "" when the process has none, for instance because it was deleted.
String GetWorkingDirectory();

/// Open a file as a stream of bytes. @return a descriptor, or -1
int OpenForReading(const String& path);
int OpenExistingForWriting(const String& path);
/// Creates the file if needed, readable by all and writable by its owner; does not cut off an existing one.
int CreateForWriting(const String& path);
void Close(int descriptor);

/// The new position from the start of the file, in bytes, or -1.
std::int64_t SeekTo(int descriptor, std::int64_t position);
std::int64_t GetOffset(int descriptor);
/// Cuts the file off after `size` bytes, or lengthens it with zeros.
bool SetSize(int descriptor, std::int64_t size);

/// One `read` or `write` of the system, begun again when a signal came before any byte was moved. Lengths beyond what
/// one call of the system can move are moved in as many calls as they need, up to the first one that falls short.
/// @return bytes moved, or -1 when the first call failed
std::int64_t Read(int descriptor, void* buffer, std::size_t length);
std::int64_t Write(int descriptor, const void* bytes, std::size_t length);

}  // namespace velmodsp::FileSystem
