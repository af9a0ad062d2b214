#pragma once

// Classes, objects, attributes and atoms. Main thread unless said otherwise.

#include "ext_dictionary.h"
#include "ext_hashtab.h"
#include "ext_linklist.h"
#include "ext_mess.h"
#include "ext_proto.h"

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

/// Namespaces: objects that a patcher can hold, and objects for code alone.
#define CLASS_BOX gensym("box")
#define CLASS_NOBOX gensym("nobox")

/// Bits of an attribute's flags. The ones about deferring have no effect.
typedef enum {
    ATTR_FLAGS_NONE = 0x0000000,
    ATTR_GET_OPAQUE = 0x00000001,       ///< readable neither by message nor from C
    ATTR_SET_OPAQUE = 0x00000002,       ///< settable neither by message nor from C
    ATTR_GET_OPAQUE_USER = 0x00000100,  ///< not readable by message
    ATTR_SET_OPAQUE_USER = 0x00000200,  ///< not settable by message
    ATTR_GET_DEFER = 0x00010000,
    ATTR_GET_USURP = 0x00020000,
    ATTR_GET_DEFER_LOW = 0x00040000,
    ATTR_GET_USURP_LOW = 0x00080000,
    ATTR_SET_DEFER = 0x01000000,
    ATTR_SET_USURP = 0x02000000,
    ATTR_SET_DEFER_LOW = 0x04000000,
    ATTR_SET_USURP_LOW = 0x08000000,
    ATTR_IS_JBOXATTR = 0x10000000,  ///< belongs to the box
    ATTR_DIRTY = 0x20000000         ///< changed from its default
} e_max_attrflags;

/// What the obex does with a value when its object is freed.
typedef enum { OBJ_FLAG_INHERITABLE = 0x00000200, OBJ_FLAG_OBEX_KEEP = OBJ_FLAG_REF } e_max_datastore_flags;

/// Header of an attribute object; use its messages ("getname", "gettype", "getflags", "setmethod", …).
typedef struct _attr {
    t_object ob;
    t_symbol* name;
    t_symbol* type;
    long flags;
    method get;
    method set;
    t_object* filterget;
    t_object* filterset;
    void* reserved;
} t_attr;

MAX_API_BEGIN

// ---- classes

/// A new class.
/// @param mnew constructor; its arguments are the type list, ended by 0
/// @param mfree called before an object's memory goes; may be null
/// @param size bytes of an object's record, which starts with a t_object or t_pxobject
t_class* class_new(const char* name, const method mnew, const method mfree, long size, const method mmenu, short type,
                   ...);
/// Frees a class that has no objects.
t_max_err class_free(t_class* c);
/// Makes a class known in a namespace; last call of its set-up. MAX_ERR_DUPLICATE when the class or its name is
/// registered already.
t_max_err class_register(t_symbol* name_space, t_class* c);
/// Makes a class creatable under a second name.
t_max_err class_alias(t_class* c, t_symbol* aliasname);
/// Adds a message with its type list, ended by 0; one of the same name is replaced.
t_max_err class_addmethod(t_class* c, const method m, const char* name, ...);
/// Adds an attribute, which belongs to the class from now on.
t_max_err class_addattr(t_class* c, t_object* attr);
t_symbol* class_nameget(t_class* c);
t_symbol* class_namespace(t_class* c);
/// A class by namespace and name; null when unknown.
t_class* class_findbyname(t_symbol* name_space, t_symbol* classname);
/// Makes "get<attribute>" messages answer through the dump outlet.
t_max_err class_dumpout_wrap(t_class* c);
/// The class's method of that name; null when it has none.
method class_method(t_class* x, t_symbol* methodname);
/// The class's attribute of that name; null when it has none.
void* class_attr_get(t_class* x, t_symbol* attrname);
void class_obexoffset_set(t_class* c, long offset);
long class_obexoffset_get(t_class* c);
long class_is_ui(t_class* c);
long class_is_box(t_class* c);
/// Pointers that belong to a class under names of the caller's choice.
t_max_err class_extra_store(t_class* x, t_symbol* s, t_object* o);
void* class_extra_lookup(t_class* x, t_symbol* s);

// ---- objects

