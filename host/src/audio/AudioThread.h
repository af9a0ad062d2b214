#pragma once

#include <atomic>
#include <cstdint>
#include <thread>

namespace velmohost {

class DspChain;

/// The thread on which a chain's vectors run. The main thread hands vectors over and waits for them, so that whatever
/// it does in between (messages, files, the Max window) happens at the same vector in every run.
///
///     AudioThread audio(chain);
///     audio.Perform(32);   // main thread: back when 32 vectors are done
class AudioThread {
public:
    /// Starts the thread; `chain` must be started, and outlive it.
    explicit AudioThread(DspChain& chain);
    /// Ends the thread.
    ~AudioThread();
    AudioThread(const AudioThread&) = delete;
    AudioThread& operator=(const AudioThread&) = delete;

    /// Has the next `numVectors` vectors processed, at least 1, and returns when they are done. Main thread; blocks.
    void Perform(unsigned long numVectors);

private:
    void Order(unsigned long numVectors);
    void Run();

    DspChain& chain;
    unsigned long orderedVectors = 0;           // handed over by `ordersGiven`; 0 ends the thread
    std::atomic<std::uint32_t> ordersGiven{0};  // written by the main thread
    std::atomic<std::uint32_t> ordersDone{0};   // written by the audio thread
    std::thread thread;                         // last: it uses all of the above
};

}  // namespace velmohost
