#ifndef _WIN32

#include <dlfcn.h>
#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

#include <system_error>
#include <vector>

#include "box/DynamicLibrary.h"

namespace velmohost {

namespace fs = std::filesystem;

DynamicLibrary DynamicLibrary::Load(const fs::path& path, std::string& error) {
    DynamicLibrary library;
    library.handle = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (library.handle == nullptr) {
        const char* const reason = dlerror();
        error = reason != nullptr ? reason : "unknown reason";
    }
    return library;
}

void* DynamicLibrary::FindFunction(const char* name) const { return dlsym(handle, name); }

#ifdef __APPLE__

fs::path GetProgramFolder() {
    uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size);
    std::vector<char> path(size + 1);
    if (_NSGetExecutablePath(path.data(), &size) != 0) return {};
    std::error_code error;
    return fs::canonical(path.data(), error).parent_path();
}

fs::path GetPluginBinary(const fs::path& pluginFile) {
    return fs::is_directory(pluginFile) ? pluginFile / "Contents" / "MacOS" / pluginFile.stem() : pluginFile;
}

#else

fs::path GetProgramFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

fs::path GetPluginBinary(const fs::path& pluginFile) { return pluginFile; }

#endif

}  // namespace velmohost

#endif
