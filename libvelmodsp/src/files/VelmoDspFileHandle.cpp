#include "files/VelmoDspFileHandle.h"

#include <exception>

#include "platform/VelmoDspFileSystem.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

constexpr const char* fileHandleSource = "libvelmodsp/src/files/VelmoDspFileHandle";

/// The descriptor that `open` gives; everything that goes wrong leaves as an `Exception`.
template <typename Open>
int OpenGuarded(const File& file, const Open& open) {
    try {
        const int descriptor = open();
        if (descriptor >= 0) return descriptor;
        throw Exception("Couldnt open file " + file.GetFullPathName(), fileHandleSource, __LINE__, true, false);
    } catch (const Exception&) {
        throw;
    } catch (const std::exception& cause) {
        throw Exception(cause, fileHandleSource, __LINE__, true, false);
    } catch (...) {
        throw UnknownException(fileHandleSource, __LINE__, true, false);
    }
}

}  // namespace

int FileHandle::OpenFileForReading(const File& file) {
    return OpenGuarded(file, [&] { return FileSystem::OpenForReading(file.GetFullPathName()); });
}

int FileHandle::OpenFileForWriting(const File& file) {
    return OpenGuarded(file, [&] {
        const String& path = file.GetFullPathName();
        return file.ExistsAsFile() ? FileSystem::OpenExistingForWriting(path) : FileSystem::CreateForWriting(path);
    });
}

}  // namespace velmodsp
