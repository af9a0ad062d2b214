#pragma once

#include <cstdlib>
#include <optional>
#include <string>

/// Sets an environment variable while it lives; no value unsets it.
class ScopedVariable {
public:
    ScopedVariable(const char* variable, const std::optional<std::string>& value) : name(variable) {
        if (const char* before = std::getenv(name)) previous = before;
        Set(value);
    }
    ~ScopedVariable() { Set(previous); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    void Set(const std::optional<std::string>& value) const {
        value ? setenv(name, value->c_str(), 1) : unsetenv(name);
    }

    const char* name;
    std::optional<std::string> previous;
};
