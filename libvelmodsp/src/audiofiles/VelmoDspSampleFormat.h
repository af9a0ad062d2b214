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

/// Turns the `n` left-justified integer words that lie in `samples` into floats of -1 to 1 in the same place.
void ConvertWordsToFloats(float* samples, std::size_t n) noexcept;

}  // namespace velmodsp
