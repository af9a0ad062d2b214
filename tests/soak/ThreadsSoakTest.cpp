#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <iostream>
#include <limits>
#include <mutex>
#include <random>
#include <thread>

#include "ext_dictobj.h"
#include "external/PluginFixture.h"
#include "support/PerformRoutine.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace {

using Random = std::mt19937;

/// An object in a running patch: one audio block goes through it at a time, and what comes out is checked.
class Playing {
public:
    Playing(std::unique_ptr<velmohost::Box> newBox, unsigned numChannels)
        : box(std::move(newBox)), channels(numChannels) {}

    velmohost::Box& Box() const { return *box; }

    /// As when audio starts, with some cords left out. Main thread, while this object performs no block.
    void Configure(Random& random) {
        std::vector<short> connections;
        for (unsigned i = 0; i < 2 * channels + 1; ++i) connections.push_back(random() % 8 != 0);
        isOutletConnected.assign(connections.begin() + channels, connections.end());
        constexpr long blockSizes[] = {1, 16, 64, 250, 512};
        blockSize = blockSizes[random() % std::size(blockSizes)];
        ins.assign(channels, std::vector<double>(static_cast<std::size_t>(blockSize)));
        outs = ins;
        routine.Configure(*box, connections, random() % 2 == 0 ? 44100.0 : 96000.0, blockSize);
    }

    /// One block of any length up to the configured one. Audio thread.
    /// @returns how many samples came out wrong
    long Perform(Random& random) {
        const auto n = static_cast<long>(random() % static_cast<unsigned long>(blockSize + 1));
        const bool isStorm = random() % 4 == 0;
        std::vector<double*> inPointers, outPointers;
        for (unsigned channel = 0; channel < channels; ++channel) {
            for (double& x : ins[channel]) x = Sample(random, isStorm);
            inPointers.push_back(ins[channel].data());
            outPointers.push_back(outs[channel].data());
        }
        routine.Perform(inPointers.data(), channels, outPointers.data(), channels, n);
        return NumWrong(n);
    }

private:
    static double Sample(Random& random, bool isStorm) {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        constexpr double bad[] = {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity, 1e300};
        const unsigned long choice = random();
        if (choice % (isStorm ? 2 : 512) == 0) return bad[choice / 512 % std::size(bad)];
        return static_cast<double>(choice % 4096) / 4096.0 - 2.0;  // never 0, and exact in 32 bits
    }

    /// A good sample passes or, while the object is switched off or no cord brings it, is 0; a bad one never passes.
    /// What nobody listens to may be anything.
    long NumWrong(long n) const {
        long numWrong = 0;
        for (unsigned channel = 0; channel < channels; ++channel) {
            if (!isOutletConnected[channel]) continue;
            for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i) {
                const double in = ins[channel][i], out = outs[channel][i];
                const bool isGood = std::fabs(in) <= 2.0;
                numWrong += isGood ? out != in && out != 0.0 : !(std::fabs(out) <= 2.0);
            }
        }
        return numWrong;
    }

    const std::unique_ptr<velmohost::Box> box;
    const unsigned channels;
    velmotest::PerformRoutine routine;
    long blockSize = 0;
    std::vector<bool> isOutletConnected;
    std::vector<std::vector<double>> ins, outs;
};

/// The audio thread of a patch: performs its objects one after the other, without pause.
class AudioPatch {
public:
    explicit AudioPatch(unsigned int seed) : thread([this, seed] { Run(seed); }) {}
    ~AudioPatch() {
        stop = true;
        thread.join();
    }
    AudioPatch(const AudioPatch&) = delete;
    AudioPatch& operator=(const AudioPatch&) = delete;

    /// Changes the objects between two blocks, which is the only moment when a host does that.
    void Change(const std::function<void(std::vector<Playing*>&)>& change) {
        const std::lock_guard lock(mutex);
        change(objects);
    }

    long NumBlocks() const { return numBlocks; }
    long NumWrongSamples() const { return numWrongSamples; }

private:
    void Run(unsigned int seed) {
        Random random(seed);
        while (!stop) {
            {
                const std::lock_guard lock(mutex);
                for (Playing* object : objects) {
                    numWrongSamples += object->Perform(random);
                    ++numBlocks;
                }
            }
            std::this_thread::yield();
        }
    }

    std::mutex mutex;  // of the list; what is sent to the objects passes it by
    std::vector<Playing*> objects;
    std::atomic<long> numBlocks{0}, numWrongSamples{0};
    std::atomic<bool> stop{false};
    std::thread thread;  // last: it uses all of the above
};

