#pragma once

#include "audiofiles/VelmoDspSampleFormat.h"

namespace velmodsp {

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

}  // namespace velmodsp
