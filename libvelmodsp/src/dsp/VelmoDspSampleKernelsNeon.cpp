#include "dsp/VelmoDspSampleKernelSets.h"

#if defined(__aarch64__)

#include <arm_neon.h>

#include <array>
#include <cstdint>

// Every 64-bit processor of the family has NEON.
#define VELMO_KERNEL
#define VELMO_KERNEL_INLINE __attribute__((always_inline)) inline

namespace velmodsp {

namespace NeonLoops {

namespace {

using Vector = uint32x4_t;
constexpr unsigned long Width = 4;

VELMO_KERNEL_INLINE void NarrowVector(float* out, const double* in) {
    vst1q_f32(out, vcvt_high_f32_f64(vcvt_f32_f64(vld1q_f64(in)), vld1q_f64(in + 2)));
}

VELMO_KERNEL_INLINE void WidenVector(double* out, const float* in) {
    const float32x4_t x = vld1q_f32(in);
    vst1q_f64(out, vcvt_f64_f32(vget_low_f32(x)));
    vst1q_f64(out + 2, vcvt_high_f64_f32(x));
}

VELMO_KERNEL_INLINE Vector Load(const float* in) { return vreinterpretq_u32_f32(vld1q_f32(in)); }
VELMO_KERNEL_INLINE void Store(float* out, Vector x) { vst1q_f32(out, vreinterpretq_f32_u32(x)); }
VELMO_KERNEL_INLINE Vector Broadcast(float x) { return vreinterpretq_u32_f32(vdupq_n_f32(x)); }
VELMO_KERNEL_INLINE float Lowest(Vector x) { return vgetq_lane_f32(vreinterpretq_f32_u32(x), 0); }

VELMO_KERNEL_INLINE bool AnyLane(Vector mask) { return vmaxvq_u32(mask) != 0; }
VELMO_KERNEL_INLINE Vector Either(Vector a, Vector b) { return vorrq_u32(a, b); }
VELMO_KERNEL_INLINE Vector Select(Vector mask, Vector a, Vector b) { return vbslq_u32(mask, a, b); }

// Of the finite numbers without their signs, read as integers, 0x7f7fffff is the largest.
VELMO_KERNEL_INLINE Vector BadLanes(Vector x) {
    return vcgtq_u32(vandq_u32(x, vdupq_n_u32(0x7fffffff)), vdupq_n_u32(0x7f7fffff));
}

using Bytes = std::array<std::uint8_t, 16>;

/// For every set of bad lanes, the bytes from which each lane takes its sample, and those of the highest lane alone for
/// all lanes; 255, which is no byte of a vector, where the sample lies before it.
struct Sources {
    alignas(64) std::array<Bytes, 16> ofLanes{}, ofHighest{};

    constexpr Sources() {
        for (unsigned int bad = 0; bad < ofLanes.size(); ++bad) {
            for (unsigned int byte = 0; byte < 16; ++byte) {
                ofLanes[bad][byte] = SourceOf(bad, byte / 4, byte % 4);
                ofHighest[bad][byte] = SourceOf(bad, Width - 1, byte % 4);
            }
        }
    }

    static constexpr std::uint8_t SourceOf(unsigned int bad, unsigned int lane, unsigned int byteOfLane) {
        for (; (bad >> lane & 1u) != 0; --lane) {
            if (lane == 0) return 255;
        }
        return static_cast<std::uint8_t>(4 * lane + byteOfLane);
    }
};
constexpr Sources sources;

/// The bytes of `x` that `source` names, and of `otherwise` where it names none.
VELMO_KERNEL_INLINE Vector Permute(Vector otherwise, Vector x, const Bytes& source) {
    return vreinterpretq_u32_u8(
        vqtbx1q_u8(vreinterpretq_u8_u32(otherwise), vreinterpretq_u8_u32(x), vld1q_u8(source.data())));
}

VELMO_KERNEL_INLINE Vector FillForward(Vector x, Vector& before) {
    constexpr std::uint32_t bits[]{1, 2, 4, 8};
    const std::uint32_t bad = vaddvq_u32(vandq_u32(BadLanes(x), vld1q_u32(bits)));
    const Vector result = Permute(before, x, sources.ofLanes[bad]);
    before = Permute(before, x, sources.ofHighest[bad]);  // waits for nothing else of the vector before
    return result;
}

#include "dsp/VelmoDspSampleLoops.inc"

}  // namespace

}  // namespace NeonLoops

constinit const SampleKernels NeonKernels{"NEON",
                                          &NeonLoops::Narrow,
                                          &NeonLoops::Widen,
                                          &NeonLoops::PassFinite,
                                          &NeonLoops::ReplaceByGivenValue,
                                          &NeonLoops::ReplaceByLastValue};

}  // namespace velmodsp

#undef VELMO_KERNEL
#undef VELMO_KERNEL_INLINE

#endif
