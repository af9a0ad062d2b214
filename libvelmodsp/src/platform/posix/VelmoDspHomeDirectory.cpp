#include "platform/VelmoDspHomeDirectory.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace velmodsp {
namespace {

/// `lookUp(entry, buffer, size, found)` is one of the calls that read the password database.
template <typename LookUp>
std::optional<String> HomeDirectoryInPasswordDatabase(const LookUp& lookUp) {
    constexpr std::size_t largestEntry = 1 << 20;
    for (std::size_t size = 1 << 10; size <= largestEntry; size *= 2) {
        std::vector<char> buffer(size);
        passwd entry{};
        passwd* found = nullptr;
        if (lookUp(&entry, buffer.data(), buffer.size(), &found) == ERANGE) continue;
        if (found == nullptr || found->pw_dir == nullptr) return std::nullopt;
        return String(found->pw_dir);
    }
    return std::nullopt;
}

}  // namespace

std::optional<String> HomeDirectoryOfUser(const String& userName) {
    return HomeDirectoryInPasswordDatabase([&](passwd* entry, char* buffer, std::size_t size, passwd** found) {
        return getpwnam_r(userName.C_Str(), entry, buffer, size, found);
    });
}

std::optional<String> HomeDirectoryOfCurrentUser() {
    return HomeDirectoryInPasswordDatabase([](passwd* entry, char* buffer, std::size_t size, passwd** found) {
        return getpwuid_r(getuid(), entry, buffer, size, found);
    });
}

bool SystemHasNoHomeVariable() { return false; }

}  // namespace velmodsp
