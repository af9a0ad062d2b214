#include "commands/SoundSetup.h"

#include <algorithm>
#include <cmath>

#include "box/Box.h"
#include "commands/ChannelList.h"
#include "commands/Notice.h"
#include "commands/UsageError.h"
#include "sound/BatchFrames.h"
#include "sound/SoundPath.h"
#include "sound/SoundSink.h"
#include "sound/SoundSource.h"

namespace velmohost {
namespace {

/// "1", "3 to 4".
std::string ListRange(unsigned first, unsigned last) {
    return std::to_string(first) + (first == last ? "" : " to " + std::to_string(last));
}

std::vector<bool> GetConnectedInlets(const RunOptions& options, const SoundSource* source, unsigned numInlets) {
    if (options.inlets) return ParseChannelList("--inlets", *options.inlets, numInlets);
    std::vector<bool> connected(numInlets, true);
    if (source == nullptr) return connected;
    for (unsigned inlet = source->NumChannels(); inlet < numInlets; ++inlet) connected[inlet] = false;
    return connected;
}

void TellOfMissingFrames(const RunOptions& options, const SoundSource& source) {
    PrintNotice(*options.in + " is cut short: " + Count(source.NumMissingFrames(), "frame") + " of " +
                std::to_string(source.LengthInFrames()) + " are missing and read as silence");
}

unsigned CountChannels(const SoundSource* source, const Box& box) {
    return std::max({source != nullptr ? source->NumChannels() : 0, box.NumSignalInlets(), box.NumSignalOutlets()});
}

}  // namespace

void CheckSoundFiles(const RunOptions& options) {
    if (options.in && options.out && IsSameFile(*options.in, *options.out)) {
        throw UsageError("--in and --out are the same file: " + *options.out);
    }
}

std::unique_ptr<SoundSource> OpenSource(const RunOptions& options) {
    if (!options.in) return nullptr;
    auto source = std::make_unique<SoundSource>(*options.in);
    if (source->LengthInFrames() == 0) {
        PrintNotice(*options.in + " holds no sound, or holds it in an encoding that is not known here");
    }
    if (source->NumMissingFrames() > 0) TellOfMissingFrames(options, *source);
    return source;
}

RunLength GetRunLength(const RunOptions& options, const SoundSource* source) {
    const auto vectorSize = static_cast<unsigned long>(options.block);
    if (source != nullptr) return {source->Samplerate(), source->LengthInFrames(), vectorSize};
    const double frames = std::round(options.seconds * options.samplerate);
    constexpr double kMaxFrames = 9007199254740992.0;  // 2^53: a double still counts single frames
    if (frames > kMaxFrames) throw UsageError("--seconds is too long a time");
    return {options.samplerate, static_cast<std::uint64_t>(frames), vectorSize};
}

SoundRun::Connections GetConnections(const RunOptions& options, const SoundSource* source, const Box& box) {
    const unsigned numOutlets = box.NumSignalOutlets();
    return {GetConnectedInlets(options, source, box.NumSignalInlets()),
            options.outlets ? ParseChannelList("--outlets", *options.outlets, numOutlets)
                            : std::vector<bool>(numOutlets, true)};
}

void CheckConnections(const RunOptions& options, const Box& box) {
    GetConnections(options, nullptr, box);
    if (options.out && box.NumSignalOutlets() == 0) {
        throw UsageError(box.ClassName() + " has no signal outlets for --out");
    }
}

void TellOfUnusedChannels(const RunOptions& options, const SoundSource& source, const Box& box) {
    const unsigned numInlets = box.NumSignalInlets(), numChannels = source.NumChannels();
    if (numChannels <= numInlets) return;
    const std::string range = ListRange(numInlets + 1, numChannels);
    PrintNotice(*options.in + " has " + Count(numChannels, "channel") + ", but " + box.ClassName() + " has " +
                Count(numInlets, "signal inlet") + ": " +
                (numChannels - numInlets == 1 ? "channel " + range + " is" : "channels " + range + " are") +
                " left out");
}

std::unique_ptr<SoundSink> OpenSink(const RunOptions& options, const RunLength& length, const Box& box,
                                    unsigned long batchFrames) {
    if (!options.out) return nullptr;
    return std::make_unique<SoundSink>(
        SoundSink::Format{*options.out, length.samplerate, box.NumSignalOutlets(), options.bits, length.frames},
        batchFrames);
}

void FinishSink(SoundSink& sink, const RunOptions& options) {
    if (sink.Finish()) PrintNotice("moved the file that was " + *options.out + " to the trash");
}

unsigned long ChooseBatchFrames(const RunLength& length, const SoundSource* source, const Box& box) {
    return ChooseBatchFrames(length.vectorSize, CountChannels(source, box));
}

void TellOfLostFrames(const RunOptions& options, const SoundSource* source) {
    if (source != nullptr && source->HasLostFrames()) TellOfMissingFrames(options, *source);
}

void TellOfLateMessages(const SoundRun& run) {
    for (const TimedMessage& message : run.MessagesLeft()) {
        PrintNotice("\"" + message.text + "\" was not sent: its time lies after the end");
    }
}

}  // namespace velmohost
