// Windows calls this function of a plug-in when it loads it. Without one of its own, a plug-in linked with the SDK's
// audio library would take that library's function for its own.

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { return TRUE; }
