#pragma once

#include <cstdint>
#include <optional>

namespace velmohost {

/// What was found among the samples of one channel. Bad are NaN and the infinities, which tesk.fixnan~ replaces;
/// subnormals are proper numbers, counted because they slow processors down.
struct BadSamples {
    std::uint64_t numNaN = 0, numPositiveInfinity = 0, numNegativeInfinity = 0;
    std::uint64_t numSubnormal = 0;
    std::optional<std::uint64_t> first;  ///< position of the first bad sample, counted from 0
    std::uint64_t longestRun = 0;        ///< most bad samples without a good one between them

    std::uint64_t NumBad() const { return numNaN + numPositiveInfinity + numNegativeInfinity; }
};

/// Counts the bad samples of one channel, block by block.
///
///     BadSampleCounter counter;
///     counter.Add(block, 4096);
///     if (counter.Found().NumBad() > 0) ...
class BadSampleCounter {
public:
    /// Takes in the channel's next `n` samples.
    void Add(const float* samples, std::size_t n);

    const BadSamples& Found() const { return found; }

private:
    void AddOneByOne(const float* samples, std::size_t n);
    void AddBad(std::uint32_t bits, std::uint64_t samplePosition);

    BadSamples found;
    std::uint64_t position = 0;  // samples so far
    std::uint64_t run = 0;       // bad samples up to here without a good one
};

}  // namespace velmohost
