#include "commands/SoundRun.h"

#include <algorithm>
#include <utility>

#include "box/Box.h"
#include "sound/SoundSink.h"
#include "sound/SoundSource.h"
#include "window/MaxWindow.h"

namespace velmohost {

SoundRun::SoundRun(Box& soundBox, const RunLength& length, const Connections& connected, unsigned long batchFrames,
                   std::vector<TimedMessage> timedMessages, SoundSource* soundSource, SoundSink* soundSink)
    : box(soundBox),
      vectorSize(length.vectorSize),
      connections(connected),
      vectorsPerBatch(batchFrames / length.vectorSize),
      messages(std::move(timedMessages)),
      source(soundSource),
      sink(soundSink) {
    chain.Start(box, length.samplerate, static_cast<long>(vectorSize), connections.inlets, connections.outlets,
                vectorsPerBatch);
    audio.emplace(chain);
}

void SoundRun::AdvanceTo(std::uint64_t frame, const std::function<void()>& beforeBatch) {
    const std::uint64_t lastVector = frame / vectorSize + (frame % vectorSize != 0 ? 1 : 0);
    for (;;) {
        DrainMaxWindow();
        SendDueMessages();
        if (vector >= lastVector) return;
        beforeBatch();
        std::uint64_t end = std::min(vector + vectorsPerBatch, lastVector);
        if (numSent < messages.size()) end = std::min(end, messages[numSent].vector);
        ProcessBatch(static_cast<unsigned long>(end - vector), frame);
    }
}

void SoundRun::SendDueMessages() {
    while (numSent < messages.size() && messages[numSent].vector <= vector) box.Send(messages[numSent++].text);
}

void SoundRun::ProcessBatch(unsigned long numVectors, std::uint64_t end) {
    const auto numFrames = static_cast<unsigned long>(numVectors * vectorSize);
    FillInlets(numFrames);
    audio->Perform(numVectors);
    WriteOutlets(static_cast<unsigned long>(std::min<std::uint64_t>(numFrames, end - Position())));
    vector += numVectors;
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
