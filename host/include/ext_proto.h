#pragma once

// Symbols, inlets and outlets, binbufs, dialogs and other functions that need no header of their own. Main thread
// unless said otherwise.

#include "ext_maxtypes.h"
#include "ext_mess.h"
#include "ext_sysmem.h"

MAX_API_BEGIN

/// The symbol of a text: the same pointer for the same text, for the process's life. Any thread, takes a lock.
t_symbol* gensym(const char* s);
/// The symbol of a text in the user's language.
t_symbol* gensym_tr(const char* s);
/// A text in the user's language.
char* str_tr(const char* s);

// Outlets appear from right to left in the order of their creation.

/// An outlet for messages of `type` ("signal", "int", "float", "bang", "list" or a selector); null: for any message.
void* outlet_new(void* x, const char* type);
void* bangout(void* x);
void* intout(void* x);
void* floatout(void* x);
void* listout(void* x);
void* outlet_bang(t_outlet* o);
void* outlet_int(t_outlet* o, t_atom_long n);
void* outlet_float(t_outlet* o, double f);
/// Sends a list; `s` may be null.
void* outlet_list(t_outlet* o, t_symbol* s, short ac, t_atom* av);
/// Sends any message but a list to all that is connected before it returns.
void* outlet_anything(t_outlet* o, t_symbol* s, short ac, t_atom* av);
/// Number of outlets of `x`.
short outlet_count(t_object* x);
/// Outlet `n` of `x`, from 0 at the left; null when there is none.
t_outlet* outlet_nth(t_object* x, short n);
/// Removes an outlet.
void outlet_delete(t_outlet* o);

// Every object has its left inlet by itself; further ones appear from right to left.

/// An inlet that hands on any message (`s` null) or delivers "int" and "float" under the selector `s`.
void* inlet_new(void* x, const char* s);
/// Inlet `n` (1 to 9, from the left), which delivers "int" as "in<n>".
void* intin(void* x, short n);
/// Inlet `n` (1 to 9), which delivers "float" as "ft<n>".
void* floatin(void* x, short n);
/// Number of inlets of `x`, the left one included.
short inlet_count(t_object* x);
/// Inlet `n` from the left; the left one itself, 0, is null as any that is missing.
t_inlet* inlet_nth(t_object* x, short n);
void inlet_delete(t_inlet* x);

/// An inlet that hands any message on to `x`. While one is delivered, proxy_getinlet gives `id`, and `*stuffloc` too
/// when it is not null. Free with object_free.
void* proxy_new(void* x, long id, long* stuffloc);
/// Inlet of the message being delivered, 0 for the left one.
long proxy_getinlet(t_object* x);

// Binbufs: messages one after the other, each ended by a semicolon atom. Free with binbuf_free.

void* binbuf_new(void);
/// Appends a message and its semicolon; symbols "#1" to "#9" become "$1" to "$9".
void binbuf_insert(t_binbuf* x, t_symbol* s, short argc, t_atom* argv);
/// Replaces the content by `s` (when not null) and the atoms.
void binbuf_set(t_binbuf* x, t_symbol* s, short argc, t_atom* argv);
/// Appends `s` (when not null) and the atoms as they are.
void binbuf_append(t_binbuf* x, t_symbol* s, short argc, t_atom* argv);
/// Reads the atom at position `*p2` and moves on (`*p1` is a byte offset, unused); 1 at the end, else 0.
short binbuf_getatom(t_binbuf* x, long* p1, long* p2, t_atom* ap);

/// Creates an object of the class `s` with the arguments that a box would give it; null on failure.
void* newinstance(const t_symbol* s, short argc, const t_atom* argv);
/// As object_free, for objects and everything that acts like one; not for null.
void freeobject(void* op);

/// The function of a message; null and an error row when the object has none.
method getfn(t_object* op, t_symbol* msg);
/// The same; a do-nothing function and an error row when the object has none.
method egetfn(t_object* op, t_symbol* msg);
/// The same; null without a word when the object has none.
method zgetfn(t_object* op, t_symbol* msg);
/// Sends a message as a user would.
void* typedmess(t_object* op, t_symbol* msg, short argc, t_atom* argv);

/// Asks for a file to write. `name` (MAX_FILENAME_CHARS bytes) proposes and receives its name, `vol` its folder.
/// 0: accepted. Without a screen the answer comes from the host's options; without one the dialog is cancelled.
short saveasdialog_extended(char* name, short* vol, t_fourcc* type, t_fourcc* typelist, short numtypes);
short saveas_dialog(char* name, short* path, t_fourcc* type);
void saveas_promptset(const char* prompt);
/// Asks for a file to read, the same way.
short open_dialog(char* name, short* volptr, t_fourcc* typeptr, t_fourcc* types, short ntypes);

/// Functions that answer 1 and 0 to everything.
long method_true(void* x);
long method_false(void* x);

/// The host's version, one hexadecimal digit each for major, minor and revision from the left: 0x0820 is 8.2.
short maxversion(void);

MAX_API_END

#define getbytes(size) ((char*)sysmem_newptr((t_ptr_size)(size)))
#define freebytes(ptr, size) sysmem_freeptr(ptr)
