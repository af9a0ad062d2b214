#pragma once

// Copying into buffers of known size: the result always ends with a zero byte. Any thread.

#include "ext_prefix.h"

MAX_API_BEGIN

/// Copies `src` into `dst` of `size` bytes, cutting what does not fit; returns `dst`.
char* strncpy_zero(char* dst, const char* src, long size);
/// Appends `src` to the text in `dst` of `size` bytes in all; returns `dst`.
char* strncat_zero(char* dst, const char* src, long size);
/// Formatted text into a buffer; returns the length that the whole text has.
int snprintf_zero(char* buffer, size_t count, const char* format, ...);

MAX_API_END
