#pragma once

/// Refuses compilers set up so that the library could not do its work. Included by every header that handles samples.
///
/// Under fast-math or finite-math options the compiler may assume that no value is ever NaN or infinite, and then
/// removes the very tests that this library exists for.

#if defined(__FAST_MATH__) || (defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__)
#error \
    "velmodsp must not be compiled with -ffast-math or -ffinite-math-only: its NaN and infinity tests would be removed"
#endif
