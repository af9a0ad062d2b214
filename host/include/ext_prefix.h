#pragma once

// What every header of the host starts from: the system, the C library and a few helpers on records.

#include "ext_common.h"
#include "ext_infer_system.h"
#include "ext_prefix_includes.h"
#include "max_types.h"

#ifdef __cplusplus
#define BEGIN_USING_C_LINKAGE extern "C" {
#define END_USING_C_LINKAGE }
#else
#define BEGIN_USING_C_LINKAGE
#define END_USING_C_LINKAGE
#endif

// Records shared with the 64-bit host have natural alignment: nothing is packed.
#define C74_PRAGMA_STRUCT_PACKPUSH 0

/// Byte offset of a field, as attributes are declared with.
#ifndef calcoffset
#define calcoffset(type, member) ((long)offsetof(type, member))
#endif
/// Size of a field in bytes.
#define structmembersize(type, member) sizeof(((type*)0)->member)

#define C74_ASSERT(condition) assert(condition)
#ifdef __cplusplus
#define C74_STATIC_ASSERT(condition, text) static_assert(condition, text)
#else
#define C74_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#endif
