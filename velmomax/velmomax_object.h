/// What every object of the suite does in its constructor. Main thread.
#pragma once

#include "velmomax_api.h"

namespace velmomax {

/// A new object of the class, or null when the host has no memory for it. All bytes after the host's header are zero.
void* ObjectAlloc(t_class* c) noexcept;

/// Gives the object its dump outlet, which takes any message. Outlets appear from right to left, so this comes before
/// all other outlets to be the rightmost.
void AddDumpOutlet(void* x) noexcept;

/// The dump outlet; null, with an error in the Max window, when the object has none.
t_outlet* getdumpoutlet(void* x) noexcept;

}  // namespace velmomax
