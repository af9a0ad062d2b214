#pragma once

// Export attributes and the small macros that code for the host expects everywhere.

#include "ext_infer_system.h"

/// Makes a definition visible outside its binary: a plug-in's entry points.
#ifdef WIN_VERSION
#define C74_EXPORT __declspec(dllexport)
#define C74_HIDDEN
#else
#define C74_EXPORT __attribute__((visibility("default")))
#define C74_HIDDEN __attribute__((visibility("hidden")))
#endif

#if defined(__GNUC__)
#define C74_MUST_CHECK __attribute__((warn_unused_result))
#define C74_DEPRECATED(function) __attribute__((deprecated)) function
#else
#define C74_MUST_CHECK
#define C74_DEPRECATED(function) function
#endif

#define C74_CONST const

// Brackets round the host's own functions: C linkage, and on ELF and Mach-O visible from the host's program even when
// that program is compiled with hidden visibility, so that plug-ins find them at load time.
#ifdef __cplusplus
#define MAX_API_LINKAGE_BEGIN extern "C" {
#define MAX_API_LINKAGE_END }
#else
#define MAX_API_LINKAGE_BEGIN
#define MAX_API_LINKAGE_END
#endif
#ifdef WIN_VERSION
#define MAX_API_BEGIN MAX_API_LINKAGE_BEGIN
#define MAX_API_END MAX_API_LINKAGE_END
#else
#define MAX_API_BEGIN _Pragma("GCC visibility push(default)") MAX_API_LINKAGE_BEGIN
#define MAX_API_END MAX_API_LINKAGE_END _Pragma("GCC visibility pop")
#endif

#ifndef MAX
#define MAX(a, b) ((a) > (b) ? (a) : (b))
#endif
#ifndef MIN
#define MIN(a, b) ((a) < (b) ? (a) : (b))
#endif
#ifndef ABS
#define ABS(x) ((x) < 0 ? -(x) : (x))
#endif
#ifndef CLAMP
#define CLAMP(x, low, high) ((x) < (low) ? (low) : (x) > (high) ? (high) : (x))
#endif
/// Limits the variable `x` in place.
#define CLIP_ASSIGN(x, low, high) ((x) = CLAMP(x, low, high))
/// Whether `v` lies between `low` and `high`, both included.
#define INRANGE(v, low, high) ((v) >= (low) && (v) <= (high))

#ifdef WIN_VERSION
#define strcmp_case_insensitive _stricmp
#else
#define strcmp_case_insensitive strcasecmp
#endif
