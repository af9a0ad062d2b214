#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "audio/AudioThread.h"
#include "audio/DspChain.h"
#include "commands/RunSchedule.h"

namespace velmohost {

class Box;
class SoundSink;
class SoundSource;

/// Sound on its way through a box: read from a source, processed on the audio thread, written to a sink, some thousand
/// frames at a time. Messages go to the box between vectors, so a run gives the same samples whenever it is repeated.
class SoundRun {
public:
    struct Connections {
        std::vector<bool> inlets, outlets;  ///< one entry per signal inlet / outlet
    };

    /// Turns audio on.
    /// @param batchFrames frames to process at a time, a multiple of the vector size
    /// @param timedMessages to send on the way, in that order
    /// @param source may be null: the inlets then get silence, as they do after its end
    /// @param sink takes blocks of `batchFrames`; may be null: what leaves the outlets is then dropped
    SoundRun(Box& box, const RunLength& length, const Connections& connections, unsigned long batchFrames,
             std::vector<TimedMessage> timedMessages, SoundSource* source, SoundSink* sink);

    /// Lets sound flow until `frame`, in whole vectors, and sends the messages that come due, those at the end
    /// included. The sink gets no sample past `frame`, so that only the last call may name one within a vector. Main
    /// thread.
    /// @param beforeBatch called before each batch; may throw to end the run
    /// @throws SoundError
    void AdvanceTo(std::uint64_t frame, const std::function<void()>& beforeBatch);

    /// Frames that have flowed so far, in whole vectors.
    std::uint64_t Position() const { return vector * vectorSize; }

    /// The messages that have not been sent yet.
    std::span<const TimedMessage> MessagesLeft() const { return std::span(messages).subspan(numSent); }

private:
    void SendDueMessages();
    void ProcessBatch(unsigned long numVectors, std::uint64_t end);
    void FillInlets(unsigned long numFrames);
    void WriteOutlets(unsigned long numFrames);

    Box& box;
    const unsigned long vectorSize;
    const Connections connections;
    const unsigned long vectorsPerBatch;
    const std::vector<TimedMessage> messages;
    SoundSource* const source;
    SoundSink* const sink;
    std::size_t numSent = 0;   // of the messages
    std::uint64_t vector = 0;  // the next one
    DspChain chain;
    std::optional<AudioThread> audio;  // while the chain is started
};

}  // namespace velmohost
