#pragma once

// Memory that host and plug-ins pass to each other. Blocks and handles know their size; they mix with no other
// allocator. Any thread may allocate and free; none of it is real-time safe.

#include "ext_prefix.h"

MAX_API_BEGIN

/// `size` bytes of uninitialised memory, or null. Free with sysmem_freeptr.
t_ptr sysmem_newptr(t_ptr_size size);
/// The same, filled with zeros.
t_ptr sysmem_newptrclear(t_ptr_size size);
/// The block with a new size, perhaps elsewhere; a null block is a new one. Null on failure, the old block living on.
t_ptr sysmem_resizeptr(void* ptr, t_ptr_size newsize);
/// The same; bytes that were added are zero.
t_ptr sysmem_resizeptrclear(void* ptr, t_ptr_size newsize);
/// Size of a block in bytes; 0 for null.
t_ptr_size sysmem_ptrsize(void* ptr);
/// Frees a block; null is harmless.
void sysmem_freeptr(void* ptr);
/// Copies `bytes` bytes; note that the source comes first.
void sysmem_copyptr(const void* src, void* dst, t_ptr_size bytes);

/// A handle: pointer to a block that may move. Null when there is no memory.
t_handle sysmem_newhandle(t_ptr_size size);
t_handle sysmem_newhandleclear(t_ptr_size size);
/// Changes the block's size; a t_max_err as a number.
long sysmem_resizehandle(t_handle handle, t_ptr_size newsize);
t_ptr_size sysmem_handlesize(t_handle handle);
void sysmem_freehandle(t_handle handle);
/// Handles do not move by themselves here: keeps the given state and returns the one before.
long sysmem_lockhandle(t_handle handle, long lock);

MAX_API_END
