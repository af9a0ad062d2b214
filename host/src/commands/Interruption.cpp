#include "commands/Interruption.h"

#include <csignal>

namespace velmohost {
namespace {

volatile std::sig_atomic_t requested = 0;

extern "C" void NoteRequest(int) { requested = 1; }

}  // namespace

Interruption::Interruption() {
    requested = 0;
    std::signal(SIGINT, NoteRequest);
    std::signal(SIGTERM, NoteRequest);
}

Interruption::~Interruption() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

bool Interruption::Requested() const noexcept { return requested != 0; }

}  // namespace velmohost
