#include "platform/VelmoDspHomeDirectory.h"

#include "platform/VelmoDspEnvironment.h"
#include "platform/VelmoDspFileSystem.h"
#include "platform/VelmoDspPathSyntax.h"

namespace velmodsp {

std::optional<String> HomeDirectoryOfCurrentUser() {
    const std::optional<String> profile = EnvironmentVariable("USERPROFILE");
    if (!profile || profile->IsEmpty()) return std::nullopt;
    return WithForwardSlashes(*profile);
}

/// The profile folders of all users lie side by side.
std::optional<String> HomeDirectoryOfUser(const String& userName) {
    const std::optional<String> own = HomeDirectoryOfCurrentUser();
    if (!own) return std::nullopt;
    const String directory = own->UpToLastOccurrenceOf("/", true, false) + userName;
    if (!FileSystem::IsDirectory(directory)) return std::nullopt;
    return directory;
}

bool SystemHasNoHomeVariable() { return true; }

}  // namespace velmodsp
