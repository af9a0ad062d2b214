#pragma once

#include <string>

namespace velmotest {

/// Runs a program and waits for its end. Its standard streams are files in `folder`, "stdin.txt", "stdout.txt" and
/// "stderr.txt", and the folder is its working and its home directory.
/// @param arguments as typed into a shell: blanks separate them, '…' groups
/// @param shellPrefix commands of the shell before it, where the system's programs are started by one
/// @returns the exit status, -1 when the program did not come to its end by itself
int RunProgram(const std::string& program, const std::string& arguments, const std::string& folder,
               const std::string& shellPrefix = "");

}  // namespace velmotest
