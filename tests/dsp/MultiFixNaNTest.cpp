#include "dsp/VelmoDspMultiFixNaN.h"

#include <gtest/gtest.h>

#include <cmath>

#include "dsp/NaNActor.h"
#include "support/Block.h"

namespace velmodsp {
namespace {

/// An engine with every inlet and outlet connected.
struct Engine : MultiFixNaN {
    explicit Engine(unsigned int n) : MultiFixNaN(n) { SetInletsAndOutletsStatus(std::vector<short>(2 * n, 1).data()); }
};

TEST(MultiFixNaN, NamesEachChannelOnceUntilReset) {
    Engine engine(250);
    std::vector<std::string> heard;
    NaNActor listener([&](const std::string& channel) { heard.push_back(channel); });
    NaNActor removed([](const std::string&) { FAIL(); });
    for (NaNActor* l : {&listener, &removed, &listener}) engine.AddListener(l);
    engine.RemoveListener(&removed);
    Block<float> in(250, 2), out(250, 2);
    in[1][0] = in[249][1] = NAN;
    for (int i = 0; i < 2; ++i) engine.Process(out.Outs(), in.Ins(), 2);
    EXPECT_EQ(heard, (std::vector<std::string>{"Channel #2", "Channel #250"}));
    engine.Reset();
    engine.Process(out.Outs(), in.Ins(), 2);
    EXPECT_EQ(heard.size(), 4u);
}

TEST(MultiFixNaN, RepairsTheHostsBlocksInPlaceAndWhatDoesNotFitInto32Bits) {
    using Channels = std::vector<std::vector<double>>;
    Engine engine(2);
    engine.Configure(48000.0f, 4, true);
    const Channels in{{1e300, 0.1, -1e300, NAN}, {5, 6, 7, INFINITY}};
    const auto perform = [&] {
        Block<double> block(in);
        engine.Perform(block.Outs(), block.Ins(), 4, 0, 0, 0);
        return block.channels;
    };
    EXPECT_EQ(perform(), (Channels{{0, 0.1f, 0.1f, 0.1f}, {5, 6, 7, 7}}));
    engine.SetMode("givenvalue");
    engine.SetReplacementValue(0.25f);
    const short secondInlet[]{0, 1, 1, 1};
    engine.SetInletsAndOutletsStatus(secondInlet);
    EXPECT_EQ(perform(), (Channels{{0, 0, 0, 0}, {5, 6, 7, 0.25f}}));
    MultiFixNaN(0).Perform(nullptr, nullptr, 4, 0, 0, 0);
}

TEST(MultiFixNaNDeathTest, EndsTheProcessWhenAListenerThrows) {
    Engine engine(1);
    NaNActor listener([](const std::string&) { throw 1; });
    engine.AddListener(&listener);
    Block<float> block(1, 1, NAN);
    EXPECT_DEATH(engine.Process(block.Outs(), block.Ins(), 1), "");
}

}  // namespace
}  // namespace velmodsp
