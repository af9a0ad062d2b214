#include "utils/VelmoDspAudioBuffer.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <numeric>

#include "audiobuffer/FilledBuffer.h"
#include "support/MessageOf.h"

namespace velmodsp {
namespace {

using testing::ElementsAre;

TEST(AudioBuffer, EmptySizesAreValid) {
    AudioBuffer buffer(0, 0, true);
    buffer.Resize(4, 0);
    buffer.FillChannelWithRamp(3, 0.0f, 1.0f);
    buffer.ApplyRamp(0.0f, 1.0f);
    buffer.Impulse();
    buffer.Resize(0, 3);
    AudioBuffer(0, 0, true).MergeFrom(FilledBuffer(std::vector<Samples>{{1.0f}}), 1.0f);
    buffer.Resize(2, 2);
    buffer.Fill(3.0f);
    EXPECT_THAT(Channel(buffer, 1), ElementsAre(3, 3));
}

TEST(AudioBuffer, SizesBeyondTheAddressSpaceThrowAndLeaveTheBufferAsItWas) {
    constexpr unsigned long huge = ~0ul / 2;  // times 2 * 4 bytes wraps to a few
    EXPECT_THROW(AudioBuffer(2, huge + 2, true), Exception);
    FilledBuffer buffer({{1.0f, 2.0f}});
    EXPECT_EQ(MessageOf([&] { buffer.Resize(2, huge); }),
              "memory re-allocation failed (numChannels = 2, numSamples = " + std::to_string(huge) + ")");
    EXPECT_EQ(buffer.GetNumChannels(), 1u);
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(1, 2));
}

TEST(AudioBuffer, ReferencesForeignChannelsUntilResized) {
    std::vector<Samples> memory(20, Samples{0, 1, 2, 3});  // more channels than the table starts with
    std::vector<float*> pointers;
    for (Samples& channel : memory) pointers.push_back(channel.data());

    AudioBuffer buffer(1, 8, false);
    buffer.ReferenceExternalData(pointers.data(), 20, 3, 1);
    EXPECT_EQ(buffer.GetNumChannels(), 20u);
    EXPECT_THAT(Channel(buffer, 19), ElementsAre(1, 2, 3));
    buffer.ApplyGain(2.0f);
    EXPECT_THAT(memory[19], ElementsAre(0, 2, 4, 6));

    buffer.Resize(20, 3);  // same sizes, but nothing of its own yet
    buffer.Zero();
    EXPECT_THAT(memory[19], ElementsAre(0, 2, 4, 6));
    EXPECT_FALSE(buffer.OwnsData());
}

TEST(AudioBuffer, GainsOfOneAndZeroAreExact) {
    const float signalling = std::bit_cast<float>(0x7FA00001u);  // arithmetic would set its quiet bit
    const Samples source = {signalling, -0.0f};
    AudioBuffer buffer(1, 2, true);
    buffer.CopyFrom(0, 0, source.data(), 2, 1.0f);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(buffer.GetChannel(0)[0]), 0x7FA00001u);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(buffer.GetChannel(0)[1]), 0x80000000u);

    const double doubles[] = {std::nan(""), 0.3};
    buffer.CopyFrom(0, 0, doubles, 2, 0.0f);
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(0, 0));
    buffer.CopyFrom(0, 0, doubles, 2, 1.0f);
    EXPECT_TRUE(std::isnan(buffer.GetChannel(0)[0]));
    buffer.CopyFrom(0, 0, doubles, 2, 3.0f);
    EXPECT_EQ(buffer.GetChannel(0)[1], 0.3f * 3.0f);  // narrowed first: float(0.3 * 3) is another number
}

TEST(AudioBuffer, ChannelsOfAnotherBufferAreTakenOverTheCommonLength) {
    const FilledBuffer source({{1, 2, 3, 4}, {10, 20, 30, 40}});
    FilledBuffer dest({{0, 0, 0}});
    dest.CopyFrom(0, 1, source, 1, 1, 0.5f);
    EXPECT_THAT(Channel(dest, 0), ElementsAre(0, 10, 15));
    dest.AddFrom(0, 0, source, 0, 3, 2.0f);
    EXPECT_THAT(Channel(dest, 0), ElementsAre(8, 10, 15));
    dest.AddFrom(source, 1.0f);
    EXPECT_THAT(Channel(dest, 0), ElementsAre(9, 12, 18));
    dest.CopyFrom(0, 3, source, 0, 0, 1.0f);  // nothing left on this side
    dest.CopyFromWithRamp(0, 0, source, 1, 1, 0.0f, 1.0f);
    EXPECT_THAT(Channel(dest, 0), ElementsAre(0, 15, 40));
    dest.AddFromWithRamp(0, 2, source, 0, 0, 0.0f, 2.0f);  // one sample gets the end gain
    EXPECT_THAT(Channel(dest, 0), ElementsAre(0, 15, 42));
    dest.CopyFrom(source, 2.0f);
    EXPECT_THAT(Channel(dest, 0), ElementsAre(2, 4, 6));
}

