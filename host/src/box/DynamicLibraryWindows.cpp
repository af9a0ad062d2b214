#ifdef _WIN32

#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <system_error>
#include <vector>

#include "box/DynamicLibrary.h"

namespace velmohost {

namespace fs = std::filesystem;

DynamicLibrary DynamicLibrary::Load(const fs::path& path, std::string& error) {
    DynamicLibrary library;
    // What it imports is beside this program, as the host's own libraries are, beside itself, or the system's.
    library.handle = LoadLibraryExW(fs::path(path).make_preferred().c_str(), nullptr,
                                    LOAD_LIBRARY_SEARCH_DEFAULT_DIRS | LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR);
    if (library.handle == nullptr) error = std::system_category().message(static_cast<int>(GetLastError()));
    return library;
}

void* DynamicLibrary::FindFunction(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

fs::path GetProgramFolder() {
    std::vector<wchar_t> path(32768);  // the longest path that the system knows
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return fs::path(path.data(), path.data() + length).parent_path();
}

fs::path GetPluginBinary(const fs::path& pluginFile) { return pluginFile; }

}  // namespace velmohost

#endif
