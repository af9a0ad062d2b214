#include "platform/VelmoDspHomeDirectory.h"

#include <cstdlib>

#include "platform/VelmoDspFileSystem.h"
#include "platform/VelmoDspPathSyntax.h"
#include "platform/windows/VelmoDspWideText.h"

namespace velmodsp {

std::optional<String> HomeDirectoryOfCurrentUser() {
    const wchar_t* profile = _wgetenv(L"USERPROFILE");
    if (profile == nullptr || *profile == L'\0') return std::nullopt;
    return WithForwardSlashes(FromWide(profile));
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
