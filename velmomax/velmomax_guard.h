/// The boundary between the suite's code, which throws, and the host, which must never see an exception.
#pragma once

#include <new>
#include <utility>

#include "utils/VelmoDspException.h"

#include "velmomax_api.h"

namespace velmomax {

/// Runs `body` and turns whatever it throws into a row of the Max window in the name of `x`, which may be null.
/// Any thread; real-time safe as long as `body` is and does not throw.
/// @return true when `body` ended without an exception
template <typename Body>
bool Guarded(void* x, Body&& body) noexcept {
    auto* object = static_cast<t_object*>(x);
    try {
        std::forward<Body>(body)();
        return true;
    } catch (const velmodsp::Exception& e) {
        object_bug(object, "exception : %s", e.what());
    } catch (const std::bad_alloc& e) {
        object_bug(object, "out of memory : %s", e.what());
    } catch (...) {
        object_bug(object, "unknown exception");
    }
    return false;
}

/// Turns the host's error code for a lack of memory into the exception for it, so that what is being done is given up
/// as a whole. Other codes are the caller's.
inline void ThrowIfOutOfMemory(t_max_err error) {
    if (error == MAX_ERR_OUT_OF_MEM) throw std::bad_alloc();
}

}  // namespace velmomax
