#include "dsp/VelmoDspMultiUpsampler.h"

#include <gtest/gtest.h>

#include "support/Block.h"

namespace velmodsp {
namespace {

using Samples = std::vector<float>;

Samples Expand(MultiUpsampler& upsampler, Samples in, std::size_t n) {
    Block<float> ins({in, Samples(in.size(), -1.0f)}), outs(2, n, 99.0f);
    upsampler.Process(outs.Outs(), ins.Ins(), static_cast<unsigned int>(n));
    return outs[0];
}

TEST(MultiUpsampler, InterpolatesAcrossBlocksOfEvenAndOddLength) {
    MultiUpsampler upsampler(2);
    EXPECT_EQ(Expand(upsampler, {1, 3, 5}, 6), (Samples{0.5f, 1, 2, 3, 4, 5}));
    EXPECT_EQ(Expand(upsampler, {1}, 2), (Samples{3, 1}));
    EXPECT_EQ(Expand(upsampler, {}, 0), Samples{});
    EXPECT_EQ(Expand(upsampler, {}, 1), Samples{1}) << "nothing came in: the last sample holds";
    EXPECT_EQ(Expand(upsampler, {3, 5}, 5), (Samples{2, 3, 4, 5, 5}));
    EXPECT_EQ(Expand(upsampler, {7}, 2), (Samples{6, 7}));
    upsampler.Clear();
    EXPECT_EQ(Expand(upsampler, {7}, 2), (Samples{3.5f, 7}));
}

}  // namespace
}  // namespace velmodsp
