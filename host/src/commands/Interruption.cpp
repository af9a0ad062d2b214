#include "commands/Interruption.h"

#include <csignal>

namespace velmohost {
namespace {

volatile std::sig_atomic_t breakNoted = 0, endNoted = 0;

// Some systems go back to their own handling with each signal, so it is asked for again.

extern "C" void NoteBreak(int signal) {
    std::signal(signal, NoteBreak);
    breakNoted = 1;
}

extern "C" void NoteEnd(int signal) {
    std::signal(signal, NoteEnd);
    endNoted = 1;
}

#ifdef SIGBREAK
constexpr int endSignals[] = {SIGTERM, SIGBREAK};  // the latter when the terminal's window is closed
#else
constexpr int endSignals[] = {SIGTERM};
#endif

/// Replaces a signal's handling, unless whoever started the program has it ignored.
void Handle(int signal, void (*from)(int), void (*to)(int)) {
    const auto previous = std::signal(signal, to);
    if (previous != from) std::signal(signal, previous);
}

}  // namespace

Interruption::Interruption(BreakKey meaningOfBreak) : breakKey(meaningOfBreak) {
    breakNoted = 0;
    endNoted = 0;
    Handle(SIGINT, SIG_DFL, NoteBreak);
    for (const int signal : endSignals) Handle(signal, SIG_DFL, NoteEnd);
}

Interruption::~Interruption() {
    Handle(SIGINT, NoteBreak, SIG_DFL);
    for (const int signal : endSignals) Handle(signal, NoteEnd, SIG_DFL);
}

bool Interruption::Requested() const noexcept {
    return endNoted != 0 || (breakKey == BreakKey::EndsProgram && breakNoted != 0);
}

bool Interruption::TakeBreak() noexcept {
    if (breakKey == BreakKey::EndsProgram || breakNoted == 0) return false;
    breakNoted = 0;
    return true;
}

}  // namespace velmohost
