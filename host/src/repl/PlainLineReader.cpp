#include <array>
#include <cstdio>

#include "commands/Interruption.h"
#include "commands/Terminal.h"
#include "repl/LineReader.h"

namespace velmohost {
namespace {

/// Lines as they come. It reads the input itself, so that what is due gets done while no line is there.
class PlainLineReader : public LineReader {
public:
    PlainLineReader(Interruption& interruptionOfInput, bool onTerminal)
        : interruption(interruptionOfInput), isTerminal(onTerminal) {}

    std::optional<std::string> ReadLine(PromptListener& listener) override {
        ShowPrompt();
        while (!HasLine() && !inputEnded) {
            if (!WaitForBytes(listener)) return std::nullopt;
            ReadBytes();
        }
        isPromptShown = false;
        if (bytes.empty()) return std::nullopt;
        return TakeLine();
    }

    void MakeRoom() override {
        if (!isPromptShown) return;
        std::fputs("\r\x1b[K", stdout);
        isPromptShown = false;
    }

private:
    bool HasLine() const { return bytes.find('\n') != std::string::npos; }

    void ShowPrompt() {
        if (!isTerminal || isPromptShown) return;
        std::fputs(kPrompt, stdout);
        std::fflush(stdout);
        isPromptShown = true;
    }

    /// @returns false when the input was interrupted
    bool WaitForBytes(PromptListener& listener) {
        for (;;) {
            const auto limit = listener.DoWhatIsDue();
            if (interruption.Requested()) return false;
            ShowPrompt();
            const bool hasBytes = WaitForInput(limit);
            if (interruption.TakeBreak()) {
                std::fputs("\n", stdout);  // the system has dropped what was typed
                isPromptShown = false;
                continue;
            }
            if (hasBytes && !interruption.Requested()) return true;
        }
    }

    void ReadBytes() {
        std::array<char, 4096> chunk;
        const std::size_t count = ReadInput(chunk.data(), chunk.size());
        bytes.append(chunk.data(), count);
        inputEnded = count == 0;
    }

    std::string TakeLine() {
        const std::size_t end = bytes.find('\n');
        std::string line = bytes.substr(0, end);
        bytes.erase(0, end == std::string::npos ? end : end + 1);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        return line;
    }

    Interruption& interruption;
    const bool isTerminal;
    bool isPromptShown = false;
    bool inputEnded = false;
    std::string bytes;  // read, but not given out yet
};

}  // namespace

std::unique_ptr<LineReader> LineReader::Create(Interruption& interruption) {
    const bool isTerminal = IsTerminal(stdin) && IsTerminal(stdout);
#ifdef VELMO_HAS_LINE_EDITOR
    if (isTerminal) return CreateLineEditor(interruption);
#endif
    return std::make_unique<PlainLineReader>(interruption, isTerminal);
}

}  // namespace velmohost
