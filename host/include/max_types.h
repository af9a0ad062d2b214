#pragma once

// The host's scalar types. `long` and `unsigned long` are 4 bytes on Windows and 8 elsewhere; the types below have one
// size on every 64-bit system, save t_refnum.

#include "ext_common.h"

#ifdef __cplusplus
#include <cstdint>
#else
#include <stdint.h>
#endif

typedef int8_t t_int8;
typedef int16_t t_int16;
typedef int32_t t_int32;
typedef int64_t t_int64;
typedef uint8_t t_uint8;
typedef uint16_t t_uint16;
typedef uint32_t t_uint32;
typedef uint64_t t_uint64;

typedef intptr_t t_ptr_int;    ///< an integer as wide as a pointer
typedef uintptr_t t_ptr_uint;  ///< the same, unsigned
typedef t_ptr_uint t_ptr_size;
typedef t_ptr_int t_int;
typedef t_ptr_int t_atom_long;  ///< a message's integer
typedef double t_atom_float;    ///< a message's number with a fraction
typedef t_atom_long t_max_err;  ///< one of e_max_errorcodes
typedef t_ptr_size t_getbytes_size;

typedef uint32_t t_fourcc;   ///< four-character file type
typedef int16_t t_filepath;  ///< the host's number of a folder
typedef uint8_t t_bool;
#ifdef WIN_VERSION
typedef int16_t t_refnum;
#else
typedef int32_t t_refnum;
#endif

typedef char** t_handle;  ///< relocatable memory
typedef char* t_ptr;      ///< a block of memory

/// What host functions return.
typedef enum {
    MAX_ERR_NONE = 0,
    MAX_ERR_GENERIC = -1,
    MAX_ERR_INVALID_PTR = -2,
    MAX_ERR_DUPLICATE = -3,
    MAX_ERR_OUT_OF_MEM = -4
} e_max_errorcodes;

/// Length modifier that prints a t_atom_long after a cast to `long long`.
#define ATOM_LONG_FMT_MODIFIER "ll"
