#include "audiofiles/VelmoDspSampleFormat.h"

#include <bit>
#include <cstdint>
#include <cstring>

#include "utils/VelmoDspCompilerChecks.h"

namespace velmodsp {
namespace {

enum class ByteOrder { Little, Big };
enum class Zero { AtZero, AtMiddle };

/// Bytes of one sample to its left-justified word and back. `Zero::AtMiddle` is the unsigned form, where 128 is
/// silence.
template <int Size, ByteOrder Order, Zero Offset = Zero::AtZero>
struct SampleCodec {
    static constexpr std::size_t size = Size;

    static int Decode(const unsigned char* bytes) noexcept {
        std::uint32_t word = 0;
        for (int i = 0; i < Size; ++i) word |= static_cast<std::uint32_t>(bytes[i]) << Shift(i);
        return static_cast<int>(word ^ SignFlip);
    }

    static void Encode(int word, unsigned char* bytes) noexcept {
        const std::uint32_t bits = static_cast<std::uint32_t>(word) ^ SignFlip;
        for (int i = 0; i < Size; ++i) bytes[i] = static_cast<unsigned char>(bits >> Shift(i));
    }

private:
    static constexpr std::uint32_t SignFlip = Offset == Zero::AtMiddle ? 0x80000000u : 0u;
    static constexpr int Shift(int i) { return 8 * (Order == ByteOrder::Big ? 3 - i : 4 - Size + i); }
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
int LoadWord(const void* source) noexcept {
    int word;
    std::memcpy(&word, source, sizeof word);
    return word;
}

void StoreWord(int word, void* dest) noexcept { std::memcpy(dest, &word, sizeof word); }

constexpr std::uint32_t AllBitsIf(bool condition) { return 0u - static_cast<std::uint32_t>(condition); }

/// Selects with masks made of the sample's bits: compilers turn comparisons of floats into branches here, NaN being one
/// more case, and then do not vectorise.
int WordOf(float sample) noexcept {
    constexpr std::uint32_t one = 0x3F800000, infinity = 0x7F800000, highestWord = 0x7FFFFFFF;
    const std::uint32_t bits = std::bit_cast<std::uint32_t>(sample);
    const std::uint32_t magnitude = bits & 0x7FFFFFFF;
    const std::uint32_t isInside = AllBitsIf(magnitude < one);
    const std::uint32_t isNumber = AllBitsIf(magnitude <= infinity);

    // Adding and taking off 1.5 * 2^52 leaves a double rounded to a whole number, and unlike lrint it vectorises.
    constexpr double rounder = 0x1.8p52;
    const double scaled = std::bit_cast<float>(bits & isInside) * 2147483648.0;
    const int rounded = static_cast<int>((scaled + rounder) - rounder);
    const std::uint32_t fullScale = highestWord + (bits >> 31);  // the sign makes it the lowest word
    return static_cast<int>(static_cast<std::uint32_t>(rounded) | (fullScale & isNumber & ~isInside));
}

}  // namespace

SampleFormat SampleFormatFor(unsigned int bitsPerSample, bool bigEndian) noexcept {
    switch (bitsPerSample) {
        case 8:
            return SampleFormat::Signed8;
        case 16:
            return bigEndian ? SampleFormat::Big16 : SampleFormat::Little16;
        case 24:
            return bigEndian ? SampleFormat::Big24 : SampleFormat::Little24;
        case 32:
            return bigEndian ? SampleFormat::Big32 : SampleFormat::Little32;
        default:
            return SampleFormat::None;
    }
}

std::size_t BytesPerSample(SampleFormat format) noexcept {
    std::size_t bytes = 0;
    WithCodec(format, [&](auto codec) { bytes = codec.size; });
    return bytes;
}

unsigned char SilenceByte(SampleFormat format) noexcept { return format == SampleFormat::Unsigned8 ? 128 : 0; }

void DecodeChannel(SampleFormat format, const unsigned char* source, std::size_t stride, std::size_t n,
                   int* words) noexcept {
    WithCodec(format, [=](auto codec) {
        for (std::size_t i = 0; i < n; ++i) StoreWord(codec.Decode(source + i * stride), words + i);
    });
}

void EncodeChannel(SampleFormat format, const int* words, std::size_t n, std::size_t stride,
                   unsigned char* dest) noexcept {
    WithCodec(format, [=](auto codec) {
        for (std::size_t i = 0; i < n; ++i) codec.Encode(LoadWord(words + i), dest + i * stride);
    });
}

void ConvertWordsToFloats(float* samples, std::size_t n) noexcept {
    for (std::size_t i = 0; i < n; ++i) samples[i] = static_cast<float>(LoadWord(samples + i)) * 0x1p-31f;
}

void ConvertFloatsToWords(const float* samples, std::size_t n, int* words) noexcept {
    for (std::size_t i = 0; i < n; ++i) words[i] = WordOf(samples[i]);
}

}  // namespace velmodsp
