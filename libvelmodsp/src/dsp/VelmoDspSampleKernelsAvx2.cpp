#include "dsp/VelmoDspSampleKernelSets.h"

#if defined(__x86_64__)

#include <immintrin.h>

#include <array>
#include <bit>
#include <cstdint>

// An attribute rather than a compiler option for this file: inline functions that other files share stay free of AVX2.
#define VELMO_KERNEL __attribute__((target("avx2")))
#define VELMO_KERNEL_INLINE __attribute__((target("avx2"), always_inline)) inline

namespace velmodsp {

namespace Avx2Loops {

namespace {

using Vector = __m256i;
constexpr unsigned long Width = 8;

VELMO_KERNEL_INLINE void NarrowVector(float* out, const double* in) {
    const __m128 low = _mm256_cvtpd_ps(_mm256_loadu_pd(in)), high = _mm256_cvtpd_ps(_mm256_loadu_pd(in + 4));
    _mm256_storeu_ps(out, _mm256_set_m128(high, low));  // at once, as the next pass will load it
}

VELMO_KERNEL_INLINE void WidenVector(double* out, const float* in) {
    _mm256_storeu_pd(out, _mm256_cvtps_pd(_mm_loadu_ps(in)));
    _mm256_storeu_pd(out + 4, _mm256_cvtps_pd(_mm_loadu_ps(in + 4)));
}

VELMO_KERNEL_INLINE Vector Load(const float* in) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in)); }
VELMO_KERNEL_INLINE void Store(float* out, Vector x) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), x); }
VELMO_KERNEL_INLINE Vector Broadcast(float x) { return _mm256_set1_epi32(std::bit_cast<std::int32_t>(x)); }
VELMO_KERNEL_INLINE float Lowest(Vector x) { return _mm256_cvtss_f32(_mm256_castsi256_ps(x)); }

// Of the finite numbers without their signs, read as integers, 0x7f7fffff is the largest.
VELMO_KERNEL_INLINE Vector BadLanes(Vector x) {
    const Vector magnitude = _mm256_and_si256(x, _mm256_set1_epi32(0x7fffffff));
    return _mm256_cmpgt_epi32(magnitude, _mm256_set1_epi32(0x7f7fffff));
}

VELMO_KERNEL_INLINE bool AnyLane(Vector mask) { return _mm256_movemask_epi8(mask) != 0; }
VELMO_KERNEL_INLINE Vector Either(Vector a, Vector b) { return _mm256_or_si256(a, b); }
VELMO_KERNEL_INLINE Vector Select(Vector mask, Vector a, Vector b) { return _mm256_blendv_epi8(b, a, mask); }

/// For every set of bad lanes, the lane from which each lane takes its sample, and that of the highest lane again;
/// negative where the sample lies before the vector. The first in bytes, to leave the cache to the samples.
struct Sources {
    alignas(64) std::array<std::array<std::int8_t, Width>, 256> ofLanes{};
    alignas(64) std::array<std::int32_t, 256> ofHighest{};

    constexpr Sources() {
        for (unsigned int bad = 0; bad < ofLanes.size(); ++bad) {
            int source = -1;
            for (unsigned int lane = 0; lane < Width; ++lane) {
                if ((bad >> lane & 1u) == 0) source = static_cast<int>(lane);
                ofLanes[bad][lane] = static_cast<std::int8_t>(source);
            }
            ofHighest[bad] = source;
        }
    }
};
constexpr Sources sources;

/// The lanes of `x` that `source` names, and of `otherwise` where it is negative.
VELMO_KERNEL_INLINE Vector Permute(Vector otherwise, Vector x, Vector source) {
    const __m256 permuted = _mm256_castsi256_ps(_mm256_permutevar8x32_epi32(x, source));
    return _mm256_castps_si256(_mm256_blendv_ps(permuted, _mm256_castsi256_ps(otherwise), _mm256_castsi256_ps(source)));
}

VELMO_KERNEL_INLINE Vector FillForward(Vector x, Vector& before) {
    const auto bad = static_cast<unsigned int>(_mm256_movemask_ps(_mm256_castsi256_ps(BadLanes(x))));
    const __m128i ofLanes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(sources.ofLanes[bad].data()));
    const Vector result = Permute(before, x, _mm256_cvtepi8_epi32(ofLanes));
    // The blend at its end is all that waits for the vector before.
    before = Permute(before, x, _mm256_set1_epi32(sources.ofHighest[bad]));
    return result;
}

#include "dsp/VelmoDspSampleLoops.inc"

}  // namespace

}  // namespace Avx2Loops

constinit const SampleKernels Avx2Kernels{"AVX2",
                                          &Avx2Loops::Narrow,
                                          &Avx2Loops::Widen,
                                          &Avx2Loops::PassFinite,
                                          &Avx2Loops::ReplaceByGivenValue,
                                          &Avx2Loops::ReplaceByLastValue};

}  // namespace velmodsp

#undef VELMO_KERNEL
#undef VELMO_KERNEL_INLINE

#endif
