#pragma once

#include <cstddef>

#include "math/VelmoDspVector.h"

namespace velmodsp {

/// The frames that a decoder gave last: some 65536 of them, or 8192 where there are many channels. Decoders go forward
/// only, or go back at a high price; readers go back all the time, one channel after the other or by overlapping
/// blocks.
///
/// Frames are 32-bit words, the channels side by side. One thread at a time.
class FrameHistory {
public:
    explicit FrameHistory(unsigned int channelCount) : numChannels(channelCount) {}

    /// Forgets everything; `frame` is the next one to come.
    void StartAt(unsigned long long frame) noexcept { begin = end = frame; }

    /// The frame after the last one that came.
    unsigned long long GetEnd() const noexcept { return end; }
    bool Holds(unsigned long long frame) const noexcept { return begin <= frame && frame < end; }
    bool IsBefore(unsigned long long frame) const noexcept { return end <= frame; }

    /// Where the next frames are to be put before `Append`. What they displace is forgotten.
    struct Room {
        int* words;
        std::size_t numFrames;
    };
    /// @throws Exception when there is no memory, which is taken at the first call
    Room MakeRoom();
    /// Takes in the first `numFrames` frames that were put into the room.
    void Append(std::size_t numFrames) noexcept { end += numFrames; }

    /// Copies frames to separate channels, up to a place where they do not lie in one piece.
    /// @param first a frame that is held
    /// @param channels one pointer per channel, null to leave that channel out; words are written from `offset` on
    /// @return frames copied, at least 1 and at most `maxFrames`
    std::size_t CopyTo(int** channels, unsigned long long offset, unsigned long long first,
                       unsigned long long maxFrames) const noexcept;

private:
    unsigned long long Capacity() const noexcept { return numChannels < 33 ? 65536 : 8192; }  // frames
    std::size_t Slot(unsigned long long frame) const noexcept { return static_cast<std::size_t>(frame % Capacity()); }

    const unsigned int numChannels;
    unsigned long long begin = 0, end = 0;  // frames [begin, end) are held, each in its slot
    Vector<int> words;
};

}  // namespace velmodsp
