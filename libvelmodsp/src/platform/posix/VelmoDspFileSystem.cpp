#include "platform/VelmoDspFileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <vector>

#include "platform/VelmoDspTransfer.h"

namespace velmodsp::FileSystem {
namespace {

static_assert(sizeof(off_t) == 8, "files may be longer than 2 GiB");

constexpr mode_t newFileMode = 0644;
constexpr mode_t newDirectoryMode = 0777;

template <typename Call>
auto RepeatWhenInterrupted(const Call& call) {
    auto result = call();
    while (result == -1 && errno == EINTR) result = call();
    return result;
}

/// Never one of the three standard streams' descriptors, even when the process was started without them: what is
/// printed there must not end up in a sound file, and 0 stands for "none".
int AboveStandardStreams(int descriptor) {
    if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(descriptor);
    return moved;
}

int Open(const String& path, int flags) {
    return AboveStandardStreams(
        RepeatWhenInterrupted([&] { return open(path.C_Str(), flags | O_CLOEXEC, newFileMode); }));
}

}  // namespace

bool Exists(const String& path) { return access(path.C_Str(), F_OK) == 0; }

bool IsDirectory(const String& path) {
    struct stat status;
    return stat(path.C_Str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::optional<std::int64_t> GetSize(const String& path) {
    struct stat status;
    if (stat(path.C_Str(), &status) != 0) return std::nullopt;
    return status.st_size;
}

bool MakeDirectory(const String& path) {
    // Somebody else may make the same folder at the same moment.
    return mkdir(path.C_Str(), newDirectoryMode) == 0 || IsDirectory(path);
}

bool RemoveEmptyDirectory(const String& path) { return rmdir(path.C_Str()) == 0; }

bool RemoveFile(const String& path) { return std::remove(path.C_Str()) == 0; }

String GetWorkingDirectory() {
    std::vector<char> buffer(1024);
    while (getcwd(buffer.data(), buffer.size()) == nullptr) {
        if (errno != ERANGE) return {};
        buffer.resize(buffer.size() * 2);
    }
    // Linux writes "(unreachable)" before a folder outside the process's root.
    return buffer[0] == '/' ? String(buffer.data()) : String();
}

int OpenForReading(const String& path) { return Open(path, O_RDONLY); }

int OpenExistingForWriting(const String& path) { return Open(path, O_RDWR); }

int CreateForWriting(const String& path) { return Open(path, O_RDWR | O_CREAT); }

void Close(int descriptor) { close(descriptor); }

std::int64_t SeekTo(int descriptor, std::int64_t position) { return lseek(descriptor, position, SEEK_SET); }

std::int64_t GetOffset(int descriptor) { return lseek(descriptor, 0, SEEK_CUR); }

bool SetSize(int descriptor, std::int64_t size) {
    return RepeatWhenInterrupted([&] { return ftruncate(descriptor, size); }) == 0;
}

std::int64_t Read(int descriptor, void* buffer, std::size_t length) {
    return TransferInParts(length, [&](std::size_t offset, std::size_t count) {
        return RepeatWhenInterrupted([&] { return read(descriptor, static_cast<char*>(buffer) + offset, count); });
    });
}

std::int64_t Write(int descriptor, const void* bytes, std::size_t length) {
    return TransferInParts(length, [&](std::size_t offset, std::size_t count) {
        return RepeatWhenInterrupted(
            [&] { return write(descriptor, static_cast<const char*>(bytes) + offset, count); });
    });
}

}  // namespace velmodsp::FileSystem
