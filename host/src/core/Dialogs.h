#pragma once

#include <string>

namespace velmohost {

/// The answer to the save-as dialogs that follow, as nobody can be asked without a screen: the path of a file, or of a
/// folder, where the file then gets the name that the dialog proposes. An empty one, as at the start, cancels them.
/// Dialogs that ask for a file to open are always cancelled. Main thread.
void SetSaveAsAnswer(const std::string& path);

}  // namespace velmohost
