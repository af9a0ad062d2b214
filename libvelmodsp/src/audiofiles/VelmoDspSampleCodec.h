#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#include "audiofiles/VelmoDspSampleFormat.h"
#include "utils/VelmoDspCompilerChecks.h"

/// One sample at a time: from the bytes of a file to a word or a float, and back. This is what every faster code for
/// many samples at once has to agree with, bit for bit.

namespace velmodsp {

enum class ByteOrder { Little, Big };
enum class Zero { AtZero, AtMiddle };

/// Bytes of one sample to its left-justified word and back. `Zero::AtMiddle` is the unsigned form, where 128 is
/// silence.
template <int Size, ByteOrder Order, Zero Offset = Zero::AtZero>
struct SampleCodec {
    static constexpr int size = Size;
    static constexpr bool isBigEndian = Order == ByteOrder::Big;
    static constexpr bool isUnsigned = Offset == Zero::AtMiddle;

    static std::uint32_t Decode(const unsigned char* bytes) noexcept {
        std::uint32_t word = 0;
        for (int i = 0; i < Size; ++i) word |= static_cast<std::uint32_t>(bytes[i]) << Shift(i);
        return word ^ SignFlip;
    }

    static void Encode(std::uint32_t word, unsigned char* bytes) noexcept {
        word ^= SignFlip;
        for (int i = 0; i < Size; ++i) bytes[i] = static_cast<unsigned char>(word >> Shift(i));
    }

private:
    static constexpr std::uint32_t SignFlip = isUnsigned ? 0x80000000u : 0u;
    static constexpr int Shift(int i) { return 8 * (isBigEndian ? 3 - i : 4 - Size + i); }
};

/// Calls `function` with the codec of `format`; does nothing for `None`.
template <typename Function>
void WithCodec(SampleFormat format, Function function) {
    switch (format) {
        case SampleFormat::None:
            return;
        case SampleFormat::Unsigned8:
            return function(SampleCodec<1, ByteOrder::Little, Zero::AtMiddle>());
        case SampleFormat::Signed8:
            return function(SampleCodec<1, ByteOrder::Little>());
        case SampleFormat::Little16:
            return function(SampleCodec<2, ByteOrder::Little>());
        case SampleFormat::Big16:
            return function(SampleCodec<2, ByteOrder::Big>());
        case SampleFormat::Little24:
            return function(SampleCodec<3, ByteOrder::Little>());
        case SampleFormat::Big24:
            return function(SampleCodec<3, ByteOrder::Big>());
        case SampleFormat::Little32:
            return function(SampleCodec<4, ByteOrder::Little>());
        case SampleFormat::Big32:
            return function(SampleCodec<4, ByteOrder::Big>());
    }
}

// Words often live in the storage of float samples, so they are moved as bytes.
inline std::uint32_t LoadWord(const void* source) noexcept {
    std::uint32_t word;
    std::memcpy(&word, source, sizeof word);
    return word;
}

inline void StoreWord(std::uint32_t word, void* dest) noexcept { std::memcpy(dest, &word, sizeof word); }

/// The bits of the float, -1 to 1, for a left-justified integer.
inline std::uint32_t FloatOfWord(std::uint32_t word) noexcept {
    return std::bit_cast<std::uint32_t>(static_cast<float>(static_cast<std::int32_t>(word)) * 0x1p-31f);
}

constexpr std::uint32_t AllBitsIf(bool condition) { return 0u - static_cast<std::uint32_t>(condition); }

/// The left-justified integer for a float given as its bits: rounded to the nearest, a tie to the even one. What is
/// beyond -1 or 1, infinities included, becomes full scale; NaN becomes 0.
///
/// Selects with masks made of the sample's bits: compilers turn comparisons of floats into branches here, NaN being one
/// more case, and then do not vectorise.
inline std::uint32_t WordOfFloat(std::uint32_t bits) noexcept {
    constexpr std::uint32_t one = 0x3F800000, infinity = 0x7F800000, highestWord = 0x7FFFFFFF;
    const std::uint32_t magnitude = bits & 0x7FFFFFFF;
    const std::uint32_t isInside = AllBitsIf(magnitude < one);
    const std::uint32_t isNumber = AllBitsIf(magnitude <= infinity);

    // Adding and taking off 1.5 * 2^52 leaves a double rounded to a whole number, and unlike lrint it vectorises.
    constexpr double rounder = 0x1.8p52;
    const double scaled = std::bit_cast<float>(bits & isInside) * 2147483648.0;
    const int rounded = static_cast<int>((scaled + rounder) - rounder);
    const std::uint32_t fullScale = highestWord + (bits >> 31);  // the sign makes it the lowest word
    return static_cast<std::uint32_t>(rounded) | (fullScale & isNumber & ~isInside);
}

}  // namespace velmodsp
