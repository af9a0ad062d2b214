// A block of host memory has its size in front of it, in the same allocation: sanitizers and leak checkers follow the
// block as they would any other.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "ext.h"

namespace velmohost {
namespace {

struct alignas(std::max_align_t) BlockHeader {
    t_ptr_size size;
};

BlockHeader* HeaderOf(void* block) { return static_cast<BlockHeader*>(block) - 1; }

/// Room for the header and the block, or 0 when no allocation can be that large.
std::size_t AllocationSize(t_ptr_size size) {
    return size > PTRDIFF_MAX - sizeof(BlockHeader) ? 0 : size + sizeof(BlockHeader);
}

/// What a handle points to: the block first, so that `*handle` is the block.
struct HandleRecord {
    char* block;
    long lock;
};

HandleRecord* RecordOf(t_handle handle) { return reinterpret_cast<HandleRecord*>(handle); }

t_handle MakeHandle(t_ptr block) {
    if (block == nullptr) return nullptr;
    auto* const record = reinterpret_cast<HandleRecord*>(sysmem_newptrclear(sizeof(HandleRecord)));
    if (record == nullptr) {
        sysmem_freeptr(block);
        return nullptr;
    }
    record->block = block;
    return &record->block;
}

}  // namespace
}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_ptr sysmem_newptr(t_ptr_size size) { return sysmem_resizeptr(nullptr, size); }

t_ptr sysmem_newptrclear(t_ptr_size size) { return sysmem_resizeptrclear(nullptr, size); }

t_ptr sysmem_resizeptr(void* ptr, t_ptr_size newsize) {
    const std::size_t bytes = AllocationSize(newsize);
    if (bytes == 0) return nullptr;
    void* const memory = std::realloc(ptr != nullptr ? HeaderOf(ptr) : nullptr, bytes);
    if (memory == nullptr) return nullptr;
    auto* const header = static_cast<BlockHeader*>(memory);
    header->size = newsize;
    return reinterpret_cast<t_ptr>(header + 1);
}

t_ptr sysmem_resizeptrclear(void* ptr, t_ptr_size newsize) {
    const t_ptr_size oldSize = sysmem_ptrsize(ptr);
    const t_ptr block = sysmem_resizeptr(ptr, newsize);
    if (block != nullptr && newsize > oldSize) std::memset(block + oldSize, 0, newsize - oldSize);
    return block;
}

t_ptr_size sysmem_ptrsize(void* ptr) { return ptr != nullptr ? HeaderOf(ptr)->size : 0; }

void sysmem_freeptr(void* ptr) {
    if (ptr != nullptr) std::free(HeaderOf(ptr));
}

void sysmem_copyptr(const void* src, void* dst, t_ptr_size bytes) {
    if (bytes > 0) std::memmove(dst, src, bytes);
}

t_handle sysmem_newhandle(t_ptr_size size) { return MakeHandle(sysmem_newptr(size)); }

t_handle sysmem_newhandleclear(t_ptr_size size) { return MakeHandle(sysmem_newptrclear(size)); }

long sysmem_resizehandle(t_handle handle, t_ptr_size newsize) {
    if (handle == nullptr) return MAX_ERR_INVALID_PTR;
    const t_ptr block = sysmem_resizeptr(*handle, newsize);
    if (block == nullptr) return MAX_ERR_OUT_OF_MEM;
    *handle = block;
    return MAX_ERR_NONE;
}

t_ptr_size sysmem_handlesize(t_handle handle) { return handle != nullptr ? sysmem_ptrsize(*handle) : 0; }

void sysmem_freehandle(t_handle handle) {
    if (handle == nullptr) return;
    sysmem_freeptr(*handle);
    sysmem_freeptr(handle);
}

long sysmem_lockhandle(t_handle handle, long lock) {
    if (handle == nullptr) return 0;
    const long previous = RecordOf(handle)->lock;
    RecordOf(handle)->lock = lock;
    return previous;
}

}  // extern "C"
