#pragma once

#include "dsp/VelmoDspResamplingKernels.h"

namespace velmodsp {

/// Plain loops: what every other set agrees with bit for bit.
extern const ResamplingKernels ScalarResampling;

#if defined(__x86_64__)
extern const ResamplingKernels Sse2Resampling;
extern const ResamplingKernels Avx2Resampling;
#elif defined(__aarch64__)
extern const ResamplingKernels NeonResampling;
#endif

}  // namespace velmodsp
