#include "audiofiles/VelmoDspFrameConversion.h"

#include <algorithm>
#include <type_traits>

#include "audiofiles/VelmoDspSampleCodec.h"
#include "audiofiles/VelmoDspSampleVector.h"

namespace velmodsp {
namespace {

constexpr unsigned int VectorSize = 4;  // samples

/// Frames are converted four channels at a time. They are taken in tiles, so that those of a tile stay in the first
/// cache from its first four channels to its last.
constexpr std::size_t BytesPerTile = 16384;
constexpr std::size_t MaximumFramesPerTile = 1024;

std::size_t FramesPerTile(std::size_t bytesPerFrame) {
    const std::size_t frames = std::clamp<std::size_t>(BytesPerTile / bytesPerFrame, VectorSize, MaximumFramesPerTile);
    return frames / VectorSize * VectorSize;
}

/// How many of `numFrames` frames, from the first on, vectors may touch when they reach from the start of a frame to
/// `vectorEnd` bytes behind it, without passing the end of the last frame.
std::size_t FramesForVectors(std::size_t numFrames, std::size_t bytesPerFrame, std::size_t vectorEnd) {
    const std::size_t framesBehind = (vectorEnd - 1) / bytesPerFrame;
    return numFrames > framesBehind ? (numFrames - framesBehind) / VectorSize * VectorSize : 0;
}

/// Calls `function(first, n)` for tiles of `n` frames from `first` on, which together are those from `start` to `end`.
template <typename Function>
void ForEachTile(std::size_t start, std::size_t end, std::size_t bytesPerFrame, Function function) {
    const std::size_t tile = FramesPerTile(bytesPerFrame);
    for (std::size_t first = start; first < end; first += tile) function(first, std::min(tile, end - first));
}

/// One channel, sample by sample, from frame `start` to `end`. `frames` points at its sample of the first frame.
template <class Codec, SampleForm Form>
struct OneByOne {
    static void Decode(const unsigned char* frames, std::size_t bytesPerFrame, std::size_t start, std::size_t end,
                       int* dest) noexcept {
        for (std::size_t i = start; i < end; ++i) {
            const std::uint32_t word = Codec::Decode(frames + i * bytesPerFrame);
            StoreWord(Form == SampleForm::Floats ? FloatOfWord(word) : word, dest + i);
        }
    }

    static void Encode(const int* source, std::size_t start, std::size_t end, std::size_t bytesPerFrame,
                       unsigned char* frames) noexcept {
        for (std::size_t i = start; i < end; ++i) {
            const std::uint32_t word = LoadWord(source + i);
            Codec::Encode(Form == SampleForm::Floats ? WordOfFloat(word) : word, frames + i * bytesPerFrame);
        }
    }
};

/// Vectors of samples, with results that are the same bit for bit. All counts of frames are multiples of the vector's
/// size.
template <class Vector, class Codec, SampleForm Form>
struct Vectors {
    static constexpr std::size_t sampleSize = Codec::size;

    static auto Decode(const unsigned char* bytes) noexcept {
        auto words = Vector::template LoadSamples<Codec::size>(bytes);
        if constexpr (Codec::isBigEndian) words = Vector::template ReverseSamples<Codec::size>(words);
        if constexpr (Codec::isUnsigned) words = Vector::FlipSigns(words);
        if constexpr (Form == SampleForm::Floats) words = Vector::FloatsOfWords(words);
        return words;
    }

    /// The file's words, with its order of bytes, for samples in memory.
    static auto Encode(const int* samples) noexcept {
        auto words = Vector::Load(samples);
        if constexpr (Form == SampleForm::Floats) words = Vector::WordsOfFloats(words);
        if constexpr (Codec::isUnsigned) words = Vector::FlipSigns(words);
        if constexpr (Codec::isBigEndian) words = Vector::template ReverseSamples<Codec::size>(words);
        return words;
    }

    template <class Words>
    static void Store(Words encoded, unsigned char* bytes) noexcept {
        Vector::template StoreSamples<Codec::size>(encoded, bytes);
    }

    static void DecodeMono(const unsigned char* frames, std::size_t numFrames, int* dest) noexcept {
        for (std::size_t i = 0; i < numFrames; i += VectorSize)
            Vector::Store(Decode(frames + i * sampleSize), dest + i);
    }

