#pragma once

#include <link.h>
#include <sys/mman.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <string_view>

namespace velmotest {

/// Keeps the code and constants of a loaded file out of reach page by page, and counts the pages that are touched
/// again: those that a system short of memory would have to bring back first. The system itself brings pages in groups,
/// so that its own count of page faults tells by luck. One at a time.
class PageGuard {
public:
    /// @param file what the path of the file ends in
    explicit PageGuard(std::string_view file) {
        dl_iterate_phdr(Find, &file);
        struct sigaction action {};
        action.sa_sigaction = OnTouch;
        action.sa_flags = SA_SIGINFO | SA_NODEFER;  // a report of the real-time checks touches pages of its own
        sigaction(SIGSEGV, &action, &previous);
        Protect(true);
    }
    ~PageGuard() {
        Protect(false);
        sigaction(SIGSEGV, &previous, nullptr);
        ranges = {};
    }
    PageGuard(const PageGuard&) = delete;
    PageGuard& operator=(const PageGuard&) = delete;

    /// Pages touched so far. Any thread.
    unsigned long NumTouched() const { return numTouched.load(); }

private:
    static constexpr ElfW(Addr) page = 4096;

    struct Range {
        ElfW(Addr) begin, end;
        int protection;
    };

    /// The file's segments that nobody writes to.
    static int Find(dl_phdr_info* file, std::size_t, void* wanted) {
        if (!std::string_view(file->dlpi_name).ends_with(*static_cast<std::string_view*>(wanted))) return 0;
        std::size_t numRanges = 0;
        for (int i = 0; i < file->dlpi_phnum; ++i) {
            const ElfW(Phdr)& segment = file->dlpi_phdr[i];
            if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) continue;
            const ElfW(Addr) begin = file->dlpi_addr + segment.p_vaddr;
            const int protection = PROT_READ | ((segment.p_flags & PF_X) != 0 ? PROT_EXEC : 0);
            ranges.at(numRanges++) = {begin & ~(page - 1), begin + segment.p_memsz, protection};
        }
        return 1;
    }

    static void Protect(bool on) {
        for (const Range& range : ranges) {
            mprotect(reinterpret_cast<void*>(range.begin), range.end - range.begin, on ? PROT_NONE : range.protection);
        }
    }

    static void OnTouch(int, siginfo_t* info, void*) {
        const auto address = reinterpret_cast<ElfW(Addr)>(info->si_addr);
        for (const Range& range : ranges) {
            if (address < range.begin || address >= range.end) continue;
            ++numTouched;
            mprotect(reinterpret_cast<void*>(address & ~(page - 1)), page, range.protection);
            return;
        }
        std::abort();
    }

    static inline std::array<Range, 8> ranges{};
    static inline std::atomic<unsigned long> numTouched{0};
    static inline struct sigaction previous {};
};

}  // namespace velmotest
