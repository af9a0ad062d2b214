#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "dsp/VelmoDspMultiFixNaN.h"
#include "support/Block.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VELMO_TEST_SANITIZED
#endif
#endif

// The sanitizers and other C libraries keep these functions to themselves: there the test is left out.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) && \
    !defined(VELMO_TEST_SANITIZED)

static thread_local unsigned long memoryCalls = 0;

// The names under which the C library offers its own functions to those who replace them; operator new ends here too.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_realloc(void*, std::size_t);
void __libc_free(void*);

[[gnu::visibility("default")]] void* malloc(std::size_t size) noexcept {
    ++memoryCalls;
    return __libc_malloc(size);
}

[[gnu::visibility("default")]] void* realloc(void* block, std::size_t size) noexcept {
    ++memoryCalls;
    return __libc_realloc(block, size);
}

[[gnu::visibility("default")]] void free(void* block) noexcept {
    ++memoryCalls;
    __libc_free(block);
}
}

namespace velmodsp {
namespace {

struct Counter : FixNaNListener {
    void NaNOccured(const String&) override { ++count; }
    int count = 0;
};

/// What the thread allocates and frees while it performs blocks of the given lengths with every setting, of an engine
/// that was configured for 512 samples and never performed before.
unsigned long CountWhilePerforming(bool halfRate) {
    constexpr unsigned int numChannels = 20;
    Counter listener;
    MultiFixNaN engine(numChannels);
    engine.AddListener(&listener);
    engine.SetDownsampling(halfRate);
    engine.SetAutoMuteThreshold(1.0f);
    engine.Configure(48000.0f, 512, true);
    engine.SetInletsAndOutletsStatus(std::vector<short>(2 * numChannels, 1).data());
    Block<double> in(numChannels, 512, NAN), out(numChannels, 512);
    double** const outs = out.Outs();
    const double** const ins = in.Ins();

    const unsigned long before = memoryCalls;
    for (unsigned long n : {64u, 512u, 0u, 511u, 1u, 512u}) {
        engine.Reset();
        engine.SetReplacementValue(1.0f);
        engine.Perform(outs, ins, n, 0, 0, 0);
        engine.Perform(outs, ins, n, 1, 0, 0);
        engine.Perform(outs, ins, n, 0, 1, 0);
        engine.Perform(outs, ins, n, 2, 0, 0);
    }
    const unsigned long after = memoryCalls;
    EXPECT_GE(listener.count, static_cast<int>(numChannels));
    return after - before;
}

TEST(Allocation, DoesNotHappenWhilePerforming) {
    const unsigned long before = memoryCalls;
    auto one = std::make_unique<MultiFixNaN>(1);
    one.reset();
    ASSERT_GE(memoryCalls, before + 4) << "the counter counts";
    EXPECT_EQ(CountWhilePerforming(false), 0u);
    EXPECT_EQ(CountWhilePerforming(true), 0u);
}

}  // namespace
}  // namespace velmodsp

#endif
