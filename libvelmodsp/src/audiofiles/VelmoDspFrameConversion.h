#pragma once

#include <cstddef>

#include "audiofiles/VelmoDspSampleFormat.h"

namespace velmodsp {

/// What the 32 bits of a channel's sample in memory are: the file's own value (an integer left-justified, a float's
/// bits), or a float of -1 to 1 that stands for an integer in the file.
enum class SampleForm { Words, Floats };

/// How samples lie in interleaved frames.
struct FrameFormat {
    SampleFormat sampleFormat = SampleFormat::None;
    unsigned int numChannels = 0;
    std::size_t bytesPerFrame = 0;  // from one frame to the next; may exceed the bytes of the channels' samples
};

/// Takes `numFrames` frames apart. Real-time safe.
/// @param channels one pointer for each channel, null to leave that channel out. Each one's samples go to 32-bit places
/// from `channels[k] + offset` on, which may be the storage of floats
void DecodeFrames(const FrameFormat& format, const unsigned char* frames, std::size_t numFrames, SampleForm form,
                  int* const* channels, std::size_t offset) noexcept;

/// The reverse of `DecodeFrames`, for all channels and frames without gaps. Floats are rounded to 32 bits, a tie to the
/// even integer; what is beyond -1 or 1, infinities included, becomes full scale, and NaN becomes 0. Then the bits
/// below the format's depth are cut off. Real-time safe.
void EncodeFrames(const FrameFormat& format, unsigned char* frames, std::size_t numFrames, SampleForm form,
                  const int* const* channels, std::size_t offset) noexcept;

/// Whether the frames are, byte for byte, the one channel that they hold, so that there is nothing to convert.
bool AreFramesTheirChannel(const FrameFormat& format, SampleForm form) noexcept;

}  // namespace velmodsp
