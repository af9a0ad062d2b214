#pragma once

#include <atomic>

namespace velmodsp {

/// One value that the main thread and the audio thread share without a lock, such as a gain or a flag: every read gives
/// the whole of some value that was written, and nothing is promised about the order in which two words change.
///
/// It has the size of `T`, and can be copied so that it may live in a growing array; copy and assign only while no
/// other thread uses it. `Load` and `Store`: any thread, real-time safe.
template <class T>
class SharedWord {
public:
    SharedWord() noexcept = default;
    SharedWord(T initial) noexcept : value(initial) {}
    SharedWord(const SharedWord& other) noexcept : value(other.Load()) {}
    SharedWord& operator=(const SharedWord& other) noexcept {
        Store(other.Load());
        return *this;
    }

    T Load() const noexcept { return value.load(std::memory_order_relaxed); }
    void Store(T newValue) noexcept { value.store(newValue, std::memory_order_relaxed); }

private:
    std::atomic<T> value{T{}};
    static_assert(std::atomic<T>::is_always_lock_free, "the audio thread must never wait for a lock");
    static_assert(sizeof(std::atomic<T>) == sizeof(T), "a shared word has the size of what it holds");
};

}  // namespace velmodsp
