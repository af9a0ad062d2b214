#pragma once

#include <cstddef>

#include "audiofiles/VelmoDspSampleFormat.h"

namespace velmodsp {

class FileReader;

/// Where and how the interleaved frames of a sound file lie in it.
struct FrameLayout {
    SampleFormat sampleFormat = SampleFormat::None;
    unsigned int numChannels = 0;
    unsigned long long bytesPerFrame = 0;    // may exceed the bytes of the channels' samples
    unsigned long long dataStart = 0;        // file offset of the first frame
    unsigned long long numFrames = 0;        // as the file's header claims
    unsigned long long numStoredFrames = 0;  // those of them that the file holds, the last one perhaps cut short
};

/// Number of frames of `layout` that a file of `fileSize` bytes holds, one that is cut short included.
unsigned long long CountStoredFrames(const FrameLayout& layout, unsigned long long fileSize) noexcept;

/// Reads interleaved frames into separate channels of 32-bit words, through a small buffer of fixed size: memory stays
/// the same for a file of any length and any frame size.
class FrameReader {
public:
    /// Reads `numFrames` frames from frame `start` on. What the header does not claim, the file does not hold or the
    /// format cannot convert becomes silence.
    /// @param channels one pointer for each channel of the layout, null to leave that channel out; then any further
    /// channels, which are filled with silence; then a null pointer. Each points at room for `numFrames` words.
    void Read(FileReader& input, const FrameLayout& layout, int** channels, unsigned long long numFrames,
              unsigned long long start) noexcept;

private:
    struct Block;
    void ReadBlock(FileReader& input, const FrameLayout& layout, const Block& block, int** channels) noexcept;

    static constexpr std::size_t BufferSize = 5760;
    unsigned char buffer[BufferSize];
};

}  // namespace velmodsp
