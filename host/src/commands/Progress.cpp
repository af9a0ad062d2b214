#include "commands/Progress.h"

#include <array>
#include <cstdio>

#include "commands/Terminal.h"

namespace velmohost {
namespace {

constexpr std::chrono::milliseconds kUpdateInterval{200};

}  // namespace

Progress::Progress(bool quiet) : enabled(!quiet && IsTerminal(stderr)), nextUpdate(Clock::now() + kUpdateInterval) {}

void Progress::Show(double done, double total) {
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%3.0f %%  %.1f of %.1f s", total > 0.0 ? 100.0 * done / total : 100.0,
                  done, total);
    ShowText(text.data());
}

void Progress::ShowText(const std::string& text) {
    if (!enabled || Clock::now() < nextUpdate) return;
    nextUpdate = Clock::now() + kUpdateInterval;
    std::fprintf(stderr, "\r%s\x1b[K", text.c_str());
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
