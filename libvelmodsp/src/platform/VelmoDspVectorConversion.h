#pragma once

#if !defined(__APPLE__)
#include "dsp/VelmoDspSampleKernels.h"
#endif

namespace velmodsp {

/// Conversion of sample vectors between the host's 64-bit and the library's 32-bit floating point, by the routines of
/// the platform where it has its own (Accelerate on macOS), else by `SampleKernels`. NaN stays NaN and infinity stays
/// infinity in both directions.
///
/// Any thread; real-time safe: one pass, no allocation, no lock, no exception. Source and destination must not overlap.
class VectorConversion {
public:
    /// Narrows `in[0]` to `in[n - 1]` into `out`, rounding to nearest; a magnitude beyond the 32-bit range becomes an
    /// infinity of its sign.
    static void DoubleToFloat(float* out, const double* in, unsigned long n) noexcept;

    /// Widens `in[0]` to `in[n - 1]` into `out`, exactly.
    static void FloatToDouble(double* out, const float* in, unsigned long n) noexcept;
};

#if !defined(__APPLE__)

// In the header, because a call more for every channel shows in short blocks.
inline void VectorConversion::DoubleToFloat(float* out, const double* in, unsigned long n) noexcept {
    SampleKernels::Active().narrow(out, in, n);
}

inline void VectorConversion::FloatToDouble(double* out, const float* in, unsigned long n) noexcept {
    SampleKernels::Active().widen(out, in, n);
}

#endif

}  // namespace velmodsp
