#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

/// A message that an object has put into a preset, to be sent to it when the preset is recalled.
struct PresetLine {
    t_symbol* className;  ///< of the object that it is for
    t_symbol* selector;
    std::vector<t_atom> arguments;
};

/// What an object wants to be told to be again as it was.
using Preset = std::vector<PresetLine>;

/// Runs `deliverPreset`, which sends "preset" to `owner`, while the symbol "_preset" leads to a binbuf, and gives what
/// was put into it. A line that is not for `owner`, or is incomplete, is left out after an error row. Main thread.
Preset CollectPreset(t_object* owner, const std::function<void()>& deliverPreset);

/// The line as text: the class, the message and its arguments.
std::string FormatPresetLine(const PresetLine& line);

}  // namespace velmohost
