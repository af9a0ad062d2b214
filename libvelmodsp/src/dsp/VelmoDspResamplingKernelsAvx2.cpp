#include "dsp/VelmoDspResamplingKernelSets.h"

#if defined(__x86_64__)

#include <immintrin.h>

// An attribute rather than a compiler option for this file: inline functions that other files share stay free of AVX2.
#define VELMO_KERNEL __attribute__((target("avx2")))
#define VELMO_KERNEL_INLINE __attribute__((target("avx2"), always_inline)) inline

namespace velmodsp {

namespace Avx2ResamplingLoops {

namespace {

using Vector = __m256;
constexpr unsigned int Width = 8;

VELMO_KERNEL_INLINE Vector Load(const float* in) { return _mm256_loadu_ps(in); }
VELMO_KERNEL_INLINE Vector Broadcast(float x) { return _mm256_set1_ps(x); }
VELMO_KERNEL_INLINE void Store(float* out, Vector x) { _mm256_storeu_ps(out, x); }

// Shuffles work in either half of a vector, so each half gets what belongs there before: no sample has to cross.
VELMO_KERNEL_INLINE void Split(const float* in, Vector& evens, Vector& odds) {
    const Vector first = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(in)), _mm_loadu_ps(in + 8), 1);
    const Vector second = _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(in + 4)), _mm_loadu_ps(in + 12), 1);
    evens = _mm256_shuffle_ps(first, second, _MM_SHUFFLE(2, 0, 2, 0));
    odds = _mm256_shuffle_ps(first, second, _MM_SHUFFLE(3, 1, 3, 1));
}

VELMO_KERNEL_INLINE void StorePairs(float* out, Vector evens, Vector odds) {
    const Vector low = _mm256_unpacklo_ps(evens, odds);
    const Vector high = _mm256_unpackhi_ps(evens, odds);
    Store(out, _mm256_permute2f128_ps(low, high, 0x20));
    Store(out + Width, _mm256_permute2f128_ps(low, high, 0x31));
}

VELMO_KERNEL_INLINE void Delay(Vector* delayed, Vector before, Vector newest) {
    const __m256i a = _mm256_castps_si256(before), c = _mm256_castps_si256(newest);
    const __m256i b = _mm256_permute2x128_si256(a, c, 0x21);  // the upper half of a, the lower half of c
    delayed[0] = newest;
    delayed[1] = _mm256_castsi256_ps(_mm256_alignr_epi8(c, b, 12));
    delayed[2] = _mm256_castsi256_ps(_mm256_alignr_epi8(c, b, 8));
    delayed[3] = _mm256_castsi256_ps(_mm256_alignr_epi8(c, b, 4));
    delayed[4] = _mm256_castsi256_ps(b);
    delayed[5] = _mm256_castsi256_ps(_mm256_alignr_epi8(b, a, 12));
    delayed[6] = _mm256_castsi256_ps(_mm256_alignr_epi8(b, a, 8));
    delayed[7] = _mm256_castsi256_ps(_mm256_alignr_epi8(b, a, 4));
}

#include "dsp/VelmoDspResamplingLoops.inc"

}  // namespace

}  // namespace Avx2ResamplingLoops

constinit const ResamplingKernels Avx2Resampling{
    "AVX2",
    &Avx2ResamplingLoops::Decimate3,
    {&Avx2ResamplingLoops::Decimate<5>, &Avx2ResamplingLoops::Decimate<7>, &Avx2ResamplingLoops::Decimate<9>},
    &Avx2ResamplingLoops::Interpolate};

}  // namespace velmodsp

#undef VELMO_KERNEL
#undef VELMO_KERNEL_INLINE

#endif
