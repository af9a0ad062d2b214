#pragma once

namespace velmodsp {

/// Gives the calling thread the classic "C" locale while it lives, so that `printf` writes "." as decimal separator
/// whatever locale the host has set for the process. Other threads are not affected.
class ScopedClassicLocale {
public:
    ScopedClassicLocale();
    ~ScopedClassicLocale();
    ScopedClassicLocale(const ScopedClassicLocale&) = delete;
    ScopedClassicLocale& operator=(const ScopedClassicLocale&) = delete;

private:
    void* previous;  // what the destructor restores; the system's own type
};

}  // namespace velmodsp
