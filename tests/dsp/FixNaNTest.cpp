#include "dsp/VelmoDspFixNaN.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "dsp/NaNActor.h"
#include "support/Block.h"

namespace velmodsp {
namespace {

using Samples = std::vector<float>;

Samples Repair(FixNaN& repair, Samples in, std::size_t blockSize = 1000) {
    for (std::size_t start = 0; start < in.size(); start += blockSize) {
        repair.Process(&in[start], &in[start], std::min(blockSize, in.size() - start));
    }
    return in;
}

TEST(FixNaN, HoldsTheLastFiniteSampleAcrossBlocksAndWhileAnotherModeRuns) {
    FixNaN repair;
    EXPECT_EQ(Repair(repair, {NAN, 1, NAN, INFINITY, 2, -INFINITY, NAN, 7}, 3), (Samples{0, 1, 1, 1, 2, 2, 2, 7}));
    repair.SetMode("givenvalue");
    repair.SetReplacementValue(0.5f);
    repair.Rearm();
    EXPECT_EQ(Repair(repair, {3, -INFINITY, 4, NAN}), (Samples{3, 0.5f, 4, 0.5f}));
    repair.Rearm();
    for (const char* fallback : {"lastvalue", "LastValue", "", "givenvalue "}) {
        repair.SetMode("givenvalue");
        repair.SetMode(fallback);
        EXPECT_EQ(Repair(repair, {NAN}), Samples{7}) << fallback;
    }
}

TEST(FixNaN, ReportsTheFirstBadSampleOnceToEveryListenerInOrder) {
    std::vector<std::string> heard;
    const auto log = [&](const char* who) {
        return [&heard, who](const std::string& channel) { heard.push_back(who + channel); };
    };
    NaNActor first(log("first ")), second(log("second ")), third(log("third "));
    FixNaN repair;
    repair.SetName("left");
    for (FixNaNListener* listener : {&first, &third, &second, &first, static_cast<NaNActor*>(nullptr)}) {
        repair.AddListener(listener);
    }
    repair.RemoveListener(&third);
    repair.RemoveListener(&third);
    Repair(repair, {1, 2});
    EXPECT_TRUE(heard.empty());
    Repair(repair, {1, NAN, INFINITY, NAN}, 2);
    EXPECT_EQ(heard, (std::vector<std::string>{"first left", "second left"}));
    repair.SetMode("givenvalue");
    Repair(repair, {NAN});
    EXPECT_EQ(heard.size(), 2u) << "a change of mode does not re-arm";
    repair.Rearm();
    Repair(repair, {NAN, NAN});
    EXPECT_EQ(heard.size(), 4u);
}

TEST(FixNaN, TakesWhatListenersSetFromTheirBadSampleOn) {
    for (const std::size_t first : {0u, 1u, 7u, 8u, 21u, 37u}) {
        FixNaN repair;
        repair.SetMode("givenvalue");
        float value = 0;
        NaNActor setNextValue([&](const std::string&) {
            repair.SetReplacementValue(value += 1);
            if (value < 4) repair.Rearm();
        });
        repair.AddListener(&setNextValue);
        Samples in(60, 0.5f), expected = in;
        float replacement = 0;
        for (const std::size_t bad : {first, first + 1, first + 4, first + 13, first + 15}) {
            in[bad] = NAN;
            expected[bad] = std::min(++replacement, 4.0f);
        }
        EXPECT_EQ(Repair(repair, in), expected) << first;
    }
}

TEST(FixNaN, LosesNothingToAListenerThatThrows) {
    FixNaN repair;
    NaNActor thrower([](const std::string&) { throw std::runtime_error("on purpose"); });
    repair.AddListener(&thrower);
    Samples block(40, 0.5f);
    block[30] = 0.25f;
    block[31] = NAN;
    EXPECT_THROW(Repair(repair, block), std::runtime_error);
    EXPECT_EQ(Repair(repair, {NAN, NAN}), (Samples{0.25f, 0.25f})) << "the report has been made";
    repair.Rearm();
    EXPECT_THROW(Repair(repair, {0.75f, NAN}), std::runtime_error);
    EXPECT_EQ(Repair(repair, {NAN}), Samples{0.75f});
}

TEST(FixNaN, IsMutedWhileItsInletIsUnconnected) {
    FixNaN repair;
    Block<float> in({{NAN, 1, 2}});
    for (const auto& [inlet, expected] : {std::pair<short, Samples>{1, {0, 1, 2}}, {0, {0, 0, 0}}}) {
        Block<float> out(1, 3, 9.0f);
        const short count[]{inlet, 1};
        repair.SetInletsAndOutletsStatus(count);
        static_cast<SignalProcessing&>(repair).Process(out.Outs(), in.Ins(), 3);
        EXPECT_EQ(out[0], expected);
    }
}

}  // namespace
}  // namespace velmodsp
