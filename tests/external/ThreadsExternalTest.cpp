#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "PluginFixture.h"

namespace {

using ThreadsExternal = PluginFixture;

TEST_F(ThreadsExternal, OneThreadPerformsWhileTheMainThreadSetsEverything) {
    constexpr unsigned channels = 8;
    constexpr long vectorSize = 64;
    const auto box = Create("@numchannels 8");
    velmohost::DspChain chain;
    chain.Start(*box, 44100.0, vectorSize, std::vector<bool>(channels, true), std::vector<bool>(channels, true));
    for (unsigned channel = 0; channel < channels; ++channel) {
        std::fill_n(chain.InletSamples(channel), vectorSize, std::numeric_limits<double>::quiet_NaN());
    }
    std::atomic<bool> isDone{false};
    std::atomic<long> badSamples{0};
    std::thread audio([&] {
        for (int vector = 0; vector < 3000; ++vector) {
            chain.ProcessVectors(1);
            // No finite sample ever came, so every output is one of the replacement values or the initial 0.
            for (unsigned channel = 0; channel < channels; ++channel) {
                for (long i = 0; i < vectorSize; ++i) {
                    const double out = chain.OutletSamples(channel)[i];
                    if (out != 0.0 && out != 0.5 && out != -0.25) ++badSamples;
                }
            }
        }
        isDone = true;
    });
    const char* const messages[] = {"mode givenvalue", "replaceby 0.5",   "mode lastvalue",
                                    "clear",           "replaceby -0.25", "numchannels 8",
                                    "postdspstatus",   "postdspstate",    "postattributes"};
    std::size_t reports = 0;
    const auto countReports = [&] {
        for (const std::string& row : window.Take()) reports += row.find("NaN occured in Channel #") != row.npos;
    };
    while (!isDone) {
        for (const char* message : messages) {
            box->Send(message);
            countReports();
        }
    }
    audio.join();
    countReports();  // what the last vectors left in the queue
    EXPECT_EQ(badSamples, 0);
    EXPECT_GE(reports, channels);
}

}  // namespace