    static void EncodeMono(const int* source, std::size_t numFrames, unsigned char* frames) noexcept {
        for (std::size_t i = 0; i < numFrames; i += VectorSize) Store(Encode(source + i), frames + i * sampleSize);
    }

    static void DecodeStereo(const unsigned char* frames, std::size_t numFrames, int* left, int* right) noexcept {
        for (std::size_t i = 0; i < numFrames; i += VectorSize) {
            const unsigned char* const bytes = frames + 2 * i * sampleSize;
            auto a = Decode(bytes), b = Decode(bytes + VectorSize * sampleSize);
            Vector::Unzip(a, b);
            Vector::Store(a, left + i);
            Vector::Store(b, right + i);
        }
    }

    static void EncodeStereo(const int* left, const int* right, std::size_t numFrames, unsigned char* frames) noexcept {
        for (std::size_t i = 0; i < numFrames; i += VectorSize) {
            unsigned char* const bytes = frames + 2 * i * sampleSize;
            auto a = Encode(left + i), b = Encode(right + i);
            Vector::Zip(a, b);
            Store(a, bytes);
            Store(b, bytes + VectorSize * sampleSize);
        }
    }

    /// Four neighbouring channels. `frames` points at the first one's sample.
    static void DecodeFour(const unsigned char* frames, std::size_t bytesPerFrame, std::size_t numFrames,
                           int* const (&dest)[4]) noexcept {
        for (std::size_t i = 0; i < numFrames; i += VectorSize) {
            const unsigned char* const bytes = frames + i * bytesPerFrame;
            typename Vector::Words rows[] = {Decode(bytes), Decode(bytes + bytesPerFrame),
                                             Decode(bytes + 2 * bytesPerFrame), Decode(bytes + 3 * bytesPerFrame)};
            Vector::Transpose(rows);
            for (std::size_t k = 0; k < 4; ++k) Vector::Store(rows[k], dest[k] + i);
        }
    }

    static void EncodeFour(const int* const (&source)[4], std::size_t bytesPerFrame, std::size_t numFrames,
                           unsigned char* frames) noexcept {
        for (std::size_t i = 0; i < numFrames; i += VectorSize) {
            typename Vector::Words rows[] = {Encode(source[0] + i), Encode(source[1] + i), Encode(source[2] + i),
                                             Encode(source[3] + i)};
            Vector::Transpose(rows);
            for (std::size_t k = 0; k < 4; ++k) Store(rows[k], frames + (i + k) * bytesPerFrame);
        }
    }
};

/// Conversion of frames of any number of channels: by `Vector` as far as it goes, unless it is void, then one by one.
template <class Vector, class Codec, SampleForm Form>
struct FrameCodec {
    using Many = Vectors<Vector, Codec, Form>;
    using One = OneByOne<Codec, Form>;
    static constexpr bool hasVector = !std::is_void_v<Vector>;
    static constexpr std::size_t sampleSize = Codec::size;

    static void Decode(const FrameFormat& format, const unsigned char* frames, std::size_t numFrames,
                       int* const* channels, std::size_t offset) noexcept {
        std::size_t done = 0;
        if constexpr (hasVector) {
            const bool hasGaps = format.bytesPerFrame != format.numChannels * sampleSize;
            const std::size_t n = numFrames / VectorSize * VectorSize;
            if (format.numChannels == 1 && !hasGaps && channels[0] != nullptr) {
                Many::DecodeMono(frames, n, channels[0] + offset);
                done = n;
            } else if (format.numChannels == 2 && !hasGaps && channels[0] != nullptr && channels[1] != nullptr) {
                Many::DecodeStereo(frames, n, channels[0] + offset, channels[1] + offset);
                done = n;
            }
        }
        ForEachTile(done, numFrames, format.bytesPerFrame, [&](std::size_t first, std::size_t n) {
            DecodeTile(format, frames + first * format.bytesPerFrame, n, channels, offset + first);
        });
    }

