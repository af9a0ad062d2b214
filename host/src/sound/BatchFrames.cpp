#include "sound/BatchFrames.h"

#include <algorithm>

namespace velmohost {

unsigned long ChooseBatchFrames(unsigned long vectorSize, unsigned numChannels) {
    constexpr unsigned long kMaxFrames = 16384, kMaxSamples = 65536;
    const unsigned long frames = std::min(kMaxFrames, kMaxSamples / std::max(numChannels, 1u));
    return std::max(1ul, frames / vectorSize) * vectorSize;
}

}  // namespace velmohost
