#include "platform/VelmoDspEnvironment.h"

#include <cstdlib>

namespace velmodsp {

std::optional<String> EnvironmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<String>(value);
}

}  // namespace velmodsp
