#pragma once

namespace velmodsp {

/// Conversion of sample vectors between the host's 64-bit and the library's 32-bit floating point. NaN stays NaN and
/// infinity stays infinity in both directions.
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

}  // namespace velmodsp
