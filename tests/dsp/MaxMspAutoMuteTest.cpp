#include "dsp/VelmoDspMaxMspAutoMute.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/Block.h"

namespace velmodsp {
namespace {

TEST(MaxMspAutoMute, KeepsTheThresholdWithinOneAnd500Seconds) {
    MaxMspAutoMute autoMute(1, 1);
    EXPECT_FALSE(autoMute.IsEnabled());
    EXPECT_EQ(autoMute.GetThreshold(), 20.0f);
    EXPECT_EQ(autoMute.GetThresholdInSamples(), 882000u);
    struct Row {
        float seconds, stored;
        bool enabled;
    };
    for (const Row& row : {Row{0.5f, 1, true}, Row{0, 1, false}, Row{1000, 500, true}, Row{NAN, 500, false},
                           Row{2.5f, 2.5f, true}, Row{-3, 2.5f, false}}) {
        autoMute.SetThreshold(row.seconds);
        EXPECT_EQ(autoMute.GetThreshold(), row.stored) << row.seconds;
        EXPECT_EQ(autoMute.IsEnabled(), row.enabled) << row.seconds;
        EXPECT_EQ(autoMute.GetThresholdInSamples(), static_cast<std::uint64_t>(row.stored * 44100)) << row.seconds;
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
    const auto process = [&](unsigned long n) {
        autoMute.Process(block.Ins(), n);
        return std::vector<bool>{autoMute.IsChannelConnected(0), autoMute.IsChannelConnected(1),
                                 autoMute.IsChannelConnected(2), autoMute.IsChannelConnected(3)};
    };
    using Flags = std::vector<bool>;
    EXPECT_EQ(process(4), (Flags{true, false, true, false}));

    autoMute.SetSamplerate(10.0f);
    autoMute.SetThreshold(1.0f);  // ten samples
    EXPECT_EQ(process(4), (Flags{true, false, true, false}));
    block[0][3] = -1e-30f;
    EXPECT_EQ(process(4), (Flags{true, false, true, false}));
    block[0][3] = 0;
    EXPECT_EQ(process(2), (Flags{true, false, false, false})) << "input 2 has been silent for ten samples, 0 for two";
    EXPECT_EQ(autoMute.GetNumActiveInlets(), 1u);
    EXPECT_EQ(process(0), (Flags{true, false, false, false}));
    EXPECT_EQ(process(4), (Flags{true, false, false, false}));
    EXPECT_EQ(process(4), (Flags{false, false, false, false}));
    block[2][0] = INFINITY;
    EXPECT_EQ(process(1), (Flags{false, false, true, false}));
    autoMute.SetSamplerate(10.0f);
    EXPECT_FALSE(autoMute.IsChannelConnected(0));
    autoMute.SetSamplerate(20.0f);
    EXPECT_TRUE(autoMute.IsChannelConnected(0)) << "another sample rate starts the count again";
    autoMute.SetSamplerate(10.0f);
    EXPECT_EQ(process(4), (Flags{true, false, true, false}));
}

}  // namespace
}  // namespace velmodsp
