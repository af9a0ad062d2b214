#pragma once

#include <cstddef>

namespace velmodsp {

/// How one sample lies in a sound file.
///
/// In memory a sample on its way from or to a file is a 32-bit word: an integer sample left-justified in a signed
/// integer (full scale is 2^31), a float sample as its bits.
enum class SampleFormat {
    None,  // a depth that cannot be converted; it reads as silence
    Unsigned8,
    Signed8,
    Little16,
    Big16,
    Little24,
    Big24,
    Little32,
    Big32,
};

/// The signed format of this depth and byte order; `None` when the depth is not 8, 16, 24 or 32 bits.
SampleFormat SampleFormatFor(unsigned int bitsPerSample, bool bigEndian) noexcept;

/// Bytes of one sample in the file, 0 for `None`.
std::size_t BytesPerSample(SampleFormat format) noexcept;

/// The byte that silence is made of.
unsigned char SilenceByte(SampleFormat format) noexcept;

/// Takes one channel out of interleaved frames: word i from the bytes at `source + i * stride`. Real-time safe.
/// @param words room for `n` 32-bit words; may be the storage of floats
/// @param stride bytes from one sample of the channel to its next
void DecodeChannel(SampleFormat format, const unsigned char* source, std::size_t stride, std::size_t n,
                   int* words) noexcept;

/// The reverse of `DecodeChannel`: word i goes to `dest + i * stride`; bits below the format's depth are cut off.
void EncodeChannel(SampleFormat format, const int* words, std::size_t n, std::size_t stride,
                   unsigned char* dest) noexcept;

/// Turns the `n` left-justified integer words that lie in `samples` into floats of -1 to 1 in the same place.
void ConvertWordsToFloats(float* samples, std::size_t n) noexcept;

/// Floats to left-justified integers, rounded to the nearest, a tie to the even one. What is beyond -1 or 1, infinities
/// included, becomes full scale; NaN becomes 0.
void ConvertFloatsToWords(const float* samples, std::size_t n, int* words) noexcept;

}  // namespace velmodsp
