#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include "commands/RunOptions.h"

namespace velmohost {

class Box;
class Interruption;

/// By what audio runs: somebody at a terminal hears nothing but counts on the time that passes; a script counts on the
/// same outcome whenever it is repeated.
enum class ReplClock {
    RealTime,  ///< sound flows as time passes, until it is stopped
    Script     ///< sound flows while a script waits for it, and when it is stopped up to the length that `run` gives it
};

/// Sound through a box while messages are typed: each `Start` streams the input file from its beginning, each `Stop`
/// completes the output file. Main thread; the vectors run on an audio thread, and messages fall between them.
class ReplAudio {
public:
    /// What is given must outlive it.
    ReplAudio(const RunOptions& options, Box& box, Interruption& interruption, ReplClock clock);
    /// Ends the sound; an output file that is not complete is removed.
    ~ReplAudio();
    ReplAudio(const ReplAudio&) = delete;
    ReplAudio& operator=(const ReplAudio&) = delete;

    bool IsRunning() const { return flow != nullptr; }

    /// Turns audio on.
    /// @throws UsageError when it is on already, SoundError
    void Start();

    /// Turns audio off. A script's sound flows to its end before.
    /// @throws UsageError when it is off already, SoundError
    void Stop();

    /// Lets sound flow for a time, rounded up to whole vectors, or until the break key is used at a terminal.
    /// @param seconds 0 to a day
    /// @throws UsageError when audio is off or the time is out of range; SoundError
    void Wait(double seconds);

    /// In real time lets the sound flow that is due by now. After an error audio is off.
    /// @throws SoundError
    void CatchUp();

private:
    struct Flow;

    void AdvanceTo(std::uint64_t frame);

    const RunOptions& options;
    Box& box;
    Interruption& interruption;
    const ReplClock clock;
    std::unique_ptr<Flow> flow;  // while audio is on
};

}  // namespace velmohost