/// An object of `c`: zeroed record, header filled in; null when there is no memory.
void* object_alloc(t_class* c);
/// Frees an object after its class's free function and everything that its obex holds. Null is harmless.
t_max_err object_free(void* x);
t_class* object_class(void* x);
t_symbol* object_classname(void* x);
t_symbol* object_namespace(t_object* x);
/// 1 when the object's class has that name, else 0.
long object_classname_compare(void* x, t_symbol* name);

/// A new object from atoms, handed to the constructor by its type list; null when class or object cannot be made.
void* object_new_typed(t_symbol* name_space, t_symbol* classname, long ac, t_atom* av);
/// Target of the macro object_new.
void* object_new_imp(void* name_space, void* classname, void* p1, void* p2, void* p3, void* p4, void* p5, void* p6,
                     void* p7, void* p8);
/// Target of the macro object_method: calls the method directly; 0 when there is none.
void* object_method_imp(void* x, void* sym, void* p1, void* p2, void* p3, void* p4, void* p5, void* p6, void* p7,
                        void* p8);
/// Calls a method with atoms converted by its type list; `rv` may be null and is A_NOTHING without a result.
t_max_err object_method_typed(void* x, t_symbol* s, long ac, t_atom* av, t_atom* rv);
/// The function of a message; one that does nothing when the object has none.
method object_getmethod(void* x, t_symbol* s);
/// Function and receiver behind the macro object_method_direct.
method object_method_direct_getmethod(t_object* x, t_symbol* sym);
void* object_method_direct_getobject(t_object* x, t_symbol* sym);

// Names for objects, and clients that are told of changes by the message
// "notify"(client, registered name, message, sender, data).
void* object_register(t_symbol* name_space, t_symbol* s, void* x);
t_max_err object_unregister(void* x);
void* object_findregistered(t_symbol* name_space, t_symbol* s);
void* object_attach(t_symbol* name_space, t_symbol* s, void* x);
t_max_err object_detach(t_symbol* name_space, t_symbol* s, void* x);
t_max_err object_attach_byptr(void* x, void* registeredobject);
t_max_err object_attach_byptr_register(void* x, void* object_to_attach, t_symbol* reg_name_space);
t_max_err object_detach_byptr(void* x, void* registeredobject);
t_max_err object_notify(void* x, t_symbol* s, void* data);

// ---- obex: objects kept under names on an instance

t_max_err object_obex_store(void* x, t_symbol* key, t_object* val);
/// With OBJ_FLAG_REF the value is not freed with the object.
t_max_err object_obex_storeflags(void* x, t_symbol* key, t_object* val, long flags);
/// 0 when found. "#P" gives the patcher and "#B" the box.
t_max_err object_obex_lookup(void* x, t_symbol* key, t_object** val);
/// Sends from the outlet kept under "dumpout".
void object_obex_dumpout(void* x, t_symbol* s, long argc, t_atom* argv);

// ---- attributes

/// An attribute that lives at byte `offset` of its owner's record; null accessors are the default ones.
t_object* attr_offset_new(const char* name, const t_symbol* type, long flags, const method mget, const method mset,
                          long offset);
/// The same for up to `size` items; the current count is a long at `offsetcount`, or always `size` when that is 0.
t_object* attr_offset_array_new(const char* name, t_symbol* type, long size, long flags, method mget, method mset,
                                long offsetcount, long offset);
/// An attribute that keeps its own value.
t_object* attribute_new(const char* name, t_symbol* type, long flags, method mget, method mset);

