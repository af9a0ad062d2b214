#include "dsp/VelmoDspSampleKernelSets.h"

#if defined(__x86_64__)

#include <emmintrin.h>

#include <bit>
#include <cstdint>

// Every 64-bit processor of the family has SSE2.
#define VELMO_KERNEL
#define VELMO_KERNEL_INLINE __attribute__((always_inline)) inline

namespace velmodsp {

namespace Sse2Loops {

namespace {

using Vector = __m128i;
constexpr unsigned long Width = 4;

VELMO_KERNEL_INLINE void NarrowVector(float* out, const double* in) {
    const __m128 low = _mm_cvtpd_ps(_mm_loadu_pd(in)), high = _mm_cvtpd_ps(_mm_loadu_pd(in + 2));
    _mm_storeu_ps(out, _mm_movelh_ps(low, high));
}

VELMO_KERNEL_INLINE void WidenVector(double* out, const float* in) {
    const __m128 x = _mm_loadu_ps(in);
    _mm_storeu_pd(out, _mm_cvtps_pd(x));
    _mm_storeu_pd(out + 2, _mm_cvtps_pd(_mm_movehl_ps(x, x)));
}

VELMO_KERNEL_INLINE Vector Load(const float* in) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(in)); }
VELMO_KERNEL_INLINE void Store(float* out, Vector x) { _mm_storeu_si128(reinterpret_cast<__m128i*>(out), x); }
VELMO_KERNEL_INLINE Vector Broadcast(float x) { return _mm_set1_epi32(std::bit_cast<std::int32_t>(x)); }
VELMO_KERNEL_INLINE float Lowest(Vector x) { return _mm_cvtss_f32(_mm_castsi128_ps(x)); }

VELMO_KERNEL_INLINE Vector Either(Vector a, Vector b) { return _mm_or_si128(a, b); }
VELMO_KERNEL_INLINE Vector Both(Vector a, Vector b) { return _mm_and_si128(a, b); }
VELMO_KERNEL_INLINE Vector Without(Vector a, Vector b) { return _mm_andnot_si128(b, a); }
VELMO_KERNEL_INLINE Vector Select(Vector mask, Vector a, Vector b) { return Either(Both(a, mask), Without(b, mask)); }
VELMO_KERNEL_INLINE bool AnyLane(Vector mask) { return _mm_movemask_epi8(mask) != 0; }

// Of the finite numbers without their signs, read as integers, 0x7f7fffff is the largest.
VELMO_KERNEL_INLINE Vector Magnitude(Vector x) { return Both(x, _mm_set1_epi32(0x7fffffff)); }
VELMO_KERNEL_INLINE Vector BadLanes(Vector x) { return _mm_cmpgt_epi32(Magnitude(x), _mm_set1_epi32(0x7f7fffff)); }
VELMO_KERNEL_INLINE Vector GoodLanes(Vector x) { return _mm_cmplt_epi32(Magnitude(x), _mm_set1_epi32(0x7f800000)); }

// The lowest lanes become zero.
VELMO_KERNEL_INLINE Vector RaiseBy1Lane(Vector x) { return _mm_slli_si128(x, 4); }
VELMO_KERNEL_INLINE Vector RaiseBy2Lanes(Vector x) { return _mm_slli_si128(x, 8); }
VELMO_KERNEL_INLINE Vector HighestToAll(Vector x) { return _mm_shuffle_epi32(x, _MM_SHUFFLE(3, 3, 3, 3)); }

// SSE2 permutes by constants only, so no table can send samples to where they belong. Instead all of them move up into
// bad lanes, by one lane, then by two.
VELMO_KERNEL_INLINE Vector FillForward(Vector x, Vector& before) {
    const Vector good = GoodLanes(x);
    const Vector goodBy1 = Either(good, RaiseBy1Lane(good));         // have a sample after the first step
    const Vector goodBy2 = Either(goodBy1, RaiseBy2Lanes(goodBy1));  // and after the second
    const Vector finite = Both(x, good);                             // zero where there is none yet
    const Vector filledBy1 = Either(finite, Without(RaiseBy1Lane(finite), good));
    const Vector filledBy2 = Either(filledBy1, Without(RaiseBy2Lanes(filledBy1), goodBy1));
    const Vector result = Either(filledBy2, Without(before, goodBy2));
    // From here on, only the last two operations wait for the vector before.
    before = Either(HighestToAll(filledBy2), Without(before, HighestToAll(goodBy2)));
    return result;
}

#include "dsp/VelmoDspSampleLoops.inc"

}  // namespace

}  // namespace Sse2Loops

constinit const SampleKernels Sse2Kernels{"SSE2",
                                          &Sse2Loops::Narrow,
                                          &Sse2Loops::Widen,
                                          &Sse2Loops::PassFinite,
                                          &Sse2Loops::ReplaceByGivenValue,
                                          &Sse2Loops::ReplaceByLastValue};

}  // namespace velmodsp

#undef VELMO_KERNEL
#undef VELMO_KERNEL_INLINE

#endif
