#include "platform/sndfile/VelmoDspSndfileLibrary.h"

#include <dlfcn.h>

#include <optional>

namespace velmodsp {
namespace {

template <typename Function>
bool Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

/// The library stays loaded; its number has been 1 since 2004.
std::optional<SndfileLibrary> Load() {
    void* const library = dlopen("libsndfile.so.1", RTLD_NOW | RTLD_LOCAL);
    SndfileLibrary functions{};
    if (library == nullptr || !Find(library, "sf_open_fd", functions.openDescriptor) ||
        !Find(library, "sf_open_virtual", functions.openVirtual) || !Find(library, "sf_close", functions.close) ||
        !Find(library, "sf_command", functions.command) || !Find(library, "sf_seek", functions.seek) ||
        !Find(library, "sf_readf_int", functions.readInts) || !Find(library, "sf_readf_float", functions.readFloats))
        return std::nullopt;
    return functions;
}

}  // namespace

const SndfileLibrary* SndfileLibrary::Get() {
    static const std::optional<SndfileLibrary> library = Load();
    return library ? &*library : nullptr;
}

}  // namespace velmodsp
