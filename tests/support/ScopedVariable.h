#pragma once

#include <cstdlib>
#include <optional>
#include <string>

#include "support/Utf8Path.h"

/// Sets an environment variable, in UTF-8, while it lives; no value unsets it.
class ScopedVariable {
public:
    ScopedVariable(const char* variable, const std::optional<std::string>& value) : name(variable), previous(Get()) {
        Set(value);
    }
    ~ScopedVariable() { Set(previous); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
#ifdef _WIN32
    std::optional<std::string> Get() const {
        const wchar_t* value = _wgetenv(Utf8Path(name).c_str());
        return value ? std::optional(Utf8Text(value)) : std::nullopt;
    }
    void Set(const std::optional<std::string>& value) const {
        _wputenv_s(Utf8Path(name).c_str(), Utf8Path(value.value_or("")).c_str());  // an empty one is none
    }
#else
    std::optional<std::string> Get() const {
        const char* value = std::getenv(name.c_str());
        return value ? std::optional<std::string>(value) : std::nullopt;
    }
    void Set(const std::optional<std::string>& value) const {
        value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
    }
#endif

    const std::string name;
    const std::optional<std::string> previous;
};