    static void Encode(const FrameFormat& format, unsigned char* frames, std::size_t numFrames,
                       const int* const* channels, std::size_t offset) noexcept {
        std::size_t done = 0;
        if constexpr (hasVector) {
            const std::size_t n = numFrames / VectorSize * VectorSize;
            if (format.numChannels == 1) {
                Many::EncodeMono(channels[0] + offset, n, frames);
                done = n;
            } else if (format.numChannels == 2) {
                Many::EncodeStereo(channels[0] + offset, channels[1] + offset, n, frames);
                done = n;
            }
        }
        ForEachTile(done, numFrames, format.bytesPerFrame, [&](std::size_t first, std::size_t n) {
            EncodeTile(format, frames + first * format.bytesPerFrame, n, channels, offset + first);
        });
    }

private:
    static void DecodeTile(const FrameFormat& format, const unsigned char* frames, std::size_t numFrames,
                           int* const* channels, std::size_t offset) noexcept {
        for (unsigned int first = 0; first < format.numChannels; first += 4) {
            int unused[MaximumFramesPerTile];
            int* dest[4] = {unused, unused, unused, unused};
            const unsigned int count = std::min(4u, format.numChannels - first);
            for (unsigned int k = 0; k < count; ++k)
                if (channels[first + k] != nullptr) dest[k] = channels[first + k] + offset;
            if (std::all_of(dest, dest + 4, [&](const int* place) { return place == unused; })) continue;

            const unsigned char* const bytes = frames + first * sampleSize;
            std::size_t done = 0;
            if constexpr (hasVector) {
                done = FramesForVectors(numFrames, format.bytesPerFrame, (first + 4) * sampleSize);
                Many::DecodeFour(bytes, format.bytesPerFrame, done, dest);
            }
            for (unsigned int k = 0; k < count; ++k)
                One::Decode(bytes + k * sampleSize, format.bytesPerFrame, done, numFrames, dest[k]);
        }
    }

    static void EncodeTile(const FrameFormat& format, unsigned char* frames, std::size_t numFrames,
                           const int* const* channels, std::size_t offset) noexcept {
        // The last channels come first: when they are fewer than four, their vectors spoil the next frame's first ones.
        const unsigned int numFours = (format.numChannels + 3) / 4;
        for (unsigned int first = 4 * numFours; first > 0;) {
            first -= 4;
            const unsigned int count = std::min(4u, format.numChannels - first);
            const int* source[4];
            for (unsigned int k = 0; k < 4; ++k) source[k] = channels[first + std::min(k, count - 1)] + offset;

            unsigned char* const bytes = frames + first * sampleSize;
            std::size_t done = 0;
            if constexpr (hasVector) {
                done = FramesForVectors(numFrames, format.bytesPerFrame, (first + 4) * sampleSize);
                Many::EncodeFour(source, format.bytesPerFrame, done, bytes);
            }
            for (unsigned int k = 0; k < count; ++k)
                One::Encode(source[k], done, numFrames, format.bytesPerFrame, bytes + k * sampleSize);
        }
    }
};

/// Calls `function` with the `FrameCodec` of the format and form.
template <typename Function>
void WithFrameCodec(SampleFormat format, SampleForm form, Function function) {
    WithCodec(format, [&]<class Codec>(Codec) {
        if (form == SampleForm::Floats)
            function(FrameCodec<SampleVector, Codec, SampleForm::Floats>());
        else
            function(FrameCodec<SampleVector, Codec, SampleForm::Words>());
    });
}

}  // namespace

void DecodeFrames(const FrameFormat& format, const unsigned char* frames, std::size_t numFrames, SampleForm form,
                  int* const* channels, std::size_t offset) noexcept {
    WithFrameCodec(format.sampleFormat, form,
                   [&](auto codec) { codec.Decode(format, frames, numFrames, channels, offset); });
}

void EncodeFrames(const FrameFormat& format, unsigned char* frames, std::size_t numFrames, SampleForm form,
                  const int* const* channels, std::size_t offset) noexcept {
    WithFrameCodec(format.sampleFormat, form,
                   [&](auto codec) { codec.Encode(format, frames, numFrames, channels, offset); });
}

bool AreFramesTheirChannel(const FrameFormat& format, SampleForm form) noexcept {
    return format.numChannels == 1 && format.bytesPerFrame == sizeof(int) &&
           format.sampleFormat == SampleFormat::Little32 && form == SampleForm::Words;
}

}  // namespace velmodsp
