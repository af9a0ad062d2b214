#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velmodsp::FileSystem {

/// The most that one `read` or `write` is asked to move: below every system's own limit (2 GiB and less).
constexpr std::size_t largestTransfer = std::size_t{1} << 30;

/// Moves `length` bytes by calls of `transfer(offset, count)`, which returns the bytes moved or -1, up to the first
/// call that falls short. @return bytes moved, or -1 when the first call failed
template <typename Transfer>
std::int64_t TransferInParts(std::size_t length, const Transfer& transfer) {
    std::size_t done = 0;
    do {
        const std::size_t count = std::min(length - done, largestTransfer);
        const std::int64_t moved = transfer(done, count);
        if (moved < 0) return done == 0 ? moved : static_cast<std::int64_t>(done);
        done += static_cast<std::size_t>(moved);
        if (static_cast<std::size_t>(moved) < count) break;
    } while (done < length);
    return static_cast<std::int64_t>(done);
}

}  // namespace velmodsp::FileSystem
