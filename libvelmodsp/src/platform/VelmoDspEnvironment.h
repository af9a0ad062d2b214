#pragma once

#include <optional>

#include "text/VelmoDspString.h"

namespace velmodsp {

/// The value of an environment variable, in UTF-8 where the system wants characters; nothing when it is not set.
/// Main thread, or any thread as long as nobody changes the environment.
std::optional<String> EnvironmentVariable(const char* name);

}  // namespace velmodsp
