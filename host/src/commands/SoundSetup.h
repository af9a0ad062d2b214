#pragma once

#include <memory>

#include "commands/RunOptions.h"
#include "commands/RunSchedule.h"
#include "commands/SoundRun.h"

namespace velmohost {

class Box;
class SoundSink;
class SoundSource;

// The steps from the options of `run` and `repl` to sound that can flow. Each tells the user what it finds odd. Main
// thread.

/// @throws UsageError when --in and --out are one file
void CheckSoundFiles(const RunOptions& options);

/// The sound file for the inlets, null without --in.
/// @throws SoundError
std::unique_ptr<SoundSource> OpenSource(const RunOptions& options);

/// Rate, length and vector size: of the file, or of the options when `source` is null.
/// @throws UsageError when --seconds is too long a time
RunLength GetRunLength(const RunOptions& options, const SoundSource* source);

/// Which inlets and outlets are connected.
/// @throws UsageError for a list that names one past the last
SoundRun::Connections GetConnections(const RunOptions& options, const SoundSource* source, const Box& box);

/// @throws UsageError when the options name inlets or outlets that the object does not have, or ask for a sound file of
/// an object without signal outlets
void CheckConnections(const RunOptions& options, const Box& box);

/// Tells of channels of the file that no inlet takes.
void TellOfUnusedChannels(const RunOptions& options, const SoundSource& source, const Box& box);

/// A good number of frames to process at a time, in whole vectors.
unsigned long ChooseBatchFrames(const RunLength& length, const SoundSource* source, const Box& box);

/// The sound file for the outlets, null without --out.
/// @throws SoundError
std::unique_ptr<SoundSink> OpenSink(const RunOptions& options, const RunLength& length, const Box& box,
                                    unsigned long batchFrames);

/// Completes the file, and tells when an older one went to the trash.
/// @throws SoundError
void FinishSink(SoundSink& sink, const RunOptions& options);

/// Tells, at the end, of a file that turned out to be shorter than it seemed when it was opened.
void TellOfLostFrames(const RunOptions& options, const SoundSource* source);

/// Tells of messages that were not sent because the sound ended before their time.
void TellOfLateMessages(const SoundRun& run);

}  // namespace velmohost
