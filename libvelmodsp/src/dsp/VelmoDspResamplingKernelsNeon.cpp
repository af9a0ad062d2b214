#include "dsp/VelmoDspResamplingKernelSets.h"

#if defined(__aarch64__)

#include <arm_neon.h>

#define VELMO_KERNEL
#define VELMO_KERNEL_INLINE [[gnu::always_inline]] inline

namespace velmodsp {

namespace NeonResamplingLoops {

namespace {

using Vector = float32x4_t;
constexpr unsigned int Width = 4;

VELMO_KERNEL_INLINE Vector Load(const float* in) { return vld1q_f32(in); }
VELMO_KERNEL_INLINE Vector Broadcast(float x) { return vdupq_n_f32(x); }
VELMO_KERNEL_INLINE void Store(float* out, Vector x) { vst1q_f32(out, x); }

VELMO_KERNEL_INLINE void Split(const float* in, Vector& evens, Vector& odds) {
    const float32x4x2_t pairs = vld2q_f32(in);
    evens = pairs.val[0];
    odds = pairs.val[1];
}

VELMO_KERNEL_INLINE void StorePairs(float* out, Vector evens, Vector odds) {
    vst2q_f32(out, float32x4x2_t{{evens, odds}});
}

VELMO_KERNEL_INLINE void Delay(Vector* delayed, Vector before, Vector newest) {
    delayed[0] = newest;
    delayed[1] = vextq_f32(before, newest, 3);
    delayed[2] = vextq_f32(before, newest, 2);
    delayed[3] = vextq_f32(before, newest, 1);
}

#include "dsp/VelmoDspResamplingLoops.inc"

}  // namespace

}  // namespace NeonResamplingLoops

constinit const ResamplingKernels NeonResampling{
    "NEON",
    &NeonResamplingLoops::Decimate3,
    {&NeonResamplingLoops::Decimate<5>, &NeonResamplingLoops::Decimate<7>, &NeonResamplingLoops::Decimate<9>},
    &NeonResamplingLoops::Interpolate};

}  // namespace velmodsp

#undef VELMO_KERNEL
#undef VELMO_KERNEL_INLINE

#endif
