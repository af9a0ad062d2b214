#include "audiofiles/VelmoDspSampleFormat.h"

#include "audiofiles/VelmoDspSampleCodec.h"

namespace velmodsp {

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
    WithCodec(format, [&](auto codec) { bytes = static_cast<std::size_t>(codec.size); });
    return bytes;
}

unsigned char SilenceByte(SampleFormat format) noexcept { return format == SampleFormat::Unsigned8 ? 128 : 0; }

void ConvertWordsToFloats(float* samples, std::size_t n) noexcept {
    for (std::size_t i = 0; i < n; ++i) StoreWord(FloatOfWord(LoadWord(samples + i)), samples + i);
}

}  // namespace velmodsp
