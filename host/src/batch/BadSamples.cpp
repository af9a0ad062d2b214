#include "batch/BadSamples.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace velmohost {
namespace {

// The bits of a 32-bit float: sign, 8 bits of exponent, 23 of mantissa.
constexpr std::uint32_t kMagnitudeBits = 0x7fffffff, kSmallestNormal = 0x00800000, kInfinity = 0x7f800000;

// Short enough that one odd sample has few others looked at one by one, long enough for the loop below to pay.
constexpr std::size_t kBlockSize = 512;

/// Whether all of the samples are zeros and normal numbers, as nearly all samples are. One pass without a branch.
bool AreOrdinary(const float* samples, std::size_t n) {
    std::uint32_t anyOdd = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint32_t magnitude = std::bit_cast<std::uint32_t>(samples[i]) & kMagnitudeBits;
        const std::uint32_t isNormal = magnitude - kSmallestNormal < kInfinity - kSmallestNormal;  // wraps below
        anyOdd |= (magnitude != 0u) & (isNormal ^ 1u);
    }
    return anyOdd == 0;
}

}  // namespace

void BadSampleCounter::Add(const float* samples, std::size_t n) {
    for (std::size_t start = 0; start < n; start += kBlockSize) {
        const std::size_t size = std::min(kBlockSize, n - start);
        if (AreOrdinary(samples + start, size)) {
            position += size;
            run = 0;
        } else {
            AddOneByOne(samples + start, size);
        }
    }
}

void BadSampleCounter::AddOneByOne(const float* samples, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i, ++position) {
        const auto bits = std::bit_cast<std::uint32_t>(samples[i]);
        const std::uint32_t magnitude = bits & kMagnitudeBits;
        if (magnitude >= kInfinity) {
            AddBad(bits, position);
        } else {
            run = 0;
            if (magnitude != 0 && magnitude < kSmallestNormal) ++found.numSubnormal;
        }
    }
}

void BadSampleCounter::AddBad(std::uint32_t bits, std::uint64_t samplePosition) {
    if ((bits & kMagnitudeBits) > kInfinity) {
        ++found.numNaN;
    } else {
        ++(bits == kInfinity ? found.numPositiveInfinity : found.numNegativeInfinity);
    }
    if (!found.first) found.first = samplePosition;
    found.longestRun = std::max(found.longestRun, ++run);
}

}  // namespace velmohost
