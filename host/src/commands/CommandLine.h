#pragma once

namespace velmohost {

/// What the program velmohost does: reads its command line and carries out the command. Main thread.
/// @returns the exit status: 0 done; 1 the object could not be created, or a file could not be read or written; 2 wrong
/// usage. What is wrong is told on standard error.
int RunCommandLine(int argc, char** argv);

}  // namespace velmohost
