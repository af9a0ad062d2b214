#include <bit>
#include <cstdint>

#include "dsp/VelmoDspSampleKernelSets.h"

// Kept apart from the loops of the other sets: inlined there, few samples would get the code for many.
#define VELMO_KERNEL [[gnu::noinline]]

namespace velmodsp {

namespace ScalarLoops {

namespace {

/// True unless the exponent's bits are all set, which marks NaN and infinity. A test on the bits holds whatever a
/// compiler assumes about NaN and costs the same for subnormals.
bool IsFinite(float x) {
    constexpr std::uint32_t ExponentBits = 0x7f800000u;
    return (std::bit_cast<std::uint32_t>(x) & ExponentBits) != ExponentBits;
}

VELMO_KERNEL void Narrow(float* out, const double* in, unsigned long n) noexcept {
    for (unsigned long i = 0; i < n; ++i) out[i] = static_cast<float>(in[i]);
}

VELMO_KERNEL void Widen(double* out, const float* in, unsigned long n) noexcept {
    for (unsigned long i = 0; i < n; ++i) out[i] = static_cast<double>(in[i]);
}

VELMO_KERNEL unsigned long PassFinite(float* out, const float* in, unsigned long n) noexcept {
    unsigned long i = 0;
    for (; i < n && IsFinite(in[i]); ++i) out[i] = in[i];
    return i;
}

VELMO_KERNEL void ReplaceByGivenValue(float* out, const float* in, unsigned long n, float value) noexcept {
    for (unsigned long i = 0; i < n; ++i) out[i] = IsFinite(in[i]) ? in[i] : value;
}

VELMO_KERNEL float ReplaceByLastValue(float* out, const float* in, unsigned long n, float last) noexcept {
    for (unsigned long i = 0; i < n; ++i) {
        if (IsFinite(in[i])) last = in[i];
        out[i] = last;
    }
    return last;
}

}  // namespace

}  // namespace ScalarLoops

constinit const SampleKernels ScalarKernels{"scalar",
                                            &ScalarLoops::Narrow,
                                            &ScalarLoops::Widen,
                                            &ScalarLoops::PassFinite,
                                            &ScalarLoops::ReplaceByGivenValue,
                                            &ScalarLoops::ReplaceByLastValue};

}  // namespace velmodsp

#undef VELMO_KERNEL
