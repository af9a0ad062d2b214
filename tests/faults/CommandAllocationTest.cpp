// Memory that runs out somewhere in a run of velmohost.

#include <sys/wait.h>

#include "EachAllocation.h"
#include "Writers.h"

namespace {

namespace fs = std::filesystem;
using velmotest::FailingAllocations;

constexpr unsigned long Stride = 19;  // every allocation would take a minute

class MemoryRunsOutInCommands : public Writers {
protected:
    struct Ended {
        bool isNormal;  ///< rather than by a signal
        int status;
        bool hasFailed;  ///< an allocation
        std::string printed;
    };

    /// Runs the command in a process of its own, which starts as this one is now.
    Ended Run(const std::vector<std::string>& command, unsigned long numThatPass) {
        const std::string output = outputs / "printed.txt";
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            for (std::FILE* stream : {stdout, stderr}) std::ignore = std::freopen(output.c_str(), "a", stream);
            std::vector<std::string> arguments = command;
            arguments.insert(arguments.begin(), "velmohost");
            std::vector<char*> argv;
            for (std::string& argument : arguments) argv.push_back(argument.data());
            FailingAllocations failing(numThatPass, FailingAllocations::Once);
            const int status = velmohost::RunCommandLine(static_cast<int>(argv.size()), argv.data());
            failing.Stop();
            std::fflush(nullptr);
            _exit(status + (failing.NumFailed() > 0 ? 0 : 100));
        }
        int result = 0;
        waitpid(child, &result, 0);
        const int status = WEXITSTATUS(result);
        Ended ended{WIFEXITED(result), status % 100, status < 100, ReadText(output)};
        fs::remove(output);
        return ended;
    }

    TempFolder outputs;
};

TEST_F(MemoryRunsOutInCommands, ItIsToldAndNothingIsLeftHalfDone) {
    const std::string in = sources / "short.wav", externals = VELMO_EXTERNALS_DIR, out = outputs / "out.wav";
    const std::vector<std::vector<std::string>> commands{
        {"run", "tesk.fixnan~", "--path", externals, "--in", in, "--out", out, "--message", "dumpdict"},
        {"scan", in},
        {"repair", in, "--path", externals, "-o", out},
        {"info", "tesk.fixnan~", "--path", externals}};
    for (const auto& command : commands) {
        SCOPED_TRACE(command.front());
        fs::remove(out);
        const Ended good = Run(command, std::numeric_limits<unsigned long>::max());
        const std::string complete = ReadBytes(out);
        unsigned long numFailures = 0;
        for (unsigned long n = 0; !HasFailure(); n += Stride) {
            SCOPED_TRACE("allocation " + std::to_string(n));
            fs::remove(out);
            const Ended ended = Run(command, n);
            EXPECT_TRUE(ended.isNormal) << ended.printed;
            const bool isAsGood = ended.status == good.status && ended.printed == good.printed;
            const bool isFailure = ended.status == 1 && !ended.printed.empty();
            EXPECT_TRUE(isAsGood || isFailure ||
                        testing::Value(ended.printed, testing::ContainsRegex("memory|bad_alloc")))
                << ended.status << " " << ended.printed;
            EXPECT_TRUE(!isAsGood || ReadBytes(out) == complete);
            for (const auto& left : fs::directory_iterator(outputs.Path())) {
                // A file that is complete but for its name is kept, and told of.
                EXPECT_TRUE(ReadBytes(left.path().string()) == complete) << left.path() << " " << ended.printed;
                if (left.path() != out) fs::remove(left.path());
            }
            if (!ended.hasFailed) break;
            ++numFailures;
        }
        std::cout << command.front() << ": " << numFailures << " failures\n";
    }
}

}  // namespace