/// Attribute of an object, its class's or its own; null when it has none. Attributes have attributes as well.
void* object_attr_get(void* x, t_symbol* attrname);
/// Calls the attribute's getter. Set `*argc` and `*argv` to 0 first: the result is a copy to free with sysmem_freeptr;
/// else it goes to the given memory.
t_max_err object_attr_getvalueof(void* x, t_symbol* s, long* argc, t_atom** argv);
/// Filter, setter, then "attr_modified" to the attached clients.
t_max_err object_attr_setvalueof(void* x, t_symbol* s, long argc, t_atom* argv);
/// Names of all attributes, as an array to free with sysmem_freeptr.
t_max_err object_attr_getnames(void* x, long* argc, t_symbol*** argv);
t_max_err object_addattr(void* x, t_object* attr);
/// Removes an object's own attribute and frees it; chuck leaves it to the caller.
t_max_err object_deleteattr(void* x, t_symbol* attrname);
t_max_err object_chuckattr(void* x, t_symbol* attrname);
/// Tells the attached clients of a change without setting anything.
t_max_err object_attr_touch(t_object* x, t_symbol* attrname);
/// The accessor behind a message that sets ("<name>") or reads ("get<name>") an attribute, the attribute itself, and in
/// `*get` which of the two; null when there is no such attribute.
method object_attr_method(void* x, t_symbol* methodname, void** attr, long* get);
long object_attr_usercanget(void* x, t_symbol* s);
long object_attr_usercanset(void* x, t_symbol* s);

// One value: 0, the empty symbol or null when the attribute is missing.
t_atom_long object_attr_getlong(void* x, t_symbol* s);
t_max_err object_attr_setlong(void* x, t_symbol* s, t_atom_long c);
t_atom_float object_attr_getfloat(void* x, t_symbol* s);
t_max_err object_attr_setfloat(void* x, t_symbol* s, t_atom_float c);
t_symbol* object_attr_getsym(void* x, t_symbol* s);
t_max_err object_attr_setsym(void* x, t_symbol* s, t_symbol* c);
char object_attr_getchar(void* x, t_symbol* s);
t_max_err object_attr_setchar(void* x, t_symbol* s, char c);
t_object* object_attr_getobj(void* x, t_symbol* s);
t_max_err object_attr_setobj(void* x, t_symbol* s, t_object* o);

/// Limits what passes through the attribute: both ways, into it, or out of it. The filter acts before any setter.
t_max_err attr_addfilter_clip(void* x, double min, double max, long usemin, long usemax);
t_max_err attr_addfilterset_clip(void* x, double min, double max, long usemin, long usemax);
t_max_err attr_addfilterget_clip(void* x, double min, double max, long usemin, long usemax);

/// Index of the first atom that starts with "@"; `ac` when there is none.
long attr_args_offset(short ac, t_atom* av);
/// Sets attributes from "@name value …" runs.
void attr_args_process(void* x, short ac, t_atom* av);
/// The same runs as entries of a dictionary.
void attr_args_dictionary(t_dictionary* x, short ac, t_atom* av);
/// Sets every attribute that the dictionary names.
void attr_dictionary_process(void* x, t_dictionary* d);
/// Posts an error for every key that names no attribute.
void attr_dictionary_check(void* x, t_dictionary* d);

/// The dictionary in the first atom of a constructor's arguments; null without one. Stays the host's.
t_dictionary* object_dictionaryarg(long ac, t_atom* av);
/// What a constructor of `c` receives for the box's arguments: defaults of the attributes under the "@" settings.
/// `*freedict` tells whether the caller frees the result.
t_dictionary* object_dictionary_fromnewargs(t_object* patcher, t_class* c, long argc, t_atom* argv, long flags,
                                            char* freedict);

// ---- symbols

/// A symbol that nobody else has.
t_symbol* symbol_unique(void);
/// Sorts symbols by their texts, byte by byte.
t_max_err symbolarray_sort(long ac, t_symbol** av);

// ---- atoms

t_max_err atom_setlong(t_atom* a, t_atom_long b);
t_max_err atom_setfloat(t_atom* a, double b);
t_max_err atom_setsym(t_atom* a, const t_symbol* b);
t_max_err atom_setobj(t_atom* a, void* b);
/// Numbers convert to each other (fractions are cut); a symbol that reads as a number gives it, everything else 0.
t_atom_long atom_getlong(const t_atom* a);
t_atom_float atom_getfloat(const t_atom* a);
/// The symbol; the empty one for every other type.
t_symbol* atom_getsym(const t_atom* a);
/// The object; null for every other type.
void* atom_getobj(const t_atom* a);
long atom_gettype(const t_atom* a);
/// Writes atom `idx` to `*c` when there is one; 0 when written.
long atom_arg_getlong(t_atom_long* c, long idx, long ac, const t_atom* av);
long atom_arg_getfloat(float* c, long idx, long ac, const t_atom* av);
long atom_arg_getdouble(double* c, long idx, long ac, const t_atom* av);
long atom_arg_getsym(t_symbol** c, long idx, long ac, const t_atom* av);
/// For getters: room for one atom, or `minsize` atoms, when the caller gave none; `*alloc` tells whether it was made.
t_max_err atom_alloc(long* ac, t_atom** av, char* alloc);
t_max_err atom_alloc_array(long minsize, long* ac, t_atom** av, char* alloc);

