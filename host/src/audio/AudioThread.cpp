#include "audio/AudioThread.h"

#include "audio/DspChain.h"

namespace velmohost {

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
    for (std::uint32_t served = 0;; ++served) {
        ordersGiven.wait(served, std::memory_order_acquire);
        if (orderedVectors == 0) return;
        chain.ProcessVectors(orderedVectors);
        ordersDone.store(served + 1, std::memory_order_release);
        ordersDone.notify_one();
    }
}

}  // namespace velmohost
