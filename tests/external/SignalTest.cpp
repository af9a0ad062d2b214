#include <cmath>
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

TEST_F(FixNaNSignal, RepairsAcrossBlocksInBothModes) {
    const std::vector<std::vector<double>> blocks = {{nan, 1.0, inf, 2.0}, {-inf, 1e300, 3.0, nan}};
    const std::pair<const char*, std::vector<std::vector<double>>> modes[] = {
        {"mode lastvalue", {{0.0, 1.0, 1.0, 2.0}, {2.0, 2.0, 3.0, 3.0}}},
        {"mode givenvalue", {{0.5, 1.0, 0.5, 2.0}, {0.5, 0.5, 3.0, 0.5}}},
        {"mode xyz", {{0.0, 1.0, 1.0, 2.0}, {2.0, 2.0, 3.0, 3.0}}},
    };
    for (const auto& [message, repaired] : modes) {
        const auto box = Create("@replaceby 0.5");
        velmohost::DspChain chain;
        chain.Start(*box, 44100.0, 4, {true}, {true});
        box->Send(message);
        for (std::size_t block = 0; block < blocks.size(); ++block) {
            EXPECT_EQ(Process(chain, {blocks[block]})[0], repaired[block]) << message << ", block " << block;
        }
        EXPECT_EQ(window.Take(), Rows{Report(1)}) << message;
    }
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

TEST_F(FixNaNSignal, SilencesUnconnectedInletsAndKeeps32BitsOfTheOthers) {
    const auto box = Create("@numchannels 3");
    velmohost::DspChain chain;
    chain.Start(*box, 44100.0, 2, {true, false, true}, {true, true, true});
    const auto outs = Process(chain, {{0.1, nan}, {nan, nan}, {-0.0, 1e-42}});
    const auto narrowed = [](double x) { return static_cast<double>(static_cast<float>(x)); };
    EXPECT_EQ(outs[0], (std::vector<double>{narrowed(0.1), narrowed(0.1)}));
    EXPECT_EQ(outs[1], (std::vector<double>{0.0, 0.0}));
    EXPECT_EQ(outs[2][0], 0.0);
    EXPECT_TRUE(std::signbit(outs[2][0]));
    EXPECT_EQ(window.Take(), Rows{Report(1)});
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
