#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "../../velmomax/velmomax_msp.h"
#include "external/PluginFixture.h"
#include "support/PerformRoutine.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

/// Blocks that are good, bad in part, all bad, and silent.
std::vector<std::vector<double>> MakeBlocks(long size) {
    constexpr double bad[] = {nan, inf, -inf, 1e300};
    std::vector<std::vector<double>> blocks(4, std::vector<double>(static_cast<std::size_t>(size)));
    for (std::size_t i = 0; i < blocks[0].size(); ++i) {
        blocks[0][i] = std::sin(static_cast<double>(i));
        blocks[1][i] = i % 3 == 0 ? bad[i % 4] : 0.5;
        blocks[2][i] = bad[i % 4];
    }
    return blocks;
}

/// An audio thread that performs a chain's vectors without pause, while the main thread does something else.
class Performing {
public:
    Performing(velmohost::DspChain& performedChain, unsigned numChannels, long size)
        : chain(performedChain), channels(numChannels), blocks(MakeBlocks(size)), thread([this] { Run(); }) {}
    ~Performing() {
        stop = true;
        thread.join();
    }
    Performing(const Performing&) = delete;
    Performing& operator=(const Performing&) = delete;

    /// Returns when two more vectors are done, so that one of them has begun since.
    void AwaitVectors() const {
        const std::size_t wanted = numVectors + 2;
        while (numVectors < wanted) std::this_thread::yield();
    }

private:
    void Run() {
        while (!stop) {
            for (unsigned channel = 0; channel < channels; ++channel) {
                const std::vector<double>& block = blocks[numVectors % blocks.size()];
                std::copy(block.begin(), block.end(), chain.InletSamples(channel));
            }
            chain.ProcessVectors(1);
            ++numVectors;
        }
    }

    velmohost::DspChain& chain;
    const unsigned channels;
    const std::vector<std::vector<double>> blocks;
    std::atomic<std::size_t> numVectors{0};
    std::atomic<bool> stop{false};
    std::thread thread;  // last: it uses all of the above
};

/// The plug-in as it is shipped; whatever it does in a real-time context ends the program.
class PluginRealtime : public PluginFixture, public testing::WithParamInterface<unsigned> {
protected:
    PluginRealtime() {
        t_dictionary* const values = dictionary_new();
        dictionary_appendsym(values, gensym("mode"), gensym("givenvalue"));
        dictionary_appendfloat(values, gensym("replaceby"), -0.5);
        t_symbol* name = gensym("realtime");
        dictionary = dictobj_register(values, &name);
    }
    ~PluginRealtime() override { object_free(dictionary); }

    /// Everything that the main thread can do to an object while it performs, with vectors after each of it.
    void DoEverything(velmohost::Box& box, const Performing& audio) {
        const std::string messages[] = {"clear",
                                        "mode givenvalue",
                                        "clear",
                                        "replaceby 0.25",
                                        "replaceby 1",
                                        "mode lastvalue",
                                        "mode xyz",
                                        "numchannels 3",
                                        "enable 0",
                                        "enable 1",
                                        "clear",
                                        "postdspstate",
                                        "postdspstatus",
                                        "postattributes",
                                        "getmode",
                                        "dumpdict",
                                        "dictionary realtime",
                                        "exportdict \"" + folder / "state.json" + "\"",
                                        "generatexml",
                                        "version",
                                        "clear"};
        for (const std::string& message : messages) {
            box.Send(message);
            audio.AwaitVectors();
            CountReports();
        }
        if (const auto preset = box.StorePreset()) box.RecallPreset(*preset);
        if (const auto value = box.GetValueOf()) box.SetValueOf(*value);
        box.InletAssist(0);
        audio.AwaitVectors();
        auto* const record = reinterpret_cast<velmomax::_VelmoMspObject*>(box.Object());
        for (auto* const word : {&record->mute, &record->bypass}) {
            for (const long value : {1, 2, 0}) {
                word->Store(value);
                audio.AwaitVectors();
            }
        }
    }

    void CountReports() {
        for (const std::string& row : window.Take()) numReports += row.find("NaN occured in Channel #") != row.npos;
    }

    TempFolder folder;
    ScopedVariable home{"HOME", folder.Path()};
    t_dictionary* dictionary = nullptr;
    unsigned long numReports = 0;
};

TEST_P(PluginRealtime, HoldsWhileTheMainThreadDoesEverything) {
    const unsigned channels = GetParam();
    const auto box = Create("@numchannels " + std::to_string(channels));
    velmohost::DspChain chain;
    std::vector<bool> connected(channels, true);
    for (const long vectorSize : {512L, 1L, 2048L, 64L}) {
        chain.Start(*box, 48000.0, vectorSize, std::vector<bool>(channels, true), connected);
        DoEverything(*box, Performing(chain, channels, vectorSize));
        CountReports();
        connected.back() = !connected.back();
    }
    EXPECT_GE(numReports, 2 * channels) << "with one outlet unconnected, a single channel performs in every other run";
}

INSTANTIATE_TEST_SUITE_P(Channels, PluginRealtime, testing::Values(1, 2, 64, 250));

// ---- blocks shorter and longer than the configured one, which no chain of this host has

class BlockLengths : public PluginFixture {
protected:
    static constexpr long longest = 4096;

    void Configure(long blockSize) { routine.Configure(*box, {1, 1, 0}, 48000.0, blockSize); }

    /// Performs `n` samples, all bad, on a thread of its own.
    void Perform(long n) {
        std::thread([&] {
            double* ins[] = {in.data()};
            double* outs[] = {out.data()};
            routine.Perform(ins, 1, outs, 1, n);
        }).join();
    }

    const std::unique_ptr<velmohost::Box> box = Create("");
    velmotest::PerformRoutine routine;
    std::vector<double> in = std::vector<double>(longest, nan), out = std::vector<double>(longest, 1.0);
};

TEST_F(BlockLengths, UpToTheConfiguredOneNeedNothing) {
    for (const long configured : {64L, 2048L, 512L}) {
        Configure(configured);
        for (const long n : {configured, 1L, 0L, configured - 1, configured / 2, configured}) {
            box->Send("clear");
            std::fill(out.begin(), out.end(), 1.0);
            Perform(n);
            EXPECT_EQ(std::count(out.begin(), out.end(), 0.0), n);
            EXPECT_EQ(window.Take().size(), n > 0 ? 1u : 0u) << "posted";
        }
    }
}

// The one exception, and the proof that an allocation of the plug-in itself is found.
TEST_F(BlockLengths, BeyondTheConfiguredOneAllocate) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    Configure(512);
    EXPECT_EXIT(Perform(longest), testing::ExitedWithCode(1), "Real-time violation: intercepted call .*alloc`");
}

}  // namespace
