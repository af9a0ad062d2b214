#include "realtime/SystemCallTrap.h"

#include <execinfo.h>
#include <sys/prctl.h>
#include <ucontext.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

extern "C" void __rtsan_off();  // silences the sanitizer for the calling thread

namespace velmohost {
namespace {

constexpr int none = -1;

// Of the calling thread: what the kernel looks at upon each of its calls, and its first call while the trap was closed.
thread_local volatile char state = SYSCALL_DISPATCH_FILTER_ALLOW;
thread_local int caughtCall = none;
thread_local std::array<void*, 64> caughtStack;
thread_local int caughtDepth = 0;

/// Notes the call, and has it made with the trap open.
void OnCaughtCall(int, siginfo_t* info, void* context) {
    constexpr int lengthOfSyscallInstruction = 2;
    state = SYSCALL_DISPATCH_FILTER_ALLOW;
    caughtCall = info->si_syscall;
    caughtDepth = backtrace(caughtStack.data(), static_cast<int>(caughtStack.size()));
    static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_RIP] -= lengthOfSyscallInstruction;
}

[[noreturn]] void EndProgram() {
    __rtsan_off();
    std::fprintf(stderr, "Real-time violation: system call %d in real-time context! Stack trace:\n", caughtCall);
    backtrace_symbols_fd(caughtStack.data(), caughtDepth, STDERR_FILENO);
    std::exit(EXIT_FAILURE);  // NOLINT(concurrency-mt-unsafe): nothing may go on
}

bool TakeCaughtCalls() {
    backtrace(caughtStack.data(), 1);  // the first time loads a library
    struct sigaction action {};
    action.sa_sigaction = OnCaughtCall;
    action.sa_flags = SA_SIGINFO;
    return sigaction(SIGSYS, &action, nullptr) == 0;
}

}  // namespace

bool SystemCallTrap::Prepare() noexcept {
    static const bool takesCalls = TakeCaughtCalls();
    thread_local const bool isUnderTrap =
        takesCalls && prctl(PR_SET_SYSCALL_USER_DISPATCH, PR_SYS_DISPATCH_ON, 0, 0, &state) == 0;
    return isUnderTrap;
}

void SystemCallTrap::Close() noexcept { state = SYSCALL_DISPATCH_FILTER_BLOCK; }

void SystemCallTrap::Open() noexcept {
    state = SYSCALL_DISPATCH_FILTER_ALLOW;
    if (caughtCall != none) EndProgram();
}

}  // namespace velmohost
