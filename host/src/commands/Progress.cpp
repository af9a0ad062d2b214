#include "commands/Progress.h"

#include <cstdio>

#include "commands/Terminal.h"

namespace velmohost {
namespace {

constexpr std::chrono::milliseconds kUpdateInterval{200};

}  // namespace

Progress::Progress(bool quiet) : enabled(!quiet && IsTerminal(stderr)), nextUpdate(Clock::now() + kUpdateInterval) {}

void Progress::Show(double done, double total) {
    if (!enabled || Clock::now() < nextUpdate) return;
    nextUpdate = Clock::now() + kUpdateInterval;
    std::fprintf(stderr, "\r%3.0f %%  %.1f of %.1f s\x1b[K", total > 0.0 ? 100.0 * done / total : 100.0, done, total);
    std::fflush(stderr);
    visible = true;
}

void Progress::Hide() {
    if (!visible) return;
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
    visible = false;
}

}  // namespace velmohost
