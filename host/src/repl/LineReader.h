#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmohost {

class Interruption;

/// What a prompt needs of the one whose lines it reads. Main thread.
class PromptListener {
public:
    virtual ~PromptListener() = default;

    /// The words that the last word of `text` may be meant to become; `text` reaches from the line's start to the
    /// cursor.
    virtual std::vector<std::string> Complete(const std::string& text) const = 0;

    /// Called again and again while nothing is typed, to do what is due.
    /// @returns how long nothing will be due
    virtual std::chrono::milliseconds DoWhatIsDue() noexcept = 0;
};

/// Reads lines from the standard input. Main thread.
///
///     auto reader = LineReader::Create(interruption);
///     while (const auto line = reader->ReadLine(session)) session.Execute(*line);
class LineReader {
public:
    virtual ~LineReader() = default;

    /// A line editor with history and completion where input and output are a terminal (and the program was built with
    /// one); plain lines otherwise, after a prompt if on a terminal.
    /// @param interruption ends the input; the break key on a terminal only drops the line that is being typed
    static std::unique_ptr<LineReader> Create(Interruption& interruption);

    /// The next line without its end; nothing when the input has ended.
    virtual std::optional<std::string> ReadLine(PromptListener& listener) = 0;

    /// Takes the prompt away, so that a line can be shown in its place; it comes back by itself.
    virtual void MakeRoom() = 0;

protected:
    static constexpr const char* kPrompt = "> ";
};

#ifdef VELMO_HAS_LINE_EDITOR
/// The line editor, for a terminal.
std::unique_ptr<LineReader> CreateLineEditor(Interruption& interruption);
#endif

}  // namespace velmohost
