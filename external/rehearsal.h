#pragma once

/// Prepares the process for the first block: a stand-in for the object performs every pattern of bad samples in every
/// way, so that the code and tables that the audio thread will need are in memory, and the library functions that they
/// call are found. Otherwise the system would see to that in the middle of the first block, from the disk if need be.
/// Objects stay as they are, and nothing is posted. Main thread; allocates; takes less than a tenth of a millisecond.
/// @throws Exception or std::bad_alloc when memory runs out
void tesk_fixnan_rehearse();
