#include "rehearsal.h"

#include "tesk_fixnan.h"

#include <array>
#include <limits>

namespace {

constexpr unsigned int numSamples = 2048;

using Samples = std::array<double, numSamples>;

/// Group g of eight samples is bad where the bits of g are set: all patterns that a vector of eight can have.
Samples makeEveryPattern() {
    Samples samples;
    for (unsigned int i = 0; i < numSamples; ++i) {
        const bool isBad = ((i / 8) >> (i % 8) & 1) != 0;
        samples[i] = isBad ? std::numeric_limits<double>::quiet_NaN() : 0.0;
    }
    return samples;
}

}  // namespace

void tesk_fixnan_rehearse() {
    Samples in = makeEveryPattern();
    Samples out;
    velmodsp::MultiFixNaN engine(1);
    engine.Configure(velmodsp::MultiFixNaN::DefaultSampleRate, numSamples, true);
    MultiFixNaNListener silent(nullptr);
    engine.AddListener(&silent);
    tesk_fixnan_t standIn{};
    standIn.engine = &engine;
    const auto perform = [&] {
        double* ins[] = {in.data()};
        double* outs[] = {out.data()};
        constexpr long withRemainder = numSamples - 1;  // no multiple of any vector's length
        tesk_fixnan_perform(&standIn, nullptr, ins, 1, outs, 1, withRemainder, 0, nullptr);
    };

    perform();  // nothing connected
    constexpr short connected[] = {1, 1};
    engine.SetInletsAndOutletsStatus(connected);
    for (const char* mode : {"lastvalue", "givenvalue"}) {
        engine.SetMode(mode);
        perform();
    }
    standIn.ob.bypass.Store(1);
    perform();
    standIn.ob.mute.Store(1);
    perform();
}
