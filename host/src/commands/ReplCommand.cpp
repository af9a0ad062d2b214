#include "commands/ReplCommand.h"

#include <memory>
#include <stdexcept>

#include "audio/DspSettings.h"
#include "box/Box.h"
#include "box/Host.h"
#include "commands/Interruption.h"
#include "commands/SoundSetup.h"
#include "commands/Terminal.h"
#include "commands/WindowOutput.h"
#include "repl/LineReader.h"
#include "repl/ReplSession.h"
#include "sound/SoundSource.h"

namespace velmohost {
namespace {

/// Opens the input file to see that it can be read, and gives the object the rate that it will run at.
void PrepareSound(const RunOptions& options) {
    CheckSoundFiles(options);
    const RunLength length = GetRunLength(options, OpenSource(options).get());
    SetDspSettings({length.samplerate, options.block, false});
}

}  // namespace

int RunRepl(const RunOptions& options) {
    PrepareSound(options);
    ApplySaveAsAnswer(options);
    const bool isTerminal = IsTerminal(stdin);
    Interruption interruption(isTerminal ? BreakKey::IsTaken : BreakKey::EndsProgram);
    const std::unique_ptr<LineReader> reader = LineReader::Create(interruption);
    const WindowOutput window([&reader] { reader->MakeRoom(); });
    Host host(options.paths);
    const std::unique_ptr<Box> box = Box::Create(host, options.boxText);
    if (!box) return 1;
    CheckConnections(options, *box);

    for (const std::string& message : options.messages) box->Send(message);
    ReplSession session(options, *box, interruption, isTerminal ? ReplClock::RealTime : ReplClock::Script);
    while (const std::optional<std::string> line = reader->ReadLine(session)) {
        session.Execute(*line);
        if (interruption.Requested()) break;
    }
    if (interruption.Requested()) throw std::runtime_error("interrupted");
    return session.Finish();
}

}  // namespace velmohost
