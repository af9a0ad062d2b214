#pragma once

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "window/MaxWindow.h"

namespace velmohost {

/// A row on its way from another thread to the main thread, in memory of fixed size.
struct WaitingRow {
    RowKind kind = RowKind::Post;
    std::array<char, kMaxWaitingNameBytes> objectName{};
    std::array<char, kMaxWaitingTextBytes> text{};
};

/// Bounded queue of rows: any number of writers, one reader, no lock. Each slot carries a turn number that says whose
/// it is: writer of round r when it is 2r, reader when it is 2r + 1.
class RowQueue {
public:
    /// Allocates the queue's memory. Not real-time safe.
    RowQueue() : slots(std::make_unique<Slot[]>(kMaxWaitingRows)) {}

    /// Formats a row into the queue, cutting what does not fit, or counts it as lost when the queue is full.
    /// Any thread, real-time safe.
    void Push(RowKind kind, const char* objectName, const char* format, std::va_list arguments) noexcept;

    /// The oldest row, valid until it is dropped; null when there is none, or when its writer is not done yet. Main
    /// thread.
    const WaitingRow* Peek() const noexcept;

    /// Takes out the row that `Peek` gave. Main thread.
    void Drop() noexcept;

    /// Rows lost since the last call. Main thread.
    std::uint64_t TakeNumLost() noexcept { return numLost.exchange(0, std::memory_order_relaxed); }

private:
    struct Slot {
        std::atomic<std::uint64_t> turn{0};
        WaitingRow row;
    };

    Slot* ClaimSlot(std::uint64_t& round) noexcept;

    const std::unique_ptr<Slot[]> slots;
    std::atomic<std::uint64_t> writePosition{0};  // shared by the writers
    std::uint64_t readPosition = 0;               // main thread only
    std::atomic<std::uint64_t> numLost{0};
    static_assert(std::atomic<std::uint64_t>::is_always_lock_free);
};

}  // namespace velmohost
