#include "commands/Interruption.h"

#include <csignal>

namespace velmohost {
namespace {

volatile std::sig_atomic_t requested = 0;

extern "C" void NoteRequest(int) { requested = 1; }

/// Replaces a signal's handling, unless whoever started the program has it ignored.
void Handle(int signal, void (*from)(int), void (*to)(int)) {
    const auto previous = std::signal(signal, to);
    if (previous != from) std::signal(signal, previous);
}

}  // namespace

Interruption::Interruption() {
    requested = 0;
    Handle(SIGINT, SIG_DFL, NoteRequest);
    Handle(SIGTERM, SIG_DFL, NoteRequest);
}

Interruption::~Interruption() {
    Handle(SIGINT, NoteRequest, SIG_DFL);
    Handle(SIGTERM, NoteRequest, SIG_DFL);
}

bool Interruption::Requested() const noexcept { return requested != 0; }

}  // namespace velmohost
