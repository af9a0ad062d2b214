#include "dsp/VelmoDspResamplingKernels.h"

#include "dsp/VelmoDspResamplingKernelSets.h"
#include "platform/VelmoDspProcessor.h"

namespace velmodsp {

std::span<const ResamplingKernels* const> ResamplingKernels::Available() noexcept {
#if defined(__x86_64__)
    static constexpr const ResamplingKernels* sets[]{&ScalarResampling, &Sse2Resampling, &Avx2Resampling};
    return std::span(sets).first(Processor::HasAvx2() ? 3 : 2);
#elif defined(__aarch64__)
    static constexpr const ResamplingKernels* sets[]{&ScalarResampling, &NeonResampling};
    return sets;
#else
    static constexpr const ResamplingKernels* sets[]{&ScalarResampling};
    return sets;
#endif
}

// Until the processor has been looked at, for what other sources do while the program is loaded.
static constinit const ResamplingKernels* active = &ScalarResampling;
[[maybe_unused]] static const bool chosen = [] {
    active = ResamplingKernels::Available().back();
    return true;
}();

const ResamplingKernels& ResamplingKernels::Active() noexcept { return *active; }

}  // namespace velmodsp
