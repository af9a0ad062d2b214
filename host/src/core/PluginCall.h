#pragma once

#include "ext.h"
#include "platform/VelmoDspFloatingPointControl.h"

// Clang's sanitizer compares function types at indirect calls. Callbacks of a C API are stored under one pointer type
// and called by the shape their class declares, so the check would only tell what is known.
#if defined(__clang__)
#define VELMOHOST_CALLS_BY_SHAPE __attribute__((no_sanitize("function")))
#else
#define VELMOHOST_CALLS_BY_SHAPE
#endif

namespace velmohost {

/// Calls a plug-in's function as `Result (Args...)`: every call into a plug-in goes through here. The caller's
/// floating-point settings survive it, so that a plug-in that flushes denormals does so for itself only.
/// Real-time safe as far as the function is.
template <class Result = void*, class... Args>
VELMOHOST_CALLS_BY_SHAPE Result CallPlugin(method function, Args... args) {
    const velmodsp::ScopedFloatingPointControl restoreAtEnd;
    return reinterpret_cast<Result (*)(Args...)>(function)(args...);
}

}  // namespace velmohost
