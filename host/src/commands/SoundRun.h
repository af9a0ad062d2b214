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

    /// A good number of frames to process at a time, in whole vectors.
    /// @param numChannels the most channels that any part of the run has
    static unsigned long ChooseBatchFrames(unsigned long vectorSize, unsigned numChannels);

    /// @param batchFrames frames to process at a time, a multiple of the vector size
    /// @param source may be null: the inlets then get silence
    /// @param sink takes blocks of `batchFrames`; may be null: what leaves the outlets is then dropped
    SoundRun(Box& box, const RunLength& length, const Connections& connections, unsigned long batchFrames,
             SoundSource* source, SoundSink* sink);

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
    const unsigned long vectorsPerBatch;
    SoundSource* const source;
    SoundSink* const sink;
    DspChain chain;
};

}  // namespace velmohost
