#include "dsp/VelmoDspSampleKernelSets.h"

#if defined(__aarch64__)

#include <arm_neon.h>

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

VELMO_KERNEL_INLINE Vector Either(Vector a, Vector b) { return vorrq_u32(a, b); }
VELMO_KERNEL_INLINE Vector Both(Vector a, Vector b) { return vandq_u32(a, b); }
VELMO_KERNEL_INLINE Vector Without(Vector a, Vector b) { return vbicq_u32(a, b); }
VELMO_KERNEL_INLINE Vector Select(Vector mask, Vector a, Vector b) { return vbslq_u32(mask, a, b); }
VELMO_KERNEL_INLINE bool AnyLane(Vector mask) { return vmaxvq_u32(mask) != 0; }

// Of the finite numbers without their signs, read as integers, 0x7f7fffff is the largest.
VELMO_KERNEL_INLINE Vector Magnitude(Vector x) { return Both(x, vdupq_n_u32(0x7fffffff)); }
VELMO_KERNEL_INLINE Vector BadLanes(Vector x) { return vcgtq_u32(Magnitude(x), vdupq_n_u32(0x7f7fffff)); }
VELMO_KERNEL_INLINE Vector GoodLanes(Vector x) { return vcltq_u32(Magnitude(x), vdupq_n_u32(0x7f800000)); }

VELMO_KERNEL_INLINE Vector RaiseBy1(Vector x) { return vextq_u32(vdupq_n_u32(0), x, 3); }
VELMO_KERNEL_INLINE Vector RaiseBy2(Vector x) { return vextq_u32(vdupq_n_u32(0), x, 2); }
VELMO_KERNEL_INLINE Vector HighestToAll(Vector x) { return vdupq_laneq_u32(x, 3); }

#include "dsp/VelmoDspFillForwardBySteps.inc"
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
