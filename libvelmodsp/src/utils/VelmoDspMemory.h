#pragma once

namespace velmodsp {

/// The system's `malloc`, `realloc` and `free`, for raw sample memory. Null when there is no memory. What `Malloc` or
/// `Realloc` gave goes back through `Free`, within the same module. Any thread; never the audio thread.
void* Malloc(unsigned long bytes);
void* Realloc(void* memory, unsigned long bytes);
void Free(void* memory);

}  // namespace velmodsp
