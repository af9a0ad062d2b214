// MaxAPI.dll and MaxAudio.dll, from which a plug-in for Windows imports the host's functions. The functions themselves
// are in the program that has loaded the plug-in, as on other systems; what is here is one jump for each to the
// program's function of the same name, found when the library is loaded.

#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

/// The target of one jump, and the jump. Written in assembler, it fits functions of every shape.
#define FUNCTION(name)                                     \
    extern "C" FARPROC velmohost_##name;                   \
    FARPROC velmohost_##name;                              \
    __asm__(                                               \
        ".text\n"                                          \
        ".globl " #name                                    \
        "\n"                                               \
        ".def " #name "; .scl 2; .type 32; .endef\n" #name \
        ":\n"                                              \
        "jmp *velmohost_" #name "(%rip)\n");
#include VELMOHOST_FUNCTIONS
#undef FUNCTION

namespace {

struct Function {
    const char* name;
    FARPROC* target;
};

#define FUNCTION(name) {#name, &velmohost_##name},
const Function functions[] = {
#include VELMOHOST_FUNCTIONS
};
#undef FUNCTION

bool FindFunctions() {
    const HMODULE program = GetModuleHandleW(nullptr);
    for (const auto& [name, target] : functions) {
        *target = GetProcAddress(program, name);
        if (*target == nullptr) return false;
    }
    return true;
}

}  // namespace

/// Refuses to be loaded into a program that is no host.
///
/// MaxAudio.dll exports this function, as the host's own does: a plug-in built with the SDK's import library may have
/// no such function by itself and take this one, so it may be called once more, with the plug-in's handle.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    return reason != DLL_PROCESS_ATTACH || FindFunctions() ? TRUE : FALSE;
}
