#ifdef _WIN32

#include <windows.h>

#include <shellapi.h>

#include "support/RecycleBin.h"
#include "support/Utf8Path.h"

long long NumFilesInRecycleBin(const std::string& path) {
    SHQUERYRBINFO info{};
    info.cbSize = sizeof info;
    const std::filesystem::path drive = Utf8Path(path).root_path().make_preferred();
    return SHQueryRecycleBinW(drive.c_str(), &info) == S_OK ? info.i64NumItems : -1;
}

#endif
