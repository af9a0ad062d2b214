// Tests of velmo.peak~ in the headless host, as those of one's own objects may look. EXTERNALS_FOLDER is where the
// build has put the plug-in.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "VelmoHost.h"

namespace {

using velmohost::AudioThread;
using velmohost::Box;
using velmohost::DspChain;

using Lines = std::vector<std::string>;

/// Collects what the host would print: the rows of the Max window, and what leaves the outlets.
class PeakObject : public testing::Test {
protected:
    PeakObject() {
        velmohost::SetMaxWindowSink([this](velmohost::RowKind kind, const std::string& name, const std::string& text) {
            lines.push_back(velmohost::FormatRow(kind, name, text));
        });
        velmohost::SetOutletListener(
            [this](t_object*, t_outlet*, unsigned outlet, t_symbol* selector, long ac, const t_atom* av) {
                const std::string message = selector->s_name + (" " + velmohost::AtomsToText(ac, av));
                lines.push_back("outlet " + std::to_string(outlet + 1) + ": " + message);
            });
    }
    ~PeakObject() override {
        velmohost::SetOutletListener({});
        velmohost::SetMaxWindowSink({});
    }

    /// The lines that a message leads to.
    Lines Send(Box& box, const std::string& message) {
        lines.clear();
        box.Send(message);
        velmohost::DrainMaxWindow();  // rows of other threads wait until then
        return lines;
    }

    velmohost::Host host{{EXTERNALS_FOLDER}};
    Lines lines;
};

/// What leaves the left outlet while `ins` is performed as one signal vector.
std::vector<double> Perform(DspChain& chain, const std::vector<double>& ins) {
    std::copy(ins.begin(), ins.end(), chain.InletSamples(0));
    AudioThread(chain).Perform(1);
    return {chain.OutletSamples(0), chain.OutletSamples(0) + ins.size()};
}

TEST_F(PeakObject, HoldsTheHighestLevelAndFalls) {
    const std::unique_ptr<Box> box = Box::Create(host, "velmo.peak~ @falloff 200.");
    ASSERT_NE(box, nullptr);
    DspChain chain;
    chain.Start(*box, 10.0, 4, {true}, {true});  // at 10 Hz a sample is 0.1 s, in which the level falls by 20 dB
    const std::vector<double> first = Perform(chain, {0.5, 0.0, NAN, -0.9});
    const std::vector<double> second = Perform(chain, {INFINITY, 0.0, 0.0, 0.25});
    const double expected[] = {0.5, 0.05, 0.005, 0.9, 0.09, 0.009, 0.0009, 0.25};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(first[i], expected[i], 1e-15) << i;
        EXPECT_NEAR(second[i], expected[i + 4], 1e-15) << i;
    }
}

TEST_F(PeakObject, TellsAndForgetsTheLevel) {
    const std::unique_ptr<Box> box = Box::Create(host, "velmo.peak~");
    ASSERT_NE(box, nullptr);
    DspChain chain;
    chain.Start(*box, 48000.0, 2, {true}, {true});
    Perform(chain, {0.25, -0.5});
    EXPECT_EQ(Send(*box, "bang"), Lines{"outlet 2: peak 0.5"});
    EXPECT_EQ(Send(*box, "clear"), Lines{});
    EXPECT_EQ(Send(*box, "bang"), Lines{"outlet 2: peak 0."});
    EXPECT_EQ(Perform(chain, {0.0, 0.125}), (std::vector<double>{0.0, 0.125}));
}

TEST_F(PeakObject, TakesNoFalloffThatWouldRise) {
    const std::unique_ptr<Box> box = Box::Create(host, "velmo.peak~ @falloff -6.");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(Send(*box, "getfalloff"), Lines{"outlet 2: falloff 0."});
    EXPECT_EQ(Send(*box, "falloff fast"), Lines{"[error] velmo.peak~: falloff takes a number of dB a second"});
    EXPECT_EQ(Send(*box, "falloff 12"), Lines{});
    EXPECT_EQ(Send(*box, "getfalloff"), Lines{"outlet 2: falloff 12."});
}

}  // namespace
