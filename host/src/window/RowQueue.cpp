#include "window/RowQueue.h"

#include <cstdio>

namespace velmohost {

RowQueue::Slot* RowQueue::ClaimSlot(std::uint64_t& round) noexcept {
    std::uint64_t position = writePosition.load(std::memory_order_relaxed);
    for (;;) {
        Slot& slot = slots[position % kMaxWaitingRows];
        round = position / kMaxWaitingRows;
        const std::uint64_t turn = slot.turn.load(std::memory_order_acquire);
        if (turn < 2 * round) return nullptr;  // the reader has not emptied it since the last round: the queue is full
        if (turn > 2 * round) {                // another writer was faster
            position = writePosition.load(std::memory_order_relaxed);
        } else if (writePosition.compare_exchange_weak(position, position + 1, std::memory_order_relaxed)) {
            return &slot;
        }
    }
}

void RowQueue::Push(RowKind kind, const char* objectName, const char* format, std::va_list arguments) noexcept {
    std::uint64_t round = 0;
    Slot* const slot = ClaimSlot(round);
    if (slot == nullptr) {
        numLost.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    WaitingRow& row = slot->row;
    row.kind = kind;
    std::snprintf(row.objectName.data(), row.objectName.size(), "%s", objectName != nullptr ? objectName : "");
    if (std::vsnprintf(row.text.data(), row.text.size(), format, arguments) < 0) row.text[0] = '\0';
    slot->turn.store(2 * round + 1, std::memory_order_release);
}

const WaitingRow* RowQueue::Peek() const noexcept {
    const Slot& slot = slots[readPosition % kMaxWaitingRows];
    const std::uint64_t round = readPosition / kMaxWaitingRows;
    return slot.turn.load(std::memory_order_acquire) == 2 * round + 1 ? &slot.row : nullptr;
}

void RowQueue::Drop() noexcept {
    const std::uint64_t round = readPosition / kMaxWaitingRows;
    slots[readPosition % kMaxWaitingRows].turn.store(2 * (round + 1), std::memory_order_release);
    ++readPosition;
}

}  // namespace velmohost
