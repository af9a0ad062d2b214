#include "platform/VelmoDspTrash.h"

// Before the shell's header.
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <string>

#include "platform/windows/VelmoDspWideText.h"

namespace velmodsp {
namespace {

/// Only fixed drives have a recycle bin; elsewhere the shell would delete for good.
bool HasRecycleBin(const std::wstring& path) {
    wchar_t volume[MAX_PATH + 1];
    return GetVolumePathNameW(path.c_str(), volume, MAX_PATH) && GetDriveTypeW(volume) == DRIVE_FIXED;
}

}  // namespace

bool MoveToTrash(const String& path) {
    std::wstring from = ToWide(path);
    std::replace(from.begin(), from.end(), L'/', L'\\');
    if (from.empty() || from.back() == L'\\' || !HasRecycleBin(from)) return false;
    from += L'\0';  // the shell takes a list of paths, which ends with an empty one

    SHFILEOPSTRUCTW operation{};
    operation.wFunc = FO_DELETE;
    operation.pFrom = from.c_str();
    // What is too large for the bin is asked about, never deleted silently.
    operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_SILENT | FOF_NOERRORUI | FOF_WANTNUKEWARNING;
    return SHFileOperationW(&operation) == 0 && !operation.fAnyOperationsAborted;
}

}  // namespace velmodsp
