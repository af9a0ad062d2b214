#pragma once

// Messages: symbols, atoms, the header that every object starts with, and the record of a class.

#include "ext_prefix.h"

/// Any function that the host calls; cast to its true type before the call.
typedef void* (*method)(void*);

/// An interned name: two symbols of the same text are the same pointer.
typedef struct symbol {
    char* s_name;            ///< the text; belongs to the host
    struct object* s_thing;  ///< an object bound to the name, or null
} t_symbol;

/// Arguments that a type list can hold, and the length of t_messlist::m_type less its end mark.
#define MSG_MAXARG 7

/// One message of a class.
typedef struct messlist {
    struct symbol* m_sym;         ///< selector
    method m_fun;                 ///< function
    char m_type[MSG_MAXARG + 1];  ///< argument types (e_max_atomtypes), ended by 0
} t_messlist;

/// The header of every object: the first member of its record.
typedef struct object {
    struct messlist* o_messlist;  ///< messages of the class; the entry before the first holds the class
    t_ptr_int o_magic;            ///< OB_MAGIC while the object lives
    void* o_inlet;                ///< the host's
    void* o_outlet;               ///< leftmost outlet
} t_object;

/// A class of objects. Foreign code touches nothing but c_flags.
typedef struct maxclass {
    struct symbol* c_sym;
    struct object** c_freelist;
    method c_freefun;
    t_getbytes_size c_size;
    char c_tiny;
    char c_noinlet;
    struct symbol* c_filename;
    t_messlist* c_newmess;
    method c_menufun;
    long c_flags;  ///< e_max_class_flags
    long c_messcount;
    t_messlist* c_messlist;
    void* c_attributes;
    void* c_extra;
    long c_obexoffset;
    void* c_methods;
    method c_attr_get;
    method c_attr_gettarget;
    method c_attr_getnames;
    struct maxclass* c_superclass;
} t_class;

/// A method as an object of its own, so that it can carry attributes.
typedef struct _method_object {
    t_object ob;
    t_messlist messlist_entry;
} t_method_object;

/// The value of an atom; a_type tells which member holds it.
union word {
    t_atom_long w_long;
    t_atom_float w_float;
    struct symbol* w_sym;
    struct object* w_obj;
};

/// One element of a message. Six bytes of padding follow the type: never compare atoms as memory.
typedef struct atom {
    short a_type;  ///< one of e_max_atomtypes
    union word a_w;
} t_atom;

struct atomarray;
/// A list of atoms as an object.
typedef struct atomarray t_atomarray;

#ifdef C74_USE_STRICT_TYPES
typedef struct outlet t_outlet;
typedef struct inlet t_inlet;
typedef struct binbuf t_binbuf;
typedef struct qelem t_qelem;
typedef struct clock t_clock;
#else
typedef void t_outlet;
typedef void t_inlet;
typedef void t_binbuf;
typedef void t_qelem;
typedef void t_clock;
#endif

/// Types of atoms and of the arguments in type lists.
typedef enum {
    A_NOTHING = 0,
    A_LONG,
    A_FLOAT,
    A_SYM,
    A_OBJ,
    A_DEFLONG,   ///< long, 0 when left out
    A_DEFFLOAT,  ///< double, 0.0 when left out
    A_DEFSYM,    ///< symbol, the empty one when left out
    A_GIMME,     ///< selector, count and atoms as they come
    A_CANT,      ///< untyped: not reachable by a user's message
    A_SEMI,
    A_COMMA,
    A_DOLLAR,
    A_DOLLSYM,
    A_GIMMEBACK,  ///< as A_GIMME, with an atom for the result
    A_DEFER = 0x41,
    A_USURP = 0x42,
    A_DEFER_LOW = 0x43,
    A_USURP_LOW = 0x44
} e_max_atomtypes;

/// Bits of t_class::c_flags.
typedef enum {
    CLASS_FLAG_BOX = 0x00000001,
    CLASS_FLAG_POLYGLOT = 0x00000002,
    CLASS_FLAG_NEWDICTIONARY = 0x00000004,  ///< the constructor receives a dictionary of settings
    CLASS_FLAG_REGISTERED = 0x00000008,
    CLASS_FLAG_UIOBJECT = 0x00000010,
    CLASS_FLAG_ALIAS = 0x00000020,
    CLASS_FLAG_MULTITOUCH = 0x00000040,
    CLASS_FLAG_DO_NOT_PARSE_ATTR_ARGS = 0x00000080,
    CLASS_FLAG_DO_NOT_ZERO = 0x00000100,  ///< object_alloc leaves the record as it comes
    CLASS_FLAG_NOATTRIBUTES = 0x00010000,
    CLASS_FLAG_OWNATTRIBUTES = 0x00020000,
    CLASS_FLAG_PARAMETER = 0x00040000,
    CLASS_FLAG_RETYPEABLE = 0x00080000,
    CLASS_FLAG_OBJECT_METHOD = 0x00100000,
    CLASS_FLAG_USES_PROXIES = 0x00400000,
    CLASS_FLAG_OWN_DATA = 0x00800000
} e_max_class_flags;

#define MAGIC 1758379419L
#define OB_MAGIC MAGIC

/// Whether `x` is no living object.
#define NOGOOD(x) (!(x) || ((struct object*)(x))->o_magic != OB_MAGIC)

#define ATOM_MAX_STRLEN 32768

#define ob_messlist(x) (((struct object*)(x))->o_messlist)
#define ob_class(x) ((t_class*)(void*)(ob_messlist(x)[-1].m_sym))
#define ob_sym(x) (ob_class(x)->c_sym)
#define ob_name(x) (ob_sym(x)->s_name)
#define ob_filename(x) (ob_class(x)->c_filename->s_name)

#define A_SETLONG(ap, x) ((ap)->a_type = A_LONG, (ap)->a_w.w_long = (x))
#define A_SETFLOAT(ap, x) ((ap)->a_type = A_FLOAT, (ap)->a_w.w_float = (x))
#define A_SETSYM(ap, x) ((ap)->a_type = A_SYM, (ap)->a_w.w_sym = (x))
#define A_SETOBJ(ap, x) ((ap)->a_type = A_OBJ, (ap)->a_w.w_obj = (x))

/// Calls the function of a message-list entry without arguments.
#define CALL_METHOD(entry, x) ((*((entry)->m_fun))(x))

MAX_API_BEGIN

/// 1 when `x` is null or no living object, else 0.
long object_isnogood(t_object* x);

MAX_API_END
