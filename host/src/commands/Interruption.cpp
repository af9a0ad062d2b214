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

Interruption::Interruption() {
    breakNoted = 0;
    endNoted = 0;
    Handle(SIGINT, SIG_DFL, NoteBreak);
    Handle(SIGTERM, SIG_DFL, NoteEnd);
}

Interruption::~Interruption() {
    Handle(SIGINT, NoteBreak, SIG_DFL);
    Handle(SIGTERM, NoteEnd, SIG_DFL);
}

bool Interruption::Requested() const noexcept { return breakNoted != 0 || endNoted != 0; }

bool Interruption::TakeBreak() noexcept {
    const bool noted = breakNoted != 0;
    breakNoted = 0;
    return noted;
}

}  // namespace velmohost
