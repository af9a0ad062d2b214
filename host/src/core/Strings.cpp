#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "ext.h"

extern "C" {

char* strncpy_zero(char* dst, const char* src, long size) {
    if (dst == nullptr || size <= 0) return dst;
    const std::size_t length = src != nullptr ? std::min(std::strlen(src), static_cast<std::size_t>(size) - 1) : 0;
    if (length > 0) std::memmove(dst, src, length);
    dst[length] = '\0';
    return dst;
}

char* strncat_zero(char* dst, const char* src, long size) {
    if (dst == nullptr || size <= 0) return dst;
    const std::size_t length = ::strnlen(dst, static_cast<std::size_t>(size));
    if (length < static_cast<std::size_t>(size)) strncpy_zero(dst + length, src, size - static_cast<long>(length));
    return dst;
}

int snprintf_zero(char* buffer, size_t count, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(buffer, count, format, arguments);
    va_end(arguments);
    return length;
}

}  // extern "C"
