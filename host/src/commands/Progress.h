#pragma once

#include <chrono>
#include <string>

namespace velmohost {

/// How far a long job is, on one line of standard error that is rewritten in place. Nothing is shown when standard
/// error is no terminal, or for jobs that end within a moment. Main thread.
class Progress {
public:
    explicit Progress(bool quiet);
    /// Takes the line away.
    ~Progress() { Hide(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Shows that `done` seconds of sound out of `total` are through; rewrites the line a few times a second only.
    void Show(double done, double total);

    /// Shows a line of any text, likewise.
    void ShowText(const std::string& text);

    /// Takes the line away, so that other output can be shown.
    void Hide();

private:
    using Clock = std::chrono::steady_clock;

    const bool enabled;
    bool visible = false;
    Clock::time_point nextUpdate;
};

}  // namespace velmohost
