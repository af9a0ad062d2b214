#pragma once

#include <array>

namespace velmodsp {

/// Sample rate in the header of an AIFF file: an 80-bit extended float, big-endian, of one sign bit, 15 exponent bits
/// (biased by 0x3FFF) and a 64-bit mantissa whose top bit counts 1. Only whole hertz are kept.
using AiffSampleRate = std::array<unsigned char, 10>;

/// @param sampleRate in Hz; what is below 2 is stored as 1. From 2^30 on the mantissa stays empty, which no reader
/// takes for a rate.
AiffSampleRate EncodeAiffSampleRate(double sampleRate) noexcept;

/// @return the rate in whole hertz, or 0 when it is negative, below 2 Hz or not below 2^30 Hz
double DecodeAiffSampleRate(const AiffSampleRate& bytes) noexcept;

}  // namespace velmodsp
