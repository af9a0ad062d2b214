#include "audiofiles/VelmoDspFrameReader.h"

#include <algorithm>
#include <cstring>

#include "files/VelmoDspFileReader.h"

namespace velmodsp {
namespace {

/// Reads up to `length` bytes, going on after a read that the system cut short.
/// @return the number of bytes read; fewer only at the end of the file or after an error
std::size_t ReadFully(FileReader& input, unsigned char* bytes, std::size_t length) noexcept {
    std::size_t total = 0;
    while (total < length) {
        const auto count = static_cast<std::ptrdiff_t>(input.Read(bytes + total, length - total));
        if (count <= 0) break;
        total += static_cast<std::size_t>(count);
    }
    return total;
}

void Silence(int* words, unsigned long long n) noexcept {
    if (words != nullptr) std::memset(words, 0, static_cast<std::size_t>(n) * sizeof(int));
}

}  // namespace

/// A run of whole frames, or of neighbouring channels of one frame, that fits the buffer.
struct FrameReader::Block {
    unsigned long long firstFrame;
    std::size_t numFrames;
    unsigned int firstChannel;
    unsigned int numChannels;
    std::size_t numBytes;
    unsigned long long destOffset;  // words
};

unsigned long long CountStoredFrames(const FrameLayout& layout, unsigned long long fileSize) noexcept {
    if (layout.bytesPerFrame == 0 || layout.dataStart == 0 || layout.dataStart >= fileSize) return 0;
    const unsigned long long bytes = fileSize - layout.dataStart;
    const unsigned long long frames = bytes / layout.bytesPerFrame + (bytes % layout.bytesPerFrame != 0 ? 1 : 0);
    return std::min(layout.numFrames, frames);
}

void FrameReader::Read(FileReader& input, const FrameLayout& layout, SampleForm form, int** channels,
                       unsigned long long numFrames, unsigned long long start) noexcept {
    // Only stored frames are looked up, so no position computed from a header can pass the end of the file.
    const unsigned long long stored = layout.sampleFormat == SampleFormat::None ? 0 : layout.numStoredFrames;
    const unsigned long long available = start < stored ? std::min(numFrames, stored - start) : 0;
    const unsigned int lastChannel = layout.numChannels;

    if (layout.bytesPerFrame <= BufferSize) {
        const std::size_t bytesPerFrame = static_cast<std::size_t>(layout.bytesPerFrame);
        for (unsigned long long done = 0; done < available;) {
            const auto n =
                static_cast<std::size_t>(std::min<unsigned long long>(BufferSize / bytesPerFrame, available - done));
            ReadBlock(input, layout, form, {start + done, n, 0, lastChannel, n * bytesPerFrame, done}, channels);
            done += n;
        }
    } else {
        const std::size_t sampleSize = BytesPerSample(layout.sampleFormat);
        for (unsigned long long done = 0; done < available; ++done) {
            for (unsigned int k = 0; k < lastChannel;) {
                const auto n =
                    static_cast<unsigned int>(std::min<std::size_t>(BufferSize / sampleSize, lastChannel - k));
                ReadBlock(input, layout, form, {start + done, 1, k, n, n * sampleSize, done}, channels);
                k += n;
            }
        }
    }

    for (unsigned int k = 0; k < layout.numChannels; ++k)
        if (channels[k] != nullptr) Silence(channels[k] + available, numFrames - available);
    for (int** extra = channels + layout.numChannels; *extra != nullptr; ++extra) Silence(*extra, numFrames);
}

void FrameReader::ReadBlock(FileReader& input, const FrameLayout& layout, SampleForm form, const Block& block,
                            int** channels) noexcept {
    const FrameFormat format = {layout.sampleFormat, block.numChannels, static_cast<std::size_t>(layout.bytesPerFrame)};
    int** const blockChannels = channels + block.firstChannel;
    const bool asTheyAre = AreFramesTheirChannel(format, form) && *blockChannels != nullptr;
    unsigned char* const bytes =
        asTheyAre ? reinterpret_cast<unsigned char*>(*blockChannels + block.destOffset) : buffer;

    input.SetPosition(static_cast<long long>(layout.dataStart + block.firstFrame * layout.bytesPerFrame +
                                             block.firstChannel * BytesPerSample(layout.sampleFormat)));
    const std::size_t count = ReadFully(input, bytes, block.numBytes);
    std::memset(bytes + count, SilenceByte(layout.sampleFormat), block.numBytes - count);
    if (!asTheyAre)
        DecodeFrames(format, bytes, block.numFrames, form, blockChannels, static_cast<std::size_t>(block.destOffset));
}

}  // namespace velmodsp
