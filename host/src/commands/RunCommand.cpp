#include "commands/RunCommand.h"

#include <memory>
#include <stdexcept>

#include "audio/DspSettings.h"
#include "box/Box.h"
#include "box/Host.h"
#include "commands/Interruption.h"
#include "commands/Progress.h"
#include "commands/SoundSetup.h"
#include "commands/WindowOutput.h"
#include "sound/SoundSink.h"
#include "sound/SoundSource.h"

namespace velmohost {

int RunObject(const RunOptions& options) {
    CheckSoundFiles(options);
    ApplySaveAsAnswer(options);
    const std::unique_ptr<SoundSource> source = OpenSource(options);
    const RunLength length = GetRunLength(options, source.get());
    SetDspSettings({length.samplerate, options.block, false});

    Progress progress(options.quiet);
    const WindowOutput window([&progress] { progress.Hide(); });
    Host host(options.paths);
    const std::unique_ptr<Box> box = Box::Create(host, options.boxText);
    if (!box) return 1;

    CheckConnections(options, *box);
    const SoundRun::Connections connections = GetConnections(options, source.get(), *box);
    if (source) TellOfUnusedChannels(options, *source, *box);
    const Interruption interruption;
    const unsigned long batchFrames = ChooseBatchFrames(length, source.get(), *box);
    const std::unique_ptr<SoundSink> sink = OpenSink(options, length, *box, batchFrames);
    for (const std::string& message : options.messages) box->Send(message);

    SoundRun run(*box, length, connections, batchFrames, ScheduleMessages(options.atTimes, length), source.get(),
                 sink.get());
    run.AdvanceTo(length.frames, [&] {
        if (interruption.Requested()) throw std::runtime_error("interrupted");
        progress.Show(static_cast<double>(run.Position()) / length.samplerate,
                      static_cast<double>(length.frames) / length.samplerate);
    });
    progress.Hide();
    TellOfLateMessages(run);
    TellOfLostFrames(options, source.get());
    if (sink) FinishSink(*sink, options);
    return 0;
}

}  // namespace velmohost
