#include "files/VelmoDspFile.h"

#include <optional>

#include "platform/VelmoDspEnvironment.h"
#include "platform/VelmoDspFileSystem.h"
#include "platform/VelmoDspHomeDirectory.h"
#include "platform/VelmoDspPathSyntax.h"
#include "platform/VelmoDspTrash.h"
#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

constexpr const char* fileSource = "libvelmodsp/src/files/VelmoDspFile";

String Joined(const String& directory, const String& child) {
    return directory.EndsWith('/') ? directory + child : directory + "/" + child;
}

String ParentOf(const String& path) {
    const std::int64_t separator = path.IndexOfLastOccurence('/', false);
    if (separator < 0) return path;
    const unsigned long rootLength = PathRootLength(path);
    const auto length = static_cast<unsigned long>(separator);
    return path.SubString(0, length < rootLength ? rootLength : length);
}

String WithoutTrailingSeparators(String path) {
    while (path.EndsWith('/') && path.Length() > 1 && path.Length() > PathRootLength(path))
        path.RemoveLastCharacters(1);
    return path;
}

bool StartsWithUserName(const String& path) { return path.StartsWith('~') && path.Length() > 1 && path[1] != '/'; }

/// "~user/rest" as a path in that user's home directory; unchanged when there is no such user.
String ExpandUserName(const String& path) {
    const std::int64_t separator = path.IndexOfFirstOccurence("/", false);
    const unsigned long nameEnd = separator < 0 ? path.Length() : static_cast<unsigned long>(separator);
    const std::optional<String> home = HomeDirectoryOfUser(path.SubString(1, nameEnd));
    return home ? Joined(*home, path.SubString(nameEnd + 1)) : path;
}

/// `child` seen from the folder `path`, an absolute path or empty.
String ChildOf(String path, String child) {
    if (child.StartsWith('~') || PathRootLength(child) > 0) return File::parseAbsolutePath(child);
    while (child.StartsWith('.')) {
        const String next = child.SubString(1, 3);
        if (next.StartsWith('/')) {
            child.RemoveFirstCharacters(2);
        } else if (next == "./" || next == ".") {
            path = path.UpToLastOccurrenceOf("/", false, false);
            child.RemoveFirstCharacters(3);
        } else {
            break;
        }
    }
    return File::parseAbsolutePath(Joined(path, child));
}

/// The directory that a variable names. Nothing when it is not set, empty, or itself in terms of the home directory.
std::optional<String> HomeDirectoryFromVariable(const char* name) {
    const std::optional<String> value = EnvironmentVariable(name);
    if (!value) return std::nullopt;
    String path = *value;
    path.RemoveLeadingAndTrailingSpaces();
    if (path.IsEmpty() || (path.StartsWith('~') && !StartsWithUserName(path))) return std::nullopt;
    return File::parseAbsolutePath(path);
}

String NormalisedExtension(String extension) {
    if (extension.StartsWith('.')) extension.RemoveFirstCharacters(1);
    extension.MakeLowerCase();
    return extension;
}

/// Works on the path as it is, so that folders whose names begin or end with blanks are found.
bool CreateDirectoryAt(const String& path) {
    if (path.IsEmpty() || FileSystem::IsDirectory(path)) return true;
    const String parent = ParentOf(path);
    if (parent == path) throw Exception("Cannot create directory " + path, fileSource, __LINE__, true, false);
    return CreateDirectoryAt(parent) && FileSystem::MakeDirectory(WithoutTrailingSeparators(path));
}

}  // namespace

const String File::SeparatorString("/");

File::File(const String& path) : fullPath(parseAbsolutePath(path)) {}

