#include <gmock/gmock.h>

#include <cmath>
#include <thread>

#include "../../velmomax/velmomax_msp.h"
#include "LazyBindings.h"
#include "PageGuard.h"
#include "VelmoHost.h"
#include "realtime/CheckedRealtimeContext.h"
#include "realtime/RealtimeContext.h"
#include "support/CapturedWindow.h"

namespace {

using testing::IsEmpty;

constexpr long vectorSize = 512;

/// What the first blocks of a chain with nothing but NaN in it wait for.
class FirstBlock : public testing::Test {
protected:
    std::unique_ptr<velmohost::Box> Create(const std::string& text) { return velmohost::Box::Create(host, text); }

    void Start(velmohost::Box& box) {
        const unsigned channels = box.NumSignalInlets();
        const std::vector<bool> all(channels, true);
        chain.Start(box, 48000.0, vectorSize, all, all);
        for (unsigned channel = 0; channel < channels; ++channel) {
            std::fill_n(chain.InletSamples(channel), vectorSize, NAN);
        }
    }

    /// Page faults of the next vector on a fresh audio thread.
    unsigned long CountPageFaults() {
        const unsigned long before = velmohost::CountRealtimePageFaults();
        velmohost::AudioThread(chain).Perform(1);
        return velmohost::CountRealtimePageFaults() - before;
    }

    velmotest::CapturedWindow window;
    velmohost::Host host{{VELMO_EXTERNALS_DIR, VELMO_UNSAFE_DIR}};
    velmohost::DspChain chain;
};

TEST_F(FirstBlock, FindsItsMemoryAndItsCodeInPlace) {
    {
        const auto box = Create("unsafe~ post");  // the host's own code is another matter
        Start(*box);
        CountPageFaults();
        chain.Stop();
        window.Take();
    }
    for (const char* mode : {"mode lastvalue", "mode givenvalue"}) {
        const auto box = Create("tesk.fixnan~ @numchannels 250");
        box->Send(mode);
        const velmotest::PageGuard code("tesk.fixnan~" VELMO_EXTERNAL_SUFFIX);
        Start(*box);
        const unsigned long before = code.NumTouched();
        EXPECT_GT(before, 0u) << "dsp64 was run";
        EXPECT_EQ(CountPageFaults(), 0u) << mode;
        EXPECT_EQ(code.NumTouched() - before, 0u) << mode;
        EXPECT_EQ(window.Take().size(), 250u) << "every channel was repaired and has posted";
        chain.Stop();
    }
}

TEST_F(FirstBlock, LooksUpNoFunction) {
    const auto box = Create("tesk.fixnan~ @numchannels 2");
    auto* const record = reinterpret_cast<velmomax::_VelmoMspObject*>(box->Object());
    Start(*box);
    std::thread([] {}).join();  // looks up how to wait for a thread, which the main thread does below
    std::vector<std::string> lookedUp;
    std::thread([&] {
        { const velmohost::RealtimeContext looksUpItsOwn; }
        const velmotest::LazyBindings before = velmotest::GetLazyBindings();
        chain.ProcessVectors(1);
        record->bypass.Store(1);
        chain.ProcessVectors(1);
        record->mute.Store(1);
        chain.ProcessVectors(1);
        lookedUp = velmotest::BoundBetween(before, velmotest::GetLazyBindings());
    }).join();
    EXPECT_THAT(lookedUp, IsEmpty());
    EXPECT_EQ(window.Take().size(), 2u) << "both channels have posted";
}

// The counter counts, and the host keeps its word on the stack.
TEST_F(FirstBlock, MeetsThePageFaultsOfItsObjectAlone) {
    for (const auto& [text, numFaults] :
         {std::pair("unsafe~ nothing", 0u), std::pair("unsafe~ stack", 0u), std::pair("unsafe~ page", 1u)}) {
        const auto box = Create(text);
        Start(*box);
        EXPECT_EQ(CountPageFaults(), numFaults) << text;
        chain.Stop();
    }
}

}  // namespace
