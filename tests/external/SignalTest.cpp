#include <limits>

#include "../../velmomax/velmomax_msp.h"
#include "PluginFixture.h"

namespace {

using FixNaNSignal = PluginFixture;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

std::string Report(unsigned channel) {
    return "[error] tesk.fixnan~: NaN occured in Channel #" + std::to_string(channel);
}

TEST_F(FixNaNSignal, ReportsEachChannelOnceUntilCleared) {
    const auto box = Create("@numchannels 250");
    velmohost::DspChain chain;
    chain.Start(*box, 44100.0, 2, std::vector<bool>(250, true), std::vector<bool>(250, true));
    const std::vector<std::vector<double>> bad(250, {nan, nan});
    Rows all;
    for (unsigned channel = 1; channel <= 250; ++channel) all.push_back(Report(channel));
    Process(chain, bad);
    EXPECT_EQ(window.Take(), all);
    Process(chain, bad);
    EXPECT_EQ(window.Take(), Rows{});
    box->Send("clear");
    std::vector<std::vector<double>> oneBad(250, {0.0, 0.0});
    oneBad[99] = {0.0, nan};
    Process(chain, oneBad);
    EXPECT_EQ(window.Take(), Rows{Report(100)});
}

TEST_F(FixNaNSignal, MutesAndBypassesByTheWordsOfItsRecord) {
    const auto box = Create("");
    auto* const record = reinterpret_cast<velmomax::_VelmoMspObject*>(box->Object());
    velmohost::DspChain chain;
    chain.Start(*box, 44100.0, 2, {true}, {true});
    record->bypass.Store(1);
    EXPECT_EQ(Process(chain, {{inf, 0.5}})[0], (std::vector<double>{inf, 0.5}));
    record->mute.Store(1);
    EXPECT_EQ(Process(chain, {{0.5, 0.5}})[0], (std::vector<double>{0.0, 0.0}));
    EXPECT_EQ(window.Take(), Rows{});
}

}  // namespace
