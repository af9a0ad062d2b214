#include "platform/VelmoDspFileSystem.h"

#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <wchar.h>

#include <memory>

#include "platform/VelmoDspPathSyntax.h"
#include "platform/VelmoDspTransfer.h"
#include "platform/windows/VelmoDspWideText.h"

namespace velmodsp::FileSystem {
namespace {

bool GetStatus(const String& path, struct _stat64& status) { return _wstat64(ToWide(path).c_str(), &status) == 0; }

/// Bytes as they are, and no inheritance by child processes.
int Open(const String& path, int flags) {
    return _wopen(ToWide(path).c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
}

}  // namespace

bool Exists(const String& path) { return _waccess(ToWide(path).c_str(), 0) == 0; }

bool IsDirectory(const String& path) {
    struct _stat64 status;
    return GetStatus(path, status) && (status.st_mode & _S_IFMT) == _S_IFDIR;
}

std::optional<std::int64_t> GetSize(const String& path) {
    struct _stat64 status;
    if (!GetStatus(path, status)) return std::nullopt;
    return status.st_size;
}

bool MakeDirectory(const String& path) { return _wmkdir(ToWide(path).c_str()) == 0 || IsDirectory(path); }

bool RemoveEmptyDirectory(const String& path) { return _wrmdir(ToWide(path).c_str()) == 0; }

bool RemoveFile(const String& path) { return _wremove(ToWide(path).c_str()) == 0; }

String GetWorkingDirectory() {
    const std::unique_ptr<wchar_t, decltype(&free)> path(_wgetcwd(nullptr, 0), &free);
    return path == nullptr ? String() : WithForwardSlashes(FromWide(path.get()));
}

int OpenForReading(const String& path) { return Open(path, _O_RDONLY); }

int OpenExistingForWriting(const String& path) { return Open(path, _O_RDWR); }

int CreateForWriting(const String& path) { return Open(path, _O_RDWR | _O_CREAT); }

void Close(int descriptor) { _close(descriptor); }

std::int64_t SeekTo(int descriptor, std::int64_t position) { return _lseeki64(descriptor, position, SEEK_SET); }

std::int64_t GetOffset(int descriptor) { return _lseeki64(descriptor, 0, SEEK_CUR); }

bool SetSize(int descriptor, std::int64_t size) { return _chsize_s(descriptor, size) == 0; }

std::int64_t Read(int descriptor, void* buffer, std::size_t length) {
    return TransferInParts(length, [&](std::size_t offset, std::size_t count) {
        return _read(descriptor, static_cast<char*>(buffer) + offset, static_cast<unsigned int>(count));
    });
}

std::int64_t Write(int descriptor, const void* bytes, std::size_t length) {
    return TransferInParts(length, [&](std::size_t offset, std::size_t count) {
        return _write(descriptor, static_cast<const char*>(bytes) + offset, static_cast<unsigned int>(count));
    });
}

}  // namespace velmodsp::FileSystem
