// What the operations of `AudioBuffer` cost, as a multiple of a memcpy of the samples that they write (`x_floor`; of
// the pointers for "permute", which moves nothing else). `items_per_second` counts samples of all channels.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include "InTurns.h"
#include "dsp/VelmoDspDenormals.h"
#include "platform/VelmoDspFloatingPointControl.h"
#include "utils/VelmoDspAudioBuffer.h"

namespace {

using namespace velmodsp;
using bench::Against;

struct Buffers {
    explicit Buffers(const benchmark::State& state)
        : numChannels(static_cast<unsigned int>(state.range(0))),
          numSamples(static_cast<unsigned long>(state.range(1))),
          buffer(numChannels, numSamples, true),
          source(numChannels, numSamples, true),
          twice(2 * numChannels, numSamples, true),
          interleaved(numChannels * numSamples, 0.25f),
          doubles(numChannels * numSamples, 0.25),
          order(numChannels) {
        buffer.FillWithNoise(1.0f);
        source.FillWithNoise(1.0f);
        twice.FillWithNoise(1.0f);
        std::iota(order.rbegin(), order.rend(), 0u);
    }

    unsigned int numChannels;
    unsigned long numSamples;
    AudioBuffer buffer, source, twice;
    std::vector<float> interleaved;
    std::vector<double> doubles;
    std::vector<unsigned int> order;
};

void CopyPlain(Buffers& b) { std::memcpy(b.buffer.GetChannel(0), b.source.GetChannel(0), b.interleaved.size() * 4); }

void BM_AudioBuffer(benchmark::State& state, void (*operation)(Buffers&), void (*floor)(Buffers&)) {
    const ScopedFloatingPointControl restoreAtEnd;
    Denormals::TurnOff();  // as on the audio thread; ramps that are applied again and again end in denormals
    Buffers b(state);
    bench::InTurns(
        state, b.interleaved.size(), [&] { operation(b); }, Against{"floor", [&] { floor(b); }});
}

void Register(const char* name, void (*operation)(Buffers&), void (*floor)(Buffers&) = CopyPlain) {
    benchmark::RegisterBenchmark(name, BM_AudioBuffer, operation, floor)
        ->ArgNames({"channels", "block"})
        ->ArgsProduct({{2, 64}, {64, 4096}})
        ->UseManualTime();
}

template <class Function>
void ForEachChannel(Buffers& b, const Function& function) {
    for (unsigned int k = 0; k < b.numChannels; ++k) function(k);
}

const bool registered = [] {
    Register("fill", [](Buffers& b) { b.buffer.Fill(0.5f); });
    Register("fill_with_ramp", [](Buffers& b) {
        ForEachChannel(b, [&](unsigned int k) { b.buffer.FillChannelWithRamp(k, 0.0f, 1.0f); });
    });
    Register("gain", [](Buffers& b) { b.buffer.ApplyGain(-1.0f); });
    Register("ramp", [](Buffers& b) { b.buffer.ApplyRamp(-1.0f, 1.0f); });
    Register("invert_phase", [](Buffers& b) { b.buffer.InvertPhase(); });
    Register("copy", [](Buffers& b) { b.buffer.CopyFrom(b.source, 1.0f); });
    Register("copy_with_gain", [](Buffers& b) { b.buffer.CopyFrom(b.source, 0.5f); });
    Register("copy_with_ramp", [](Buffers& b) {
        ForEachChannel(b, [&](unsigned int k) { b.buffer.CopyFromWithRamp(k, 0, b.source, k, 0, 0.0f, 1.0f); });
    });
    Register("copy_doubles", [](Buffers& b) {
        ForEachChannel(
            b, [&](unsigned int k) { b.buffer.CopyFrom(k, 0, &b.doubles[k * b.numSamples], b.numSamples, 1.0f); });
    });
    Register("mix_with_gain", [](Buffers& b) { b.buffer.AddFrom(b.source, 1e-9f); });
    Register("mix_with_ramp", [](Buffers& b) {
        ForEachChannel(b, [&](unsigned int k) { b.buffer.AddFromWithRamp(k, 0, b.source, k, 0, 0.0f, 1e-9f); });
    });
    Register("fold", [](Buffers& b) { b.buffer.MergeFrom(b.twice, 0.5f); });
    Register("deinterleave", [](Buffers& b) {
        b.buffer.SetSamplesFromInterleavedBuffer(b.interleaved.data(), b.numSamples, b.numChannels);
    });
    Register("deinterleave_doubles", [](Buffers& b) {
        b.buffer.SetSamplesFromInterleavedBuffer(b.doubles.data(), b.numSamples, b.numChannels);
    });
    Register(
        "permute", [](Buffers& b) { b.buffer.Permute(b.order.data()); },
        [](Buffers& b) { std::memcpy(b.source.GetChannels(), b.twice.GetChannels(), b.numChannels * sizeof(float*)); });
    return true;
}();

}  // namespace
