#pragma once

#include <cstdint>
#include <vector>

#include "audio/DspChain.h"
#include "commands/RunSchedule.h"

namespace velmohost {

class AudioThread;
class Box;
class Interruption;
class Progress;
class SoundSink;
class SoundSource;

/// Sound on its way through a box: read from a source, processed on the audio thread, written to a sink, some thousand
/// frames at a time. Messages go to the box between vectors, so a run gives the same samples whenever it is repeated.
class SoundRun {
public:
    struct Connections {
        std::vector<bool> inlets, outlets;  ///< one entry per signal inlet / outlet
    };

    /// Frames of a batch at most; sources and sinks must be made for blocks of that size.
    static unsigned long MaxBatchFrames(unsigned long vectorSize);

    /// @param source, sink may be null: the inlets then get silence, and what leaves the outlets is dropped
    SoundRun(Box& box, const RunLength& length, const Connections& connections, SoundSource* source, SoundSink* sink);

    /// Runs the whole length, sending `messages` on the way; those at the run's end are sent after the last vector,
    /// those past it not at all. Main thread.
    /// @throws SoundError; std::runtime_error when the user interrupts it
    void Perform(const std::vector<TimedMessage>& messages, const Interruption& interruption, Progress& progress);

private:
    void ProcessBatch(AudioThread& audio, std::uint64_t firstVector, unsigned long numVectors);
    void FillInlets(unsigned long numFrames);
    void WriteOutlets(unsigned long numFrames);

    Box& box;
    const RunLength length;
    const Connections connections;
    SoundSource* const source;
    SoundSink* const sink;
    const unsigned long vectorsPerBatch;
    DspChain chain;
};

}  // namespace velmohost
