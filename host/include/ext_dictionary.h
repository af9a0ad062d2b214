#pragma once

// Dictionaries: values under unique keys, in the order in which the keys were added. Created with dictionary_new,
// freed with object_free together with the objects they hold. Main thread.

#include "ext_atomarray.h"
#include "ext_hashtab.h"
#include "ext_linklist.h"
#include "ext_mess.h"

typedef struct _dictionary {
    t_object d_obj;
    t_hashtab* d_hashtab;
    t_linklist* d_linklist;
    t_systhread_mutex d_mutex;
    char d_use_transaction;
} t_dictionary;

typedef struct _dictionary_entry {
    t_object e_obj;
    t_symbol* e_key;
    t_atom e_value;
    long e_flags;
} t_dictionary_entry;

/// A text as an object.
typedef struct _string {
    t_object s_obj;
    char* s_text;
    long s_size;
} t_string;

MAX_API_BEGIN

t_dictionary* dictionary_new(void);

// A value under a key; one that was there is freed first. Objects, arrays and dictionaries belong to the dictionary
// from then on; atoms and texts are copied.
t_max_err dictionary_appendlong(t_dictionary* d, t_symbol* key, t_atom_long value);
t_max_err dictionary_appendfloat(t_dictionary* d, t_symbol* key, double value);
t_max_err dictionary_appendsym(t_dictionary* d, t_symbol* key, t_symbol* value);
t_max_err dictionary_appendatom(t_dictionary* d, t_symbol* key, t_atom* value);
t_max_err dictionary_appendstring(t_dictionary* d, t_symbol* key, const char* value);
t_max_err dictionary_appendatoms(t_dictionary* d, t_symbol* key, long argc, t_atom* argv);
t_max_err dictionary_appendatomarray(t_dictionary* d, t_symbol* key, t_object* value);
t_max_err dictionary_appenddictionary(t_dictionary* d, t_symbol* key, t_object* value);
t_max_err dictionary_appendobject(t_dictionary* d, t_symbol* key, t_object* value);

// Values by key: non-zero and an untouched result when the key is missing or of another kind. Objects, and the
// pointers of getatoms and getstring, stay the dictionary's; copyatoms gives memory to free with sysmem_freeptr.
t_max_err dictionary_getlong(const t_dictionary* d, t_symbol* key, t_atom_long* value);
t_max_err dictionary_getfloat(const t_dictionary* d, t_symbol* key, double* value);
t_max_err dictionary_getsym(const t_dictionary* d, t_symbol* key, t_symbol** value);
t_max_err dictionary_getatom(const t_dictionary* d, t_symbol* key, t_atom* value);
t_max_err dictionary_getstring(const t_dictionary* d, t_symbol* key, const char** value);
t_max_err dictionary_getatoms(const t_dictionary* d, t_symbol* key, long* argc, t_atom** argv);
t_max_err dictionary_copyatoms(const t_dictionary* d, t_symbol* key, long* argc, t_atom** argv);
t_max_err dictionary_getatomarray(const t_dictionary* d, t_symbol* key, t_object** value);
t_max_err dictionary_getdictionary(const t_dictionary* d, t_symbol* key, t_object** value);
t_max_err dictionary_getobject(const t_dictionary* d, t_symbol* key, t_object** value);

// 1 or 0.
long dictionary_entryisatomarray(const t_dictionary* d, t_symbol* key);
long dictionary_entryisdictionary(const t_dictionary* d, t_symbol* key);
long dictionary_entryisstring(const t_dictionary* d, t_symbol* key);
long dictionary_hasentry(const t_dictionary* d, t_symbol* key);

t_atom_long dictionary_getentrycount(const t_dictionary* d);
/// All keys; set both results to 0 first and free them with dictionary_freekeys.
t_max_err dictionary_getkeys(const t_dictionary* d, long* numkeys, t_symbol*** keys);
/// The same in the order in which they were added.
t_max_err dictionary_getkeys_ordered(const t_dictionary* d, long* numkeys, t_symbol*** keys);
void dictionary_freekeys(t_dictionary* d, long numkeys, t_symbol** keys);

/// Removes an entry and frees what it holds.
t_max_err dictionary_deleteentry(t_dictionary* d, t_symbol* key);
/// Removes an entry and frees nothing: its object is the caller's again.
t_max_err dictionary_chuckentry(t_dictionary* d, t_symbol* key);
/// Removes and frees everything but the dictionary itself.
t_max_err dictionary_clear(t_dictionary* d);

/// A deep copy.
t_dictionary* dictionary_clone(t_dictionary* d);
/// Empties `dst` and copies `d` into it.
t_max_err dictionary_clone_to_existing(const t_dictionary* d, t_dictionary* dst);

MAX_API_END
