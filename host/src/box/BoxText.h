#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ext.h"

namespace velmohost {

/// What is typed into a box: a class name, positional arguments and `@name value...` settings.
struct BoxText {
    t_symbol* className;            ///< the first word
    std::vector<t_atom> arguments;  ///< all that follows, "@name" words included
};

/// Takes a box's text apart; nothing when it is empty or begins with a number. Main thread.
std::optional<BoxText> ParseBoxText(const std::string& text);

/// A message as it is typed into a message box.
struct MessageText {
    t_symbol* selector;  ///< the first word, or "int", "float" or "list" for a text that begins with a number
    std::vector<t_atom> arguments;
};

/// Takes a message's text apart; nothing when it is empty. Main thread.
std::optional<MessageText> ParseMessageText(const std::string& text);

}  // namespace velmohost
