#pragma once

namespace velmotest {

/// While it lives, the calling thread's allocations fail from one of them on: every `malloc` of the program, of the
/// plug-ins that it loads and of the libraries that both use, and every `operator new`.
///
///     FailingAllocations failing(3, FailingAllocations::Once);   // three pass, the fourth fails, all others pass
///     failing.Stop();
///     if (failing.NumFailed() == 0) ...                          // there was no fourth
class FailingAllocations {
public:
    enum Extent {
        Once,     ///< a single one fails, as when a large block does not fit any more
        FromThen  ///< all fail from then on, as when there is no memory at all
    };

    FailingAllocations(unsigned long numThatPass, Extent extent) noexcept;
    ~FailingAllocations() { Stop(); }
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    /// From now on all allocations pass again.
    void Stop() noexcept;

    unsigned long NumFailed() const noexcept;
};

/// Blocks of memory that are allocated and not yet freed, of all threads.
long NumLivingBlocks() noexcept;

}  // namespace velmotest
