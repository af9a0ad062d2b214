#include "utils/VelmoDspDemangling.h"

#include <cxxabi.h>

#include <cstddef>

#include "utils/VelmoDspMemory.h"

namespace velmodsp {

String Demangling::Demangle(const String& name) {
    std::size_t bufferSize = 8192;
    char* buffer = static_cast<char*>(Malloc(static_cast<unsigned long>(bufferSize)));
    int status = 0;
    // The demangler may move the buffer to make room, and leaves it alone when it rejects the name.
    char* result = abi::__cxa_demangle(name.C_Str(), buffer, &bufferSize, &status);
    if (result == nullptr) {
        Free(buffer);
        return name;
    }
    String demangled(result);
    Free(result);
    return demangled;
}

}  // namespace velmodsp
