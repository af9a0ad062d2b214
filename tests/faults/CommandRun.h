#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "commands/CommandLine.h"

namespace velmotest {

/// Both standard streams, as long as it lives: what goes there can be read back. A pipe, so that it works with no room
/// on any disk; it holds 64 KB.
class CapturedStreams {
public:
    CapturedStreams() {
        Flush();
        if (pipe(ends.data()) != 0) std::abort();
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        for (int stream : {STDOUT_FILENO, STDERR_FILENO}) {
            kept.push_back(dup(stream));
            dup2(ends[1], stream);
        }
    }
    ~CapturedStreams() {
        Flush();
        for (int stream : {STDOUT_FILENO, STDERR_FILENO}) {
            dup2(kept[static_cast<std::size_t>(stream - STDOUT_FILENO)], stream);
            close(kept[static_cast<std::size_t>(stream - STDOUT_FILENO)]);
        }
        for (int end : ends) close(end);
    }
    CapturedStreams(const CapturedStreams&) = delete;
    CapturedStreams& operator=(const CapturedStreams&) = delete;

    std::string Text() {
        Flush();
        std::string text;
        std::array<char, 4096> bytes;
        for (ssize_t n; (n = read(ends[0], bytes.data(), bytes.size())) > 0;) {
            text.append(bytes.data(), static_cast<std::size_t>(n));
        }
        return text;
    }

private:
    static void Flush() {
        std::fflush(stdout);
        std::fflush(stderr);
    }

    std::array<int, 2> ends;
    std::vector<int> kept;
};

/// Runs a command of velmohost in this process, so that what was done to it holds for the command.
/// @returns the exit status and what was printed
inline std::string RunCommand(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "velmohost");
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    CapturedStreams streams;
    const int status = velmohost::RunCommandLine(static_cast<int>(arguments.size()), argv.data());
    return std::to_string(status) + " " + streams.Text();
}

}  // namespace velmotest
