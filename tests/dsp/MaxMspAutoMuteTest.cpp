#include "dsp/VelmoDspMaxMspAutoMute.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "support/Block.h"

namespace velmodsp {
namespace {

using testing::ElementsAre;

TEST(MaxMspAutoMute, KeepsTheThresholdWithinOneAnd500Seconds) {
    MaxMspAutoMute autoMute(1, 1);
    EXPECT_FALSE(autoMute.IsEnabled());
    EXPECT_EQ(autoMute.GetThreshold(), 20.0f);
    EXPECT_EQ(autoMute.GetThresholdInSamples(), 882000u);
    using Row = std::tuple<float, float, bool>;
    for (const auto& [seconds, stored, enabled] : {Row{0.5f, 1, true}, Row{0, 1, false}, Row{1000, 500, true},
                                                   Row{NAN, 500, false}, Row{2.5f, 2.5f, true}, Row{-3, 2.5f, false}}) {
        autoMute.SetThreshold(seconds);
        EXPECT_EQ(autoMute.GetThreshold(), stored) << seconds;
        EXPECT_EQ(autoMute.IsEnabled(), enabled) << seconds;
        EXPECT_EQ(autoMute.GetThresholdInSamples(), static_cast<std::uint64_t>(stored * 44100)) << seconds;
    }
    for (float samplerate : {NAN, -1.0f, 0.0f}) {
        autoMute.SetSamplerate(samplerate);
        EXPECT_EQ(autoMute.GetThresholdInSamples(), 0u) << samplerate;
    }
    autoMute.SetSamplerate(INFINITY);
    EXPECT_EQ(autoMute.GetThresholdInSamples(), std::numeric_limits<std::uint64_t>::max());
}

TEST(MaxMspAutoMute, FollowsConnectionsWhileDisabledAndSilenceWhileEnabled) {
    MaxMspAutoMute autoMute(3, 2);
    const short count[]{1, 0, 2, 0, 1};
    autoMute.SetInletsAndOutletsStatus(count);
    EXPECT_TRUE(autoMute.AtLeastOneOutletConnected());
    Block<float> block({{0, 0, 0, 0}, {1, 1, 1, 1}, {0, -0.0f, NAN, 0}});
    // The inputs that count as connected after a block of `n` samples.
    const auto process = [&](unsigned long n) {
        autoMute.Process(block.Ins(), n);
        std::vector<unsigned int> connected;
        for (unsigned int k = 0; k < 4; ++k)
            if (autoMute.IsChannelConnected(k)) connected.push_back(k);
        return connected;
    };
    EXPECT_THAT(process(4), ElementsAre(0, 2));

    autoMute.SetSamplerate(10.0f);
    autoMute.SetThreshold(1.0f);  // ten samples
    EXPECT_THAT(process(4), ElementsAre(0, 2));
    block[0][3] = -1e-30f;
    EXPECT_THAT(process(4), ElementsAre(0, 2));
    block[0][3] = 0;
    EXPECT_THAT(process(2), ElementsAre(0)) << "input 2 has been silent for ten samples, 0 for two";
    EXPECT_EQ(autoMute.GetNumActiveInlets(), 1u);
    EXPECT_THAT(process(0), ElementsAre(0));
    EXPECT_THAT(process(4), ElementsAre(0));
    EXPECT_THAT(process(4), testing::IsEmpty());
    block[2][0] = INFINITY;
    EXPECT_THAT(process(1), ElementsAre(2));
    autoMute.SetSamplerate(10.0f);
    EXPECT_FALSE(autoMute.IsChannelConnected(0));
    autoMute.SetSamplerate(20.0f);
    EXPECT_TRUE(autoMute.IsChannelConnected(0)) << "another sample rate starts the count again";
    autoMute.SetSamplerate(10.0f);
    EXPECT_THAT(process(4), ElementsAre(0, 2));
}

}  // namespace
}  // namespace velmodsp
