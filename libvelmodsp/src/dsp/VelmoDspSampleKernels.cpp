#include "dsp/VelmoDspSampleKernels.h"

#include "dsp/VelmoDspSampleKernelSets.h"
#include "platform/VelmoDspProcessor.h"

namespace velmodsp {

std::span<const SampleKernels* const> SampleKernels::Available() noexcept {
#if defined(__x86_64__)
    static constexpr const SampleKernels* sets[]{&ScalarKernels, &Sse2Kernels, &Avx2Kernels};
    return std::span(sets).first(Processor::HasAvx2() ? 3 : 2);
#elif defined(__aarch64__)
    static constexpr const SampleKernels* sets[]{&ScalarKernels, &NeonKernels};
    return sets;
#else
    static constexpr const SampleKernels* sets[]{&ScalarKernels};
    return sets;
#endif
}

bool SampleKernels::ChooseFastest() noexcept {
    active = Available().back();
    return true;
}

// The plain loops do until the processor has been looked at, for what other sources run while the program is loaded.
constinit const SampleKernels* SampleKernels::active = &ScalarKernels;
const bool SampleKernels::chosen = ChooseFastest();

}  // namespace velmodsp
