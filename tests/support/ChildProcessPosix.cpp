#ifndef _WIN32

#include <sys/wait.h>

#include <cstdlib>

#include "support/ChildProcess.h"

namespace velmotest {

int RunProgram(const std::string& program, const std::string& arguments, const std::string& folder,
               const std::string& shellPrefix) {
    const std::string command = "cd '" + folder + "' && HOME=\"$PWD\" && " + shellPrefix + " cat stdin.txt | '" +
                                program + "' " + arguments + " >stdout.txt 2>stderr.txt";
    const int result = std::system(command.c_str());
    return WIFEXITED(result) ? WEXITSTATUS(result) : -1;
}

}  // namespace velmotest

#endif
