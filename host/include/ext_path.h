#pragma once

// Files and folders as the host names them: a folder number and a file name, or slash-style text. Functions return 0
// on success. Main thread.

#include "ext_prefix.h"

#define MAX_PATH_CHARS 2048     ///< bytes of a buffer for a full path
#define MAX_FILENAME_CHARS 512  ///< bytes of a buffer for a file name

/// How a path is written.
typedef enum {
    PATH_STYLE_MAX = 0,
    PATH_STYLE_NATIVE,
    PATH_STYLE_COLON,
    PATH_STYLE_SLASH,
    PATH_STYLE_NATIVE_WIN
} e_max_path_styles;

/// What a path is relative to.
typedef enum {
    PATH_TYPE_IGNORE = 0,
    PATH_TYPE_ABSOLUTE,
    PATH_TYPE_RELATIVE,
    PATH_TYPE_BOOT,
    PATH_TYPE_C74,
    PATH_TYPE_PATH
} e_max_path_types;

typedef struct _fileinfo {
    t_fourcc type;
    t_fourcc creator;
    t_uint32 unused;
    t_int32 flags;
} t_fileinfo;

MAX_API_BEGIN

/// Number of the folder that relative names refer to.
short path_getdefault(void);
/// Full path of `file` in a folder into `name` (MAX_PATH_CHARS bytes). With `check` non-zero the file must exist.
short path_topotentialname(const short path, const char* file, char* name, short check);
/// The same for a file that must exist; an empty file name gives the folder itself.
short path_topathname(const short path, const char* file, char* name);
/// Splits a full path into its folder's number and the file name (MAX_FILENAME_CHARS bytes); the folder must exist.
short path_frompathname(const char* name, short* path, char* filename);
/// Rewrites a path (MAX_PATH_CHARS bytes) in another style (e_max_path_styles) and form (e_max_path_types).
short path_nameconform(const char* src, char* dst, long style, long type);
/// Full path of a file in the form that the operating system takes.
t_max_err path_toabsolutesystempath(const short path, const char* file, char* name);

MAX_API_END
