#include "platform/windows/VelmoDspMediaFoundation.h"

#include <optional>

namespace velmodsp {
namespace {

template <typename Function>
bool Find(HMODULE library, const char* name, Function& function) {
    function = library != nullptr ? reinterpret_cast<Function>(GetProcAddress(library, name)) : nullptr;
    return function != nullptr;
}

HMODULE LoadFromSystem(const wchar_t* name) { return LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32); }

/// The service stays loaded and started.
std::optional<MediaFoundation> Load() {
    const HMODULE platform = LoadFromSystem(L"mfplat.dll");
    const HMODULE readers = LoadFromSystem(L"mfreadwrite.dll");
    decltype(&MFStartup) startUp = nullptr;
    MediaFoundation functions{};
    if (!Find(platform, "MFStartup", startUp) || !Find(platform, "MFCreateFile", functions.createFile) ||
        !Find(platform, "MFCreateMediaType", functions.createMediaType) ||
        !Find(readers, "MFCreateSourceReaderFromByteStream", functions.createSourceReader))
        return std::nullopt;

    // Threads that have not chosen an apartment of COM are in the one for all threads from now on.
    CO_MTA_USAGE_COOKIE cookie = nullptr;
    if (FAILED(CoIncrementMTAUsage(&cookie)) || FAILED(startUp(MF_VERSION, MFSTARTUP_LITE))) return std::nullopt;
    return functions;
}

}  // namespace

const MediaFoundation* MediaFoundation::Get() {
    static const std::optional<MediaFoundation> service = Load();
    return service ? &*service : nullptr;
}

}  // namespace velmodsp
