#include "commands/SoundRun.h"

#include <algorithm>
#include <stdexcept>

#include "audio/AudioThread.h"
#include "box/Box.h"
#include "commands/Interruption.h"
#include "commands/Progress.h"
#include "sound/SoundSink.h"
#include "sound/SoundSource.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

// Enough that handing a batch to the audio thread and calling the system cost little beside the work itself, but not
// more samples of all channels together than the processor's caches hold.
constexpr unsigned long kMaxBatchFrames = 16384;
constexpr unsigned long kMaxBatchSamples = 65536;

}  // namespace

unsigned long SoundRun::ChooseBatchFrames(unsigned long vectorSize, unsigned numChannels) {
    const unsigned long frames = std::min(kMaxBatchFrames, kMaxBatchSamples / std::max(numChannels, 1u));
    return std::max(1ul, frames / vectorSize) * vectorSize;
}

SoundRun::SoundRun(Box& soundBox, const RunLength& runLength, const Connections& connected, unsigned long batchFrames,
                   SoundSource* soundSource, SoundSink* soundSink)
    : box(soundBox),
      length(runLength),
      connections(connected),
      vectorsPerBatch(batchFrames / runLength.vectorSize),
      source(soundSource),
      sink(soundSink) {}

void SoundRun::Perform(const std::vector<TimedMessage>& messages, const Interruption& interruption,
                       Progress& progress) {
    chain.Start(box, length.samplerate, static_cast<long>(length.vectorSize), connections.inlets, connections.outlets,
                vectorsPerBatch);
    AudioThread audio(chain);
    auto message = messages.begin();
    for (std::uint64_t vector = 0;;) {
        DrainMaxWindow();
        for (; message != messages.end() && message->vector <= vector; ++message) box.Send(message->text);
        if (vector == length.NumVectors()) break;
        if (interruption.Requested()) throw std::runtime_error("interrupted");

        std::uint64_t end = std::min(vector + vectorsPerBatch, length.NumVectors());
        if (message != messages.end()) end = std::min(end, message->vector);
        ProcessBatch(audio, vector, static_cast<unsigned long>(end - vector));
        vector = end;
        progress.Show(static_cast<double>(vector * length.vectorSize) / length.samplerate,
                      static_cast<double>(length.frames) / length.samplerate);
    }
    chain.Stop();
}

void SoundRun::ProcessBatch(AudioThread& audio, std::uint64_t firstVector, unsigned long numVectors) {
    FillInlets(numVectors * length.vectorSize);
    audio.Perform(numVectors);
    const std::uint64_t framesLeft = length.frames - firstVector * length.vectorSize;
    WriteOutlets(static_cast<unsigned long>(std::min<std::uint64_t>(numVectors * length.vectorSize, framesLeft)));
}

void SoundRun::FillInlets(unsigned long numFrames) {
    const unsigned long numRead = source != nullptr ? source->ReadBlock(numFrames) : 0;
    for (unsigned inlet = 0; inlet < connections.inlets.size(); ++inlet) {
        double* const samples = chain.InletSamples(inlet);
        if (samples == nullptr) continue;
        const unsigned long numFilled = source != nullptr && inlet < source->NumChannels() ? numRead : 0;
        if (numFilled > 0) std::copy_n(source->Channel(inlet), numFilled, samples);
        std::fill(samples + numFilled, samples + numFrames, 0.0);
    }
}

void SoundRun::WriteOutlets(unsigned long numFrames) {
    if (sink == nullptr) return;
    for (unsigned outlet = 0; outlet < connections.outlets.size(); ++outlet) {
        float* const samples = sink->Channel(outlet);
        if (connections.outlets[outlet]) {
            std::transform(chain.OutletSamples(outlet), chain.OutletSamples(outlet) + numFrames, samples,
                           [](double sample) { return static_cast<float>(sample); });
        } else {
            std::fill_n(samples, numFrames, 0.0f);
        }
    }
    sink->WriteBlock(numFrames);
}

}  // namespace velmohost
