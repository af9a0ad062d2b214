#pragma once

#include <condition_variable>
#include <mutex>
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
    void WaitUntil(bool isOrdered);
    void Run();

    DspChain& chain;
    std::mutex mutex;  // of the order
    std::condition_variable changed;
    bool ordered = false;              // whether there is an order that is not carried out
    unsigned long orderedVectors = 0;  // 0 ends the thread
    std::thread thread;                // last: it uses all of the above
};

}  // namespace velmohost
