#pragma once

#include <functional>

#include "commands/ShownDictionary.h"

namespace velmohost {

/// Shows on the standard output, while it lives, what happens in the Max window and what leaves the dump outlet
/// ("[dumpout] SELECTOR ATOMS…"). Behind "dictionary NAME" follow the dictionary's entries ("[dictionary] KEY
/// ATOMS…"). One at a time; main thread.
class WindowOutput {
public:
    /// @param makeRoom called before each line that is shown, to take away what stands in its place, such as a prompt
    explicit WindowOutput(std::function<void()> makeRoom);
    ~WindowOutput();
    WindowOutput(const WindowOutput&) = delete;
    WindowOutput& operator=(const WindowOutput&) = delete;

private:
    void ShowDump(t_symbol* selector, long ac, const t_atom* av);

    const std::function<void()> makeRoom;
    ShownDictionary lastDictionary;
};

}  // namespace velmohost
