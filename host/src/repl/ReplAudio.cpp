#include "repl/ReplAudio.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <thread>
#include <utility>

#include "box/Box.h"
#include "commands/Interruption.h"
#include "commands/SoundRun.h"
#include "commands/SoundSetup.h"
#include "commands/UsageError.h"
#include "sound/SoundSink.h"
#include "sound/SoundSource.h"

namespace velmohost {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::uint64_t kEndlessFrames = std::uint64_t{1} << 62;
constexpr double kMaxWaitSeconds = 86400.0;
constexpr double kMaxLagSeconds = 1.0;  // what a program that was stopped does not catch up with
constexpr std::chrono::milliseconds kPollInterval{10};

}  // namespace

/// Sound on its way, from one start to the next stop.
struct ReplAudio::Flow {
    Flow(const RunOptions& options, Box& box, ReplClock clock)
        : source(OpenSource(options)), length(GetRunLength(options, source.get())) {
        if (source) TellOfUnusedChannels(options, *source, box);
        const unsigned long batchFrames = ChooseBatchFrames(length, source.get(), box);
        const RunLength endless{length.samplerate, kEndlessFrames, length.vectorSize};
        const std::uint64_t framesKnown = clock == ReplClock::Script ? length.frames : 0;
        sink = OpenSink(options, {length.samplerate, framesKnown, length.vectorSize}, box, batchFrames);
        run = std::make_unique<SoundRun>(box, endless, GetConnections(options, source.get(), box), batchFrames,
                                         ScheduleMessages(options.atTimes, endless), source.get(), sink.get());
    }

    /// The first frame of a vector at or after a time from now.
    std::uint64_t FrameAfter(double seconds) const {
        const double vectors = std::ceil(seconds * length.samplerate / static_cast<double>(length.vectorSize));
        return run->Position() + static_cast<std::uint64_t>(vectors) * length.vectorSize;
    }

    /// The last whole vector that is due by now.
    std::uint64_t FrameDue() {
        const double lag = SecondsSinceStart() - static_cast<double>(run->Position()) / length.samplerate;
        if (lag > kMaxLagSeconds)
            start +=
                std::chrono::duration_cast<SteadyClock::duration>(std::chrono::duration<double>(lag - kMaxLagSeconds));
        const double frames = std::max(SecondsSinceStart(), 0.0) * length.samplerate;
        return static_cast<std::uint64_t>(frames) / length.vectorSize * length.vectorSize;
    }

    double SecondsSinceStart() const { return std::chrono::duration<double>(SteadyClock::now() - start).count(); }

    const std::unique_ptr<SoundSource> source;
    const RunLength length;  // of the file, or of the options
    std::unique_ptr<SoundSink> sink;
    std::unique_ptr<SoundRun> run;
    SteadyClock::time_point start = SteadyClock::now();
};

ReplAudio::ReplAudio(const RunOptions& replOptions, Box& replBox, Interruption& replInterruption, ReplClock replClock)
    : options(replOptions), box(replBox), interruption(replInterruption), clock(replClock) {}

ReplAudio::~ReplAudio() = default;

void ReplAudio::Start() {
    if (IsRunning()) throw UsageError("audio is on already");
    flow = std::make_unique<Flow>(options, box, clock);
    AdvanceTo(0);
}

void ReplAudio::Stop() {
    if (!IsRunning()) throw UsageError("audio is off already");
    CatchUp();
    if (clock == ReplClock::Script) AdvanceTo(std::max(flow->run->Position(), flow->length.frames));
    const std::unique_ptr<Flow> ended = std::exchange(flow, nullptr);
    TellOfLateMessages(*ended->run);
    TellOfLostFrames(options, ended->source.get());
    ended->run.reset();
    if (ended->sink) FinishSink(*ended->sink, options);
}

void ReplAudio::Wait(double seconds) {
    if (!IsRunning()) throw UsageError("audio is off: no sound to wait for");
    if (!(seconds >= 0.0 && seconds <= kMaxWaitSeconds)) throw UsageError("dsp wait takes 0 seconds to a day");
    const std::uint64_t end = flow->FrameAfter(seconds);
    if (clock == ReplClock::Script) return AdvanceTo(end);
    while (CatchUp(), flow->run->Position() < end && !interruption.TakeBreak() && !interruption.Requested()) {
        std::this_thread::sleep_for(kPollInterval);
    }
}

void ReplAudio::CatchUp() {
    if (IsRunning() && clock == ReplClock::RealTime) AdvanceTo(std::max(flow->run->Position(), flow->FrameDue()));
}

void ReplAudio::AdvanceTo(std::uint64_t frame) {
    try {
        flow->run->AdvanceTo(frame, [this] {
            if (interruption.Requested()) throw std::runtime_error("interrupted");
        });
    } catch (...) {
        flow.reset();
        throw;
    }
}

}  // namespace velmohost
