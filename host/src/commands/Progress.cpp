#include "commands/Progress.h"

#include <cstdio>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace velmohost {
namespace {

constexpr std::chrono::milliseconds kUpdateInterval{200};

bool IsStandardErrorTerminal() {
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) == 1;
#endif
}

}  // namespace

Progress::Progress(bool quiet)
    : enabled(!quiet && IsStandardErrorTerminal()), nextUpdate(Clock::now() + kUpdateInterval) {}

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
