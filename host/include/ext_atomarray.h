#pragma once

// Lists of atoms as objects: created with atomarray_new, freed with object_free. Main thread.

#include "ext_mess.h"

/// The array frees the objects that its atoms hold.
#define ATOMARRAY_FLAG_FREECHILDREN 1

struct atomarray {
    t_object ob;
    long ac;
    t_atom* av;
    long flags;
};

MAX_API_BEGIN

/// A new array with copies of `ac` atoms.
t_atomarray* atomarray_new(long ac, t_atom* av);
void atomarray_flags(t_atomarray* x, long flags);
long atomarray_getflags(t_atomarray* x);
/// Replaces the content by copies of `ac` atoms.
t_max_err atomarray_setatoms(t_atomarray* x, long ac, t_atom* av);
/// The content itself, which stays the array's.
t_max_err atomarray_getatoms(t_atomarray* x, long* ac, t_atom** av);
/// A copy to free with sysmem_freeptr; when `*ac` and `*av` are given, into that memory.
t_max_err atomarray_copyatoms(t_atomarray* x, long* ac, t_atom** av);
t_atom_long atomarray_getsize(t_atomarray* x);
/// Atom `index` (from 0) into `av`.
t_max_err atomarray_getindex(t_atomarray* x, long index, t_atom* av);
/// A new array with the same atoms.
void* atomarray_duplicate(t_atomarray* x);
void atomarray_appendatom(t_atomarray* x, t_atom* a);
void atomarray_appendatoms(t_atomarray* x, long ac, t_atom* av);
/// Takes one atom out without freeing what it holds.
void atomarray_chuckindex(t_atomarray* x, long index);
void atomarray_clear(t_atomarray* x);

MAX_API_END
