#pragma once

#include <map>
#include <string>
#include <vector>

#include "box/Preset.h"
#include "commands/ObjectDescription.h"
#include "repl/LineReader.h"
#include "repl/ReplAudio.h"

namespace velmohost {

class Box;

/// What the lines typed at the prompt do: a message goes to the object as it stands, but for the few words by which the
/// host is asked to play its own part:
///
///     ?                          what the object understands, and these words
///     dsp start | stop | wait S  audio
///     preset [N]                 stores the object's state as preset N, shown as "[preset] N: …"
///     preset recall [N]          brings it back
///     getvalueof                 asks for the object's value as pattr does, shown as "[pattr] …"
///     setvalueof VALUES          sets it
///
/// Main thread.
class ReplSession : public PromptListener {
public:
    /// What is given must outlive it.
    ReplSession(const RunOptions& options, Box& box, Interruption& interruption, ReplClock clock);

    /// Carries out a line. What goes wrong is told, and the session goes on.
    void Execute(const std::string& line) noexcept;

    /// Ends what runs.
    /// @returns the exit status: 1 when a sound file could not be read or written in the course of the session, else 0
    int Finish() noexcept;

    std::vector<std::string> Complete(const std::string& text) const override;
    std::chrono::milliseconds DoWhatIsDue() noexcept override;

private:
    using Arguments = std::vector<t_atom>;

    void Perform(const std::string& line);
    void ShowHelp() const;
    void ControlDsp(const Arguments& arguments);
    bool TakesPreset(const Arguments& arguments) const;
    void HandlePreset(const Arguments& arguments);
    void StorePreset(t_atom_long number);
    void RecallPreset(t_atom_long number);
    void ShowValue();

    template <class Action>
    void Guard(Action action) noexcept;

    Box& box;
    const ObjectDescription description;
    ReplAudio audio;
    std::map<t_atom_long, Preset> presets;
    bool soundFailed = false;
};

}  // namespace velmohost
