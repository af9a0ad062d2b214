#pragma once

namespace velmohost {

/// A good number of frames to read, process and write at a time, in whole vectors: enough that handing a batch over and
/// calling the system cost little beside the work itself, but not more samples of all channels together than the
/// processor's caches hold.
/// @param vectorSize samples of a signal vector, at least 1
/// @param numChannels the most channels that any part of the work has
unsigned long ChooseBatchFrames(unsigned long vectorSize, unsigned numChannels);

}  // namespace velmohost
