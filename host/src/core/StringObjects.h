#pragma once

#include "ext.h"

namespace velmohost {

/// A string object with a copy of `text`; null when there is no memory.
t_object* NewString(const char* text);

/// The text of a string object, which stays the object's; null for anything else.
const char* TextOf(void* x);

}  // namespace velmohost
