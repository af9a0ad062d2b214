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

/// How many of the frames that are to be read go through the buffer at a time; a larger one goes in pieces.
std::size_t CountFramesAtOnce(const FrameLayout& layout, unsigned long long numFrames,
                              std::size_t bufferSize) noexcept {
    const unsigned long long most = std::max(bufferSize / layout.bytesPerFrame, 1ull);
    return static_cast<std::size_t>(std::min(most, numFrames));
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

void FrameReader::Read(FileReader& input, FrameLayout& layout, SampleForm form, int** channels,
                       unsigned long long numFrames, unsigned long long start) noexcept {
    // Only stored frames are looked up, so no position computed from a header can pass the end of the file.
    const unsigned long long stored = layout.sampleFormat == SampleFormat::None ? 0 : layout.numStoredFrames;
    const unsigned long long available = start < stored ? std::min(numFrames, stored - start) : 0;
    unsigned long long done = 0;
    while (done < available) {
        const std::size_t n = CountFramesAtOnce(layout, available - done, BufferSize);
        const std::size_t count = ReadFrames(input, layout, form, channels, start + done, n, done);
        done += count;
        if (count == n) continue;
        layout.numStoredFrames = start + done;
        break;
    }

    for (unsigned int k = 0; k < layout.numChannels; ++k)
        if (channels[k] != nullptr) Silence(channels[k] + done, numFrames - done);
    for (int** extra = channels + layout.numChannels; *extra != nullptr; ++extra) Silence(*extra, numFrames);
}

/// Whole frames as far as they fit the buffer, or one that is larger, in runs of neighbouring channels.
/// @return the number of frames of which the file holds at least the beginning
std::size_t FrameReader::ReadFrames(FileReader& input, const FrameLayout& layout, SampleForm form, int** channels,
                                    unsigned long long firstFrame, std::size_t numFrames,
                                    unsigned long long destOffset) noexcept {
    const auto bytesPerFrame = static_cast<std::size_t>(layout.bytesPerFrame);
    if (layout.bytesPerFrame <= BufferSize) {
        const Block block = {firstFrame, numFrames, 0, layout.numChannels, numFrames * bytesPerFrame, destOffset};
        return (ReadBlock(input, layout, form, block, channels) + bytesPerFrame - 1) / bytesPerFrame;
    }
    const std::size_t sampleSize = BytesPerSample(layout.sampleFormat);
    std::size_t count = 0;
    for (unsigned int k = 0; k < layout.numChannels;) {
        const auto n =
            static_cast<unsigned int>(std::min<std::size_t>(BufferSize / sampleSize, layout.numChannels - k));
        count += ReadBlock(input, layout, form, {firstFrame, 1, k, n, n * sampleSize, destOffset}, channels);
        k += n;
    }
    return count > 0 ? 1 : 0;
}

/// @return the number of bytes that the file holds of the block; the others are silence
std::size_t FrameReader::ReadBlock(FileReader& input, const FrameLayout& layout, SampleForm form, const Block& block,
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
    return count;
}

}  // namespace velmodsp
