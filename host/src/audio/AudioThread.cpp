#include "audio/AudioThread.h"

#include <array>
#include <cstddef>

#include "audio/DspChain.h"

namespace velmohost {
namespace {

/// Has the system provide the first pages of the calling thread's stack, which it otherwise does when they are used.
void TouchStack() {
    constexpr std::size_t numBytes = 65536;  // perform routines that need more bring their own memory
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
    const std::uint32_t before = ordersDone.load(std::memory_order_relaxed);
    Order(numVectors);
    ordersDone.wait(before, std::memory_order_acquire);
}

void AudioThread::Order(unsigned long numVectors) {
    orderedVectors = numVectors;
    ordersGiven.fetch_add(1, std::memory_order_release);
    ordersGiven.notify_one();
}

void AudioThread::Run() {
    TouchStack();
    for (std::uint32_t served = 0;; ++served) {
        ordersGiven.wait(served, std::memory_order_acquire);
        if (orderedVectors == 0) return;
        chain.ProcessVectors(orderedVectors);
        ordersDone.store(served + 1, std::memory_order_release);
        ordersDone.notify_one();
    }
}

}  // namespace velmohost
