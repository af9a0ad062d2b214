#include "dsp/VelmoDspResamplingKernelSets.h"

#if defined(__x86_64__)

#include <emmintrin.h>

#define VELMO_KERNEL
#define VELMO_KERNEL_INLINE [[gnu::always_inline]] inline

namespace velmodsp {

namespace Sse2ResamplingLoops {

namespace {

using Vector = __m128;
constexpr unsigned int Width = 4;

VELMO_KERNEL_INLINE Vector Load(const float* in) { return _mm_loadu_ps(in); }
VELMO_KERNEL_INLINE Vector Broadcast(float x) { return _mm_set1_ps(x); }
VELMO_KERNEL_INLINE void Store(float* out, Vector x) { _mm_storeu_ps(out, x); }

VELMO_KERNEL_INLINE void Split(const float* in, Vector& evens, Vector& odds) {
    const Vector first = Load(in), second = Load(in + Width);
    evens = _mm_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0));
    odds = _mm_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1));
}

VELMO_KERNEL_INLINE void StorePairs(float* out, Vector evens, Vector odds) {
    Store(out, _mm_unpacklo_ps(evens, odds));
    Store(out + Width, _mm_unpackhi_ps(evens, odds));
}

VELMO_KERNEL_INLINE void Delay(Vector* delayed, Vector before, Vector newest) {
    const Vector border = _mm_shuffle_ps(before, newest, _MM_SHUFFLE(0, 0, 3, 3));
    delayed[0] = newest;
    delayed[1] = _mm_shuffle_ps(border, newest, _MM_SHUFFLE(2, 1, 2, 0));
    delayed[2] = _mm_shuffle_ps(before, newest, _MM_SHUFFLE(1, 0, 3, 2));
    delayed[3] = _mm_shuffle_ps(before, border, _MM_SHUFFLE(2, 0, 2, 1));
}

#include "dsp/VelmoDspResamplingLoops.inc"

}  // namespace

}  // namespace Sse2ResamplingLoops

constinit const ResamplingKernels Sse2Resampling{
    "SSE2",
    &Sse2ResamplingLoops::Decimate3,
    {&Sse2ResamplingLoops::Decimate<5>, &Sse2ResamplingLoops::Decimate<7>, &Sse2ResamplingLoops::Decimate<9>},
    &Sse2ResamplingLoops::Interpolate};

}  // namespace velmodsp

#undef VELMO_KERNEL
#undef VELMO_KERNEL_INLINE

#endif