MAX_API_END

// ---- calls with any number of arguments
//
// Every argument becomes a pointer-sized integer: a floating-point value loses its fraction and does not arrive as one.
// Methods that take doubles are called by object_method_direct.

#define MAX_API_ARG(a) ((void*)(t_ptr_int)(a))
#define MAX_API_CALL2(f, a, b) f(MAX_API_ARG(a), MAX_API_ARG(b), 0, 0, 0, 0, 0, 0, 0, 0)
#define MAX_API_CALL3(f, a, b, c) f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), 0, 0, 0, 0, 0, 0, 0)
#define MAX_API_CALL4(f, a, b, c, d) f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), MAX_API_ARG(d), 0, 0, 0, 0, 0, 0)
#define MAX_API_CALL5(f, a, b, c, d, e) \
    f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), MAX_API_ARG(d), MAX_API_ARG(e), 0, 0, 0, 0, 0)
#define MAX_API_CALL6(f, a, b, c, d, e, g) \
    f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), MAX_API_ARG(d), MAX_API_ARG(e), MAX_API_ARG(g), 0, 0, 0, 0)
#define MAX_API_CALL7(f, a, b, c, d, e, g, h)                                                                         \
    f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), MAX_API_ARG(d), MAX_API_ARG(e), MAX_API_ARG(g), MAX_API_ARG(h), \
      0, 0, 0)
#define MAX_API_CALL8(f, a, b, c, d, e, g, h, i)                                                                      \
    f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), MAX_API_ARG(d), MAX_API_ARG(e), MAX_API_ARG(g), MAX_API_ARG(h), \
      MAX_API_ARG(i), 0, 0)
#define MAX_API_CALL9(f, a, b, c, d, e, g, h, i, j)                                                                   \
    f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), MAX_API_ARG(d), MAX_API_ARG(e), MAX_API_ARG(g), MAX_API_ARG(h), \
      MAX_API_ARG(i), MAX_API_ARG(j), 0)
#define MAX_API_CALL10(f, a, b, c, d, e, g, h, i, j, k)                                                               \
    f(MAX_API_ARG(a), MAX_API_ARG(b), MAX_API_ARG(c), MAX_API_ARG(d), MAX_API_ARG(e), MAX_API_ARG(g), MAX_API_ARG(h), \
      MAX_API_ARG(i), MAX_API_ARG(j), MAX_API_ARG(k))
#define MAX_API_PICK(a, b, c, d, e, f, g, h, i, j, name, ...) name
#define MAX_API_CALL(f, ...)                                                                              \
    MAX_API_PICK(__VA_ARGS__, MAX_API_CALL10, MAX_API_CALL9, MAX_API_CALL8, MAX_API_CALL7, MAX_API_CALL6, \
                 MAX_API_CALL5, MAX_API_CALL4, MAX_API_CALL3, MAX_API_CALL2, MAX_API_TOO_FEW, )           \
    (f, __VA_ARGS__)

/// object_method(object, selector, up to 8 arguments): calls the object's method; 0 when it has none.
#define object_method(...) MAX_API_CALL(object_method_imp, __VA_ARGS__)
/// object_new(namespace, class name, up to 8 constructor arguments): a new object or null.
#define object_new(...) MAX_API_CALL(object_new_imp, __VA_ARGS__)

/// object_method_direct(result type, (parameter types), object, selector, arguments…): a call through the method's true
/// signature, the way to pass floating-point arguments.
#define object_method_direct(rt, sig, x, s, ...)                                                                      \
    ((rt(*) sig)object_method_direct_getmethod((t_object*)(x), s))(object_method_direct_getobject((t_object*)(x), s), \
                                                                   __VA_ARGS__)
