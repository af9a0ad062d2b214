#pragma once

// Rows in the Max window. Any thread: rows of other threads than the main one are shown when the main thread comes
// round; from the audio thread nothing is allocated or locked.

#include "ext_mess.h"

/// Kinds of rows.
enum { POSTROW_POST = 0, POSTROW_ERROR = 1, POSTROW_WARNING = 2, POSTROW_BUG = 3 };

MAX_API_BEGIN

/// A row without an object; arguments as of printf.
void post(const char* fmt, ...);
/// Text for the system's console.
void cpost(const char* fmt, ...);
/// An error row without an object.
void error(const char* fmt, ...);
/// Adds an atom to the row being composed; a row ends with the next post.
void postatom(t_atom* ap);
/// Adds text to the row being composed.
void poststring(const char* s);

/// Rows tagged with the object's class; the object may be null.
void object_post(t_object* x, const char* s, ...);
void object_error(t_object* x, const char* s, ...);
void object_warn(t_object* x, const char* s, ...);
void object_bug(t_object* x, const char* s, ...);
void object_poststring(t_object* x, long kind, const char* s);
/// An error that the user should not overlook.
void object_error_obtrusive(t_object* x, const char* s, ...);

MAX_API_END
