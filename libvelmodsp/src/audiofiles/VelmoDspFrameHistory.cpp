#include "audiofiles/VelmoDspFrameHistory.h"

#include <algorithm>
#include <cstring>

namespace velmodsp {

FrameHistory::Room FrameHistory::MakeRoom() {
    constexpr std::size_t MaxFrames = 1024;
    const auto capacity = static_cast<std::size_t>(Capacity());
    if (words.Size() == 0) ResizeVector(words, static_cast<unsigned long>(capacity * numChannels));

    const std::size_t numFrames = std::min(MaxFrames, capacity - Slot(end));
    if (end - begin > capacity - numFrames) begin = end - (capacity - numFrames);
    return {words.Data() + Slot(end) * numChannels, numFrames};
}

std::size_t FrameHistory::CopyTo(int** channels, unsigned long long offset, unsigned long long first,
                                 unsigned long long maxFrames) const noexcept {
    const std::size_t slot = Slot(first);
    const auto n = static_cast<std::size_t>(std::min({maxFrames, end - first, Capacity() - slot}));
    for (unsigned int k = 0; k < numChannels; ++k) {
        if (channels[k] == nullptr) continue;
        const int* source = words.Data() + slot * numChannels + k;
        for (std::size_t i = 0; i < n; ++i)  // the destination may be the storage of floats
            std::memcpy(channels[k] + offset + i, source + i * numChannels, sizeof(int));
    }
    return n;
}

}  // namespace velmodsp