/// A user who does anything at any time: the same steps for the same seed, against an audio thread that does not wait.
class ThreadsSoak : public PluginFixture {
protected:
    ThreadsSoak() {
        t_dictionary* const values = dictionary_new();
        dictionary_appendsym(values, gensym("mode"), gensym("givenvalue"));
        dictionary_appendfloat(values, gensym("replaceby"), -0.5);
        t_symbol* name = gensym("soak");
        dictionary = dictobj_register(values, &name);
    }
    ~ThreadsSoak() override { object_free(dictionary); }

    void CreateObject() {
        constexpr unsigned numChannels[] = {1, 2, 8, 31};
        const unsigned channels = numChannels[random() % std::size(numChannels)];
        auto box = Create("@numchannels " + std::to_string(channels));
        ASSERT_TRUE(box);
        auto object = std::make_unique<Playing>(std::move(box), channels);
        object->Configure(random);
        audio.Change([&](auto& playing) { playing.push_back(object.get()); });
        objects.push_back(std::move(object));
        ++numObjects;
    }

    /// Takes the oldest or youngest one out of the running patch and deletes it.
    void DeleteObject() {
        const auto object = random() % 2 == 0 ? objects.begin() : objects.end() - 1;
        audio.Change([&](auto& playing) { std::erase(playing, object->get()); });
        objects.erase(object);
    }

    void RestartAudio() {
        audio.Change([&](auto& playing) {
            for (Playing* object : playing) object->Configure(random);
        });
        ++numRestarts;
    }

    void SendMessage(velmohost::Box& box) {
        const std::string messages[] = {"clear",
                                        "mode givenvalue",
                                        "mode lastvalue",
                                        "mode xyz",
                                        "mode 3",
                                        "replaceby 0.25",
                                        "replaceby -1",
                                        "replaceby abc",
                                        "numchannels 3",
                                        "numchannels",
                                        "enable 0",
                                        "enable 1",
                                        "enable 1",
                                        "postdspstate",
                                        "postdspstatus",
                                        "postattributes",
                                        "getmode",
                                        "getreplaceby",
                                        "dumpdict",
                                        "dictionary soak",
                                        "dictionary nowhere",
                                        "exportdict \"" + folder / "state.json" + "\"",
                                        "generatexml",
                                        "version",
                                        "recallpreset mode lastvalue replaceby 0.5",
                                        "nonsense 1 2 3",
                                        "0.5",
                                        "1 2 3"};
        box.Send(messages[random() % std::size(messages)]);
    }

    void ExchangeState(velmohost::Box& from, velmohost::Box& to) {
        if (const auto preset = from.StorePreset()) to.RecallPreset(*preset);
        if (const auto value = from.GetValueOf()) to.SetValueOf(*value);
        from.InletAssist(random() % 4);
    }

    void DoOneStep() {
        const auto any = [&]() -> velmohost::Box& { return objects[random() % objects.size()]->Box(); };
        switch (random() % 32) {
            case 0:
                if (objects.size() < 4) CreateObject();
                break;
            case 1:
                if (objects.size() > 1) DeleteObject();
                break;
            case 2:
                RestartAudio();
                break;
            case 3:
                ExchangeState(any(), any());
                break;
            default:
                SendMessage(any());
        }
        numReports += std::ranges::count_if(
            window.Take(), [](const std::string& row) { return row.find("NaN occured in Channel #") != row.npos; });
    }

    TempFolder folder;
    ScopedVariable home{"HOME", folder.Path()};
    t_dictionary* dictionary = nullptr;
    Random random{20};
    std::vector<std::unique_ptr<Playing>> objects;
    long numObjects = 0, numRestarts = 0, numReports = 0;
    AudioPatch audio{21};  // last: it performs the objects
};

TEST_F(ThreadsSoak, AnythingAtAnyTimeLeavesTheSoundIntact) {
    CreateObject();
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(VELMO_SOAK_SECONDS);
    long numSteps = 0;
    while (std::chrono::steady_clock::now() < end && !HasFatalFailure()) {
        DoOneStep();
        ++numSteps;
    }
    audio.Change([](auto& playing) { playing.clear(); });
    std::cout << numSteps << " steps, " << numObjects << " objects, " << numRestarts << " restarts, "
              << audio.NumBlocks() << " blocks, " << numReports << " reports\n";
    EXPECT_EQ(audio.NumWrongSamples(), 0);
    EXPECT_GT(numReports, numObjects);
    EXPECT_GT(numRestarts, 0);
}

}  // namespace
