#pragma once

namespace velmohost {

class Progress;

/// Shows on the standard output, while it lives, what happens in the Max window and what leaves the dump outlet
/// ("[dumpout] SELECTOR ATOMS…"), keeping clear of the progress line. One at a time; main thread.
class WindowOutput {
public:
    /// `progress` must outlive it.
    explicit WindowOutput(Progress& progress);
    ~WindowOutput();
    WindowOutput(const WindowOutput&) = delete;
    WindowOutput& operator=(const WindowOutput&) = delete;
};

}  // namespace velmohost
