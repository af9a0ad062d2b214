#pragma once

#include <string>

namespace velmohost {

/// The answer to the file dialogs that follow: the full path of a file. Without a screen nobody can give another; an
/// empty one, as at the start, cancels them. Main thread.
void SetDialogAnswer(const std::string& path);

}  // namespace velmohost