String File::parseAbsolutePath(const String& path) {
    if (path.IsEmpty()) return {};
    String absolute = path;
    absolute.RemoveLeadingAndTrailingSpaces();
    absolute.Replace("\\ ", " ");
    absolute = WithForwardSlashes(absolute);
    if (StartsWithUserName(absolute)) {
        absolute = ExpandUserName(absolute);
    } else if (absolute.StartsWith('~')) {
        absolute = GetUserHomeDirectory() + absolute.SubString(1);
    } else if (PathRootLength(absolute) == 0) {
        const String workingDirectory = GetCurrentWorkingDirectory();
        if (!workingDirectory.IsEmpty()) return ChildOf(workingDirectory, absolute);
        // Left relative, it names nothing that exists; with a "/" before it, it might.
    }
    return WithoutTrailingSeparators(absolute);
}

String File::GetFileName() const {
    const std::int64_t separator = fullPath.IndexOfLastOccurence('/', false);
    return fullPath.SubString(static_cast<unsigned long>(separator + 1));
}

String File::GetFileExtension() const {
    const std::int64_t dot = fullPath.IndexOfLastOccurence('.', false);
    if (dot < 0 || dot < fullPath.IndexOfLastOccurence('/', false)) return {};
    return fullPath.SubString(static_cast<unsigned long>(dot));
}

String File::GetParentDirectory() const { return ParentOf(fullPath); }

String File::GetChildFile(const String& relative) const { return ChildOf(fullPath, WithForwardSlashes(relative)); }

bool File::HasFileExtension(const String& extensions) const {
    const String extension = GetFileExtension();
    if (extensions.IsEmpty()) return extension.IsEmpty();
    const String wanted = NormalisedExtension(extension);
    StringArray items;
    items.SplitString(extensions.C_Str(), " ");
    for (unsigned long i = 0; i < items.Size(); ++i) {
        if (NormalisedExtension(items[i]) == wanted) return true;
    }
    return false;
}

bool File::HasOneOfTheseExtensions(const StringArray& extensions) const {
    for (unsigned long i = 0; i < extensions.Size(); ++i) {
        if (HasFileExtension(extensions[i])) return true;
    }
    return false;
}

bool File::ExistsAsFile() const {
    return !fullPath.IsEmpty() && FileSystem::Exists(fullPath) && !FileSystem::IsDirectory(fullPath);
}

bool File::DeleteFile() const {
    if (fullPath.IsEmpty() || !FileSystem::Exists(fullPath)) return true;
    return FileSystem::IsDirectory(fullPath) ? FileSystem::RemoveEmptyDirectory(fullPath)
                                             : FileSystem::RemoveFile(fullPath);
}

bool File::CreateDirectory() const { return CreateDirectoryAt(fullPath); }

bool File::CreateDirectoryFor() const {
    if (fullPath.IsEmpty() || FileSystem::IsDirectory(fullPath)) return true;
    return CreateDirectoryAt(GetParentDirectory());
}

bool File::OverwriteIfNeeded(bool overwrite) const {
    if (!ExistsAsFile()) {
        if (!FileSystem::IsDirectory(fullPath)) return true;
        throw Exception(fullPath + " is a folder", fileSource, __LINE__, true, false);
    }
    if (!overwrite) throw Exception("File already exists : " + fullPath, fileSource, __LINE__, true, false);
    if (!macMoveToTrash()) throw Exception("Error deleting " + fullPath, fileSource, __LINE__, true, false);
    return true;
}

bool File::macMoveToTrash() const { return MoveToTrash(fullPath); }

String File::GetCurrentWorkingDirectory() {
    const String path = FileSystem::GetWorkingDirectory();
    return path.IsEmpty() ? path : parseAbsolutePath(path);
}

String File::GetUserHomeDirectory() {
    for (const char* variable : {"HOME", "home"}) {
        if (const std::optional<String> home = HomeDirectoryFromVariable(variable)) return *home;
    }
    if (SystemHasNoHomeVariable()) {
        if (const std::optional<String> home = HomeDirectoryOfCurrentUser()) return *home;
    }
    return GetCurrentWorkingDirectory();
}

}  // namespace velmodsp
