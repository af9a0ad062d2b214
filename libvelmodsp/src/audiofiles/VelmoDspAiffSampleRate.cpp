#include "audiofiles/VelmoDspAiffSampleRate.h"

#include <bit>
#include <cstdint>

namespace velmodsp {

// Exponent 0x4000 + e stands for 2^(e + 1), so with e in the low byte the rate is the mantissa's top 32 bits, shifted
// right by 30 - e.
constexpr int HighestRateExponent = 28;

AiffSampleRate EncodeAiffSampleRate(double sampleRate) noexcept {
    if (!(sampleRate >= 2.0)) return {0x3F, 0xFF, 0x80};
    if (sampleRate >= 0x1p30) return {0x40, HighestRateExponent + 1};

    const std::uint32_t rate = static_cast<std::uint32_t>(sampleRate);
    const int highestBit = static_cast<int>(std::bit_width(rate)) - 1;
    const std::uint32_t mantissa = rate << (31 - highestBit);
    return {0x40,
            static_cast<unsigned char>(highestBit - 1),
            static_cast<unsigned char>(mantissa >> 24),
            static_cast<unsigned char>(mantissa >> 16),
            static_cast<unsigned char>(mantissa >> 8),
            static_cast<unsigned char>(mantissa)};
}

double DecodeAiffSampleRate(const AiffSampleRate& bytes) noexcept {
    if (bytes[0] != 0x40 || bytes[1] > HighestRateExponent) return 0.0;
    const std::uint32_t mantissa = static_cast<std::uint32_t>(bytes[2]) << 24 |
                                   static_cast<std::uint32_t>(bytes[3]) << 16 |
                                   static_cast<std::uint32_t>(bytes[4]) << 8 | bytes[5];
    return mantissa >> (HighestRateExponent + 2 - bytes[1]);
}

}  // namespace velmodsp
