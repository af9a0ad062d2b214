#pragma once

#include <cstddef>

#include "audiofiles/VelmoDspFrameConversion.h"
#include "audiofiles/VelmoDspFrameLayout.h"

namespace velmodsp {

class FileReader;

/// Reads interleaved frames into separate channels of 32-bit words, through a small buffer of fixed size: memory stays
/// the same for a file of any length and any frame size.
class FrameReader {
public:
    /// Reads `numFrames` frames from frame `start` on. What the header does not claim, the file does not hold or the
    /// format cannot convert becomes silence.
    /// @param channels one pointer for each channel of the layout, null to leave that channel out; then any further
    /// channels, which are filled with silence; then a null pointer. Each points at room for `numFrames` words.
    ///
    /// Where the file turns out to end earlier than the layout has it, because it was cut short since it was opened or
    /// cannot be read, `layout.numStoredFrames` goes down to what there is.
    void Read(FileReader& input, FrameLayout& layout, SampleForm form, int** channels, unsigned long long numFrames,
              unsigned long long start) noexcept;

private:
    struct Block;
    std::size_t ReadFrames(FileReader& input, const FrameLayout& layout, SampleForm form, int** channels,
                           unsigned long long firstFrame, std::size_t numFrames,
                           unsigned long long destOffset) noexcept;
    std::size_t ReadBlock(FileReader& input, const FrameLayout& layout, SampleForm form, const Block& block,
                          int** channels) noexcept;

    static constexpr std::size_t BufferSize = 65536;
    unsigned char buffer[BufferSize];
};

}  // namespace velmodsp
