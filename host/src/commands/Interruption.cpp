#include "commands/Interruption.h"

#include <csignal>

namespace velmohost {
namespace {

volatile std::sig_atomic_t breakNoted = 0, endNoted = 0;

extern "C" void NoteBreak(int) { breakNoted = 1; }
extern "C" void NoteEnd(int) { endNoted = 1; }

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
    Handle(SIGTERM, SIG_DFL, NoteEnd);
}

Interruption::~Interruption() {
    Handle(SIGINT, NoteBreak, SIG_DFL);
    Handle(SIGTERM, NoteEnd, SIG_DFL);
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
