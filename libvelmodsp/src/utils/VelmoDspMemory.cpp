#include "utils/VelmoDspMemory.h"

#include <cstdlib>

namespace velmodsp {

void* Malloc(unsigned long bytes) { return std::malloc(bytes); }

void* Realloc(void* memory, unsigned long bytes) { return std::realloc(memory, bytes); }

void Free(void* memory) { std::free(memory); }

}  // namespace velmodsp
