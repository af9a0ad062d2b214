#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <memory>
#include <sstream>
#include <thread>

#include "dsp/VelmoDspMultiFixNaN.h"
#include "ext.h"
#include "ext_obex.h"
#include "realtime/CheckedRealtimeContext.h"
#include "realtime/RealtimeContext.h"
#include "support/Block.h"
#include "support/CapturedWindow.h"

namespace {

using velmodsp::MultiFixNaN;

constexpr unsigned long blockSize = 512;

/// Reports as the object does.
struct Poster : velmodsp::FixNaNListener {
    void NaNOccured(const velmodsp::String& channelName) override {
        object_error(nullptr, "NaN occured in %s", channelName.C_Str());
        ++count;
    }
    std::atomic<unsigned> count{0};
};

/// The library's engine in the states that no message of the plug-in leads to: auto-mute, half rate.
/// Parameters: number of channels, whether it runs at half rate.
class EngineRealtime : public testing::TestWithParam<std::tuple<unsigned, bool>> {
protected:
    EngineRealtime() {
        for (auto& channel : bad.channels) channel[0] = 0.5;  // NaN alone counts as silence
    }

    std::unique_ptr<MultiFixNaN> MakeEngine() {
        auto engine = std::make_unique<MultiFixNaN>(numChannels);
        engine->AddListener(&poster);
        engine->SetDownsampling(std::get<1>(GetParam()));
        engine->SetAutoMuteThreshold(1.0f);
        constexpr float samplerate = 1000.0f;  // silence makes an input inactive within two or three blocks
        engine->Configure(samplerate, blockSize, true);
        engine->SetInletsAndOutletsStatus(std::vector<short>(2 * numChannels, 1).data());
        return engine;
    }

    void Perform(MultiFixNaN& engine, Block<double>& in, unsigned long n, long mute, long bypass, long disabled) {
        double** const outs = out.Outs();
        const double** const ins = in.Ins();
        const velmohost::RealtimeContext realtime;
        engine.Perform(outs, ins, n, mute, bypass, disabled);
    }

    /// Sound and silence, good and bad, in blocks of all lengths and in all states.
    void PerformEverything(MultiFixNaN& engine) {
        for (const unsigned long n : {blockSize, blockSize, blockSize, 1ul, 0ul, blockSize / 2, blockSize - 1}) {
            for (Block<double>* in : {&bad, &silent}) {
                Perform(engine, *in, n, 0, 0, 0);
                Perform(engine, *in, n, 1, 0, 0);
                Perform(engine, *in, n, 0, 1, 0);
                Perform(engine, *in, n, 2, 0, 0);
                Perform(engine, *in, n, 0, 0, 1);
            }
        }
    }

    const unsigned numChannels = std::get<0>(GetParam());
    Poster poster;
    velmotest::CapturedWindow window;
    Block<double> bad{numChannels, blockSize, NAN}, silent{numChannels, blockSize}, out{numChannels, blockSize};
};

TEST_P(EngineRealtime, HoldsWhileTheMainThreadSetsEverything) {
    const auto engine = MakeEngine();
    std::atomic<bool> stop{false};
    std::atomic<int> numRounds{0};
    std::thread audio([&] {
        for (; !stop; ++numRounds) PerformEverything(*engine);
    });
    for (int round = 0; round < 100 || numRounds < 10; ++round) {
        engine->SetMode(round % 2 == 0 ? "givenvalue" : "lastvalue");
        engine->SetReplacementValue(static_cast<float>(round));
        engine->SetAutoMuteThreshold(static_cast<float>(round % 3));
        engine->EnableAutoMute(round % 5 != 0);
        engine->Reset();
        std::ostringstream status;
        engine->PrintDspStatus(status);
        window.Take();
    }
    stop = true;
    audio.join();
    EXPECT_GE(poster.count, numChannels);

    engine->SetAutoMuteThreshold(1.0f);
    std::thread([&] { Perform(*engine, bad, blockSize, 0, 0, 0); }).join();
    EXPECT_EQ(engine->GetAutoMute().GetNumActiveInlets(), numChannels);
    std::thread([&] { PerformEverything(*engine); }).join();
    EXPECT_EQ(engine->GetAutoMute().GetNumActiveInlets(), 0u) << "it ends with two seconds of silence";
}

TEST_P(EngineRealtime, FindsItsMemoryInPlace) {
    const auto first = MakeEngine(), second = MakeEngine();
    std::thread([&] {
        PerformEverything(*first);  // from now on everything but the second engine's own memory is in place
        poster.count = 0;
        const unsigned long before = velmohost::CountRealtimePageFaults();
        Perform(*second, bad, blockSize, 0, 0, 0);
        EXPECT_EQ(velmohost::CountRealtimePageFaults() - before, 0u);
    }).join();
    EXPECT_EQ(poster.count, numChannels);
}

INSTANTIATE_TEST_SUITE_P(Channels, EngineRealtime, testing::Combine(testing::Values(1, 2, 64, 250), testing::Bool()));

}  // namespace
