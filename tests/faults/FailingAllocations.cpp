// The C library's allocation functions, replaced for the whole process: those of a program go before a library's. The
// address sanitizer's own functions lie behind them where there is one, so it sees every block all the same.

#include "FailingAllocations.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <new>

namespace {

struct Plan {
    bool isActive;
    unsigned long numThatPass;
    velmotest::FailingAllocations::Extent extent;
    unsigned long numFailed;
};

thread_local Plan plan{};
std::atomic<long> numLivingBlocks{0};

bool MustFail() noexcept {
    if (!plan.isActive) return false;
    if (plan.numThatPass > 0) {
        --plan.numThatPass;
        return false;
    }
    ++plan.numFailed;
    if (plan.extent == velmotest::FailingAllocations::Once) plan.isActive = false;
    errno = ENOMEM;
    return true;
}

void* Counted(void* block) noexcept {
    if (block != nullptr) numLivingBlocks.fetch_add(1, std::memory_order_relaxed);
    return block;
}

}  // namespace

extern "C" {

// What lies behind: the names that the C library has for its own functions, and those of the sanitizers.
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
[[gnu::weak]] void* __interceptor_malloc(std::size_t);
[[gnu::weak]] void* __interceptor_calloc(std::size_t, std::size_t);
[[gnu::weak]] void* __interceptor_realloc(void*, std::size_t);
[[gnu::weak]] void* __interceptor_memalign(std::size_t, std::size_t);
[[gnu::weak]] void __interceptor_free(void*);

[[gnu::visibility("default")]] void* malloc(std::size_t size) noexcept {
    if (MustFail()) return nullptr;
    return Counted((__interceptor_malloc ? __interceptor_malloc : __libc_malloc)(size));
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) noexcept {
    if (MustFail()) return nullptr;
    return Counted((__interceptor_calloc ? __interceptor_calloc : __libc_calloc)(count, size));
}

[[gnu::visibility("default")]] void* realloc(void* block, std::size_t size) noexcept {
    if (MustFail()) return nullptr;
    void* const moved = (__interceptor_realloc ? __interceptor_realloc : __libc_realloc)(block, size);
    return block == nullptr ? Counted(moved) : moved;
}

[[gnu::visibility("default")]] void* memalign(std::size_t alignment, std::size_t size) noexcept {
    if (MustFail()) return nullptr;
    return Counted((__interceptor_memalign ? __interceptor_memalign : __libc_memalign)(alignment, size));
}

[[gnu::visibility("default")]] void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return memalign(alignment, size);
}

[[gnu::visibility("default")]] int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    void* const memory = memalign(alignment, size);
    if (memory == nullptr) return ENOMEM;
    *block = memory;
    return 0;
}

[[gnu::visibility("default")]] void free(void* block) noexcept {
    if (block != nullptr) numLivingBlocks.fetch_sub(1, std::memory_order_relaxed);
    (__interceptor_free ? __interceptor_free : __libc_free)(block);
}

/// The leak checker knows the loader's own blocks by who asks for them, which is this file. Few machines have the names
/// of the loader's functions, so it is all of the loader that is passed over.
[[gnu::visibility("default")]] const char* __lsan_default_suppressions() { return "leak:ld-linux\n"; }

}  // extern "C"

// The sanitizers bring these as well, which would go past the functions above.

void* operator new(std::size_t size) {
    if (void* const block = malloc(size > 0 ? size : 1)) return block;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return malloc(size > 0 ? size : 1); }
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return operator new(size, std::nothrow); }
void operator delete(void* block) noexcept { free(block); }
void operator delete(void* block, std::size_t) noexcept { free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { free(block); }
void operator delete[](void* block) noexcept { free(block); }
void operator delete[](void* block, std::size_t) noexcept { free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { free(block); }

namespace velmotest {

FailingAllocations::FailingAllocations(unsigned long numThatPass, Extent extent) noexcept {
    plan = {true, numThatPass, extent, 0};
}

void FailingAllocations::Stop() noexcept { plan.isActive = false; }

unsigned long FailingAllocations::NumFailed() const noexcept { return plan.numFailed; }

long NumLivingBlocks() noexcept { return numLivingBlocks.load(std::memory_order_relaxed); }

}  // namespace velmotest
