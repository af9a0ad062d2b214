#include "audio/AudioThread.h"

#include <array>
#include <cstddef>

#include "audio/DspChain.h"

namespace velmohost {
namespace {

/// Has the system provide the first pages of the calling thread's stack, which it otherwise does when they are used.
void TouchStack() {
    constexpr std::size_t numBytes = 65536;  // far more than perform routines use
    constexpr std::size_t smallestPage = 4096;
    std::array<volatile char, numBytes> stack;
    for (std::size_t i = 0; i < numBytes; i += smallestPage) stack[i] = 0;
}

}  // namespace

AudioThread::AudioThread(DspChain& dspChain) : chain(dspChain), thread([this] { Run(); }) {}

AudioThread::~AudioThread() {
    Order(0);
    thread.join();
}

void AudioThread::Perform(unsigned long numVectors) {
    if (numVectors == 0) return;
    Order(numVectors);
    WaitUntil(false);
}

void AudioThread::Order(unsigned long numVectors) {
    {
        const std::lock_guard lock(mutex);
        orderedVectors = numVectors;
        ordered = true;
    }
    changed.notify_one();
}

/// Not by `std::atomic::wait`: in g++ 12 it can sleep on after the notification on systems without a futex.
void AudioThread::WaitUntil(bool isOrdered) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [&] { return ordered == isOrdered; });
}

void AudioThread::Run() {
    TouchStack();
    for (;;) {
        WaitUntil(true);
        if (orderedVectors == 0) return;
        chain.ProcessVectors(orderedVectors);
        {
            const std::lock_guard lock(mutex);
            ordered = false;
        }
        changed.notify_one();
    }
}

}  // namespace velmohost
