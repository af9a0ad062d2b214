// How long it takes to create and free an object of tesk.fixnan~ in the host, and to start audio with it: many channels
// against as many objects of one channel (`x_single_channels`), and against a single one of these (`x_one_channel`).
// `items_per_second` counts channels.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "InTurns.h"
#include "VelmoHost.h"

namespace {

using namespace velmodsp;
using bench::Against;

std::unique_ptr<velmohost::Box> Create(velmohost::Host& host, unsigned int numChannels) {
    return velmohost::Box::Create(host, "tesk.fixnan~ @numchannels " + std::to_string(numChannels));
}

void CreateAndStart(velmohost::Host& host, unsigned int numChannels) {
    const auto box = Create(host, numChannels);
    velmohost::DspChain chain;
    const std::vector<bool> connected(numChannels, true);
    chain.Start(*box, 48000.0, 64, connected, connected);
}

void Compare(benchmark::State& state, const auto& create) {
    velmohost::Host host({VELMO_EXTERNALS_DIR});
    const auto numChannels = static_cast<unsigned int>(state.range(0));
    if (!Create(host, 1)) return state.SkipWithError("the plug-in cannot be loaded");
    bench::InTurns(
        state, numChannels, [&] { create(host, numChannels); }, Against{"one_channel", [&] { create(host, 1); }},
        Against{"single_channels", [&] {
                    for (unsigned int k = 0; k < numChannels; ++k) create(host, 1);
                }});
}

void BM_Create(benchmark::State& state) {
    Compare(state, [](velmohost::Host& host, unsigned int numChannels) { Create(host, numChannels); });
}

void BM_CreateAndStart(benchmark::State& state) { Compare(state, CreateAndStart); }

BENCHMARK(BM_Create)->ArgName("channels")->Arg(2)->Arg(64)->Arg(250)->UseManualTime();
BENCHMARK(BM_CreateAndStart)->ArgName("channels")->Arg(2)->Arg(64)->Arg(250)->UseManualTime();

}  // namespace
