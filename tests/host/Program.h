#pragma once

#include <gmock/gmock.h>

#include <string>

#include "support/ChildProcess.h"
#include "support/FileBytes.h"
#include "support/TempFolder.h"

namespace velmotest {

/// What a run of the program left.
struct Outcome {
    int status;
    std::string out, err;
};

/// The program velmohost as people run it: command line in; standard output, standard error and exit status out.
class Program : public testing::Test {
protected:
    /// Runs the program with arguments as typed into a shell, in the test's folder, with `input` to read.
    Outcome Velmohost(const std::string& arguments, const std::string& shellPrefix = "",
                      const std::string& input = "") {
        WriteText("stdin.txt", input);
        const int status = RunProgram(VELMO_HOST_PROGRAM, arguments, folder.Path().string(), shellPrefix);
        return {status, ReadText("stdout.txt"), ReadText("stderr.txt")};
    }

    std::string ReadText(const std::string& name) { return ::ReadText(folder / name); }
    void WriteText(const std::string& name, const std::string& text) { WriteBytes(folder / name, text); }

    TempFolder folder;
};

}  // namespace velmotest
