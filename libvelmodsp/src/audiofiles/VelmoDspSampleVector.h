#pragma once

/// The processor's way to convert several samples at once: `SampleVector`, chosen when the library is compiled. Where
/// there is none, every sample is converted by itself.

#if defined(__SSE2__)
#include "audiofiles/VelmoDspSampleVectorSse2.h"
#elif defined(__aarch64__) && defined(__ARM_NEON)
#include "audiofiles/VelmoDspSampleVectorNeon.h"
#else
namespace velmodsp {
using SampleVector = void;
}
#endif
