#pragma once

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#endif
#endif

namespace velmotest {

/// Keeps the leak checker quiet about what is allocated while it lives, for code that leaves memory behind on purpose.
#ifdef SANITIZER_LSAN_INTERFACE_H
using DeliberateLeak = __lsan::ScopedDisabler;
#else
struct [[maybe_unused]] DeliberateLeak {};
#endif

}  // namespace velmotest
