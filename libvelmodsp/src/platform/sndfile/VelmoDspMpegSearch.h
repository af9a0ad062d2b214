#pragma once

#include <cstdint>
#include <vector>

namespace velmodsp {

/// File offsets of what looks like headers of MPEG audio frames. Such bytes occur in any data, so only those are listed
/// that have the most fellows of the same version, layer and sample rate, as the frames of a stream have.
/// @param descriptor of the open file; it stands elsewhere afterwards
std::vector<std::int64_t> FindMpegFrames(int descriptor);

}  // namespace velmodsp
