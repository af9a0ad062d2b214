#include "platform/VelmoDspEnvironment.h"

#include <stdlib.h>

#include "platform/windows/VelmoDspWideText.h"

namespace velmodsp {

std::optional<String> EnvironmentVariable(const char* name) {
    const wchar_t* value = _wgetenv(ToWide(name).c_str());
    return value == nullptr ? std::nullopt : std::optional<String>(FromWide(value));
}

}  // namespace velmodsp