TEST(AudioBuffer, RampsEndExactlyOnTheirLastSample) {
    AudioBuffer buffer(1, 5, true);
    buffer.FillChannelWithRamp(0, 0.0f, 1.0f);
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(0, 0.25f, 0.5f, 0.75f, 1));
    buffer.ApplyRamp(2.0f, -2.0f);
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(0, 0.25f, 0, -0.75f, -2));

    AudioBuffer one(1, 1, true);
    one.FillChannelWithRamp(0, 7.0f, 3.0f);
    one.ApplyRamp(9.0f, 2.0f);
    EXPECT_THAT(Channel(one, 0), ElementsAre(6));
}

TEST(AudioBuffer, LongRampsHaveNoSteps) {
    // Past 2^24 samples an index no longer fits a float: neighbours would become equal.
    constexpr unsigned long n = (1ul << 24) + 4097;
    AudioBuffer buffer(1, n, true);
    buffer.FillChannelWithRamp(0, 0.0f, static_cast<float>(n - 1) / 16.0f);
    for (unsigned long i : {4095ul, 4096ul, n / 2, n - 2})
        EXPECT_EQ(buffer.GetChannel(0)[i], static_cast<float>(static_cast<double>(i) / 16.0)) << i;
}

TEST(AudioBuffer, InvertPhaseFlipsTheSignBitAlone) {
    FilledBuffer buffer({{0.0f, -1.5f, std::bit_cast<float>(0x7FA00001u)}});
    buffer.InvertPhase();
    EXPECT_TRUE(std::signbit(buffer.GetChannel(0)[0]));
    EXPECT_EQ(buffer.GetChannel(0)[1], 1.5f);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(buffer.GetChannel(0)[2]), 0xFFA00001u);
}

TEST(AudioBuffer, MergeFoldsFurtherChannelsIntoTheFirstOnes) {
    FilledBuffer buffer({{100}, {200}});
    buffer.MergeFrom(FilledBuffer({{1}, {2}, {3}, {4}, {5}}), 2.0f);
    EXPECT_EQ(Channel(buffer, 0), Samples{18});
    EXPECT_EQ(Channel(buffer, 1), Samples{12});
    buffer.MergeFrom(FilledBuffer(std::vector<Samples>{{7}}), 1.0f);
    EXPECT_EQ(Channel(buffer, 0), Samples{7});
    EXPECT_EQ(Channel(buffer, 1), Samples{12});
}

TEST(AudioBuffer, PermuteMovesPointersUntilTheNextResize) {
    FilledBuffer buffer({{1}, {2}, {3}});
    const float* first = buffer.GetChannel(0);
    const unsigned int order[] = {2, 0, 1};
    buffer.Permute(order);
    EXPECT_EQ(buffer.GetChannel(1), first);
    EXPECT_EQ(Channel(buffer, 0), Samples{3});
    buffer.Resize(2, 4);
    EXPECT_EQ(buffer.GetChannel(1), buffer.GetChannel(0) + 4);
}

TEST(AudioBuffer, TakesInterleavedFramesApart) {
    AudioBuffer buffer(1, 1, true);
    buffer.SetSamplesFromInterleavedBuffer(Samples{1, 10, 100, 2, 20, 200}.data(), 2, 3);
    EXPECT_THAT(Channel(buffer, 0), ElementsAre(1, 2));
    EXPECT_THAT(Channel(buffer, 2), ElementsAre(100, 200));
    buffer.SetSamplesFromInterleavedBuffer(std::vector<double>{0.1, 0.2, 0.3, 0.4}.data(), 2, 2);
    EXPECT_THAT(Channel(buffer, 1), ElementsAre(0.2f, 0.4f));
    Samples frames(7 * 9999);
    std::iota(frames.begin(), frames.end(), 0.0f);
    buffer.SetSamplesFromInterleavedBuffer(frames.data(), 9999, 7);
    for (unsigned int k = 0; k < 7; ++k) {
        for (unsigned long i = 0; i < 9999; ++i) ASSERT_EQ(buffer.GetChannel(k)[i], frames[i * 7 + k]) << k << ' ' << i;
    }
}

TEST(AudioBuffer, NoiseFillsTheRangeEvenly) {
    std::srand(1);
    AudioBuffer buffer(1, 100000, true);
    buffer.FillWithNoise(-0.5f);  // the same range as 0.5
    const Samples noise = Channel(buffer, 0);
    EXPECT_THAT(noise, testing::Each(testing::AllOf(testing::Ge(-0.5f), testing::Le(0.5f))));
    // Uniform over -a to a: mean 0, mean square a^2 / 3; the bounds are five standard deviations of the estimates.
    EXPECT_NEAR(std::accumulate(noise.begin(), noise.end(), 0.0) / 100000, 0.0, 0.0046);
    EXPECT_NEAR(std::inner_product(noise.begin(), noise.end(), noise.begin(), 0.0) / 100000, 0.25 / 3, 0.0012);
}

}  // namespace
}  // namespace velmodsp
