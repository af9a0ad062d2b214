#pragma once

#include "dsp/VelmoDspSampleKernels.h"

/// The kernels of every instruction set that the compiler's target may have, one source each; for
/// `SampleKernels::Available`, which knows whether the processor has it too.

namespace velmodsp {

/// Plain loops: what to read first, and what the others must agree with. They also do the samples that fill no vector.
extern const SampleKernels ScalarKernels;

#if defined(__x86_64__)
extern const SampleKernels Sse2Kernels;
extern const SampleKernels Avx2Kernels;
#elif defined(__aarch64__)
extern const SampleKernels NeonKernels;
#endif

}  // namespace velmodsp
