#pragma once

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

namespace velmotest {

/// A program at a terminal of its own: the test types, and waits for what is shown.
class TerminalSession {
public:
    /// Starts the program, its own name first among the arguments.
    explicit TerminalSession(const std::vector<std::string>& arguments) : terminal(posix_openpt(O_RDWR | O_NOCTTY)) {
        grantpt(terminal);
        unlockpt(terminal);
        const std::string name = ptsname(terminal);
        process = fork();
        if (process == 0) Become(arguments, name);
    }
    ~TerminalSession() {
        close(terminal);
        if (process <= 0) return;
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    TerminalSession(const TerminalSession&) = delete;
    TerminalSession& operator=(const TerminalSession&) = delete;

    void Type(const std::string& keys) { [[maybe_unused]] const ssize_t n = write(terminal, keys.data(), keys.size()); }

    /// Waits until `text` is shown behind all that was waited for before; false after half a minute or at the
    /// program's end.
    bool WaitFor(const std::string& text) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        for (;;) {
            const std::size_t at = shown.find(text, seen);
            if (at != std::string::npos) return seen = at + text.size(), true;
            if (std::chrono::steady_clock::now() > end || !ReadMore()) return false;
        }
    }

    /// Waits for the program's end and gives its exit status; -1 when it does not end within half a minute.
    int Wait() {
        while (ReadMore()) {
        }
        if (timedOut) kill(process, SIGKILL);
        int status = 0;
        waitpid(process, &status, 0);
        process = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Asks the program to end.
    void Terminate() { kill(process, SIGTERM); }

    const std::string& Shown() const { return shown; }

private:
    [[noreturn]] void Become(const std::vector<std::string>& arguments, const std::string& name) {
        setsid();
        const int ownTerminal = open(name.c_str(), O_RDWR);  // becomes the controlling one
        for (int stream : {0, 1, 2}) dup2(ownTerminal, stream);
        close(terminal);
        setenv("TERM", "xterm", 1);
        std::vector<char*> argv;
        for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }

    bool ReadMore() {
        pollfd input{terminal, POLLIN, 0};
        timedOut = poll(&input, 1, 30000) <= 0;
        if (timedOut) return false;
        char bytes[4096];
        const ssize_t count = read(terminal, bytes, sizeof bytes);
        if (count <= 0) return false;
        shown.append(bytes, static_cast<std::size_t>(count));
        return true;
    }

    const int terminal;
    pid_t process = 0;
    std::string shown;
    std::size_t seen = 0;
    bool timedOut = false;
};

}  // namespace velmotest
