#pragma once

// Atoms from and to text, attributes of attributes, and the macros that declare attributes on the class `c`.
//
// Format letters: c l f d s o a are one char, long (give a t_atom_long), float, double, symbol, object or atom;
// capitals are arrays (count, pointer); v b p @ are the value of an object, a binbuf, text to parse and an attribute.

#include "ext_obex.h"

MAX_API_BEGIN

/// Atoms of a text: blanks separate, double quotes keep blanks in one symbol, numbers are found by themselves. Null
/// output: a copy to free with sysmem_freeptr; else the given memory.
t_max_err atom_setparse(long* ac, t_atom** av, const char* parsestr);
/// Atoms of a format and its values, the same way.
t_max_err atom_setformat(long* ac, t_atom** av, const char* fmt, ...);
/// Text of atoms, separated by blanks; null output: a copy to free with sysmem_freeptr. Flags are
/// e_max_atom_gettext_flags.
t_max_err atom_gettext(long ac, t_atom* av, long* textsize, char** text, long flags);

/// How atom_gettext writes.
typedef enum {
    OBEX_UTIL_ATOM_GETTEXT_DEFAULT = 0x00000000,
    OBEX_UTIL_ATOM_GETTEXT_TRUNCATE_ZEROS = 0x00000001,
    OBEX_UTIL_ATOM_GETTEXT_SYM_NO_QUOTE = 0x00000002,
    OBEX_UTIL_ATOM_GETTEXT_SYM_FORCE_QUOTE = 0x00000004,
    OBEX_UTIL_ATOM_GETTEXT_COMMA_DELIM = 0x00000008,
    OBEX_UTIL_ATOM_GETTEXT_FORCE_ZEROS = 0x00000010,
    OBEX_UTIL_ATOM_GETTEXT_NUM_HI_RES = 0x00000020,
    OBEX_UTIL_ATOM_GETTEXT_NUM_LO_RES = 0x00000040,
    OBEX_UTIL_ATOM_GETTEXT_NOESCAPE = 0x00000080
} e_max_atom_gettext_flags;

long atomisatomarray(t_atom* a);
long atomisdictionary(t_atom* a);
long atomisstring(t_atom* a);

// An attribute `attrname2` of the attribute `attrname` of a class or of an object. The value comes from text that is
// split at blanks, from a format, or from atoms: a label or another text with blanks goes through the format "s".
t_max_err class_attr_addattr_parse(t_class* c, const char* attrname, const char* attrname2, t_symbol* type, long flags,
                                   const char* parsestr);
t_max_err class_attr_addattr_format(t_class* c, const char* attrname, const char* attrname2, const t_symbol* type,
                                    long flags, const char* fmt, ...);
t_max_err class_attr_addattr_atoms(t_class* c, const char* attrname, const char* attrname2, t_symbol* type, long flags,
                                   long argc, t_atom* argv);
t_max_err object_attr_addattr_parse(t_object* x, const char* attrname, const char* attrname2, t_symbol* type,
                                    long flags, const char* parsestr);
t_max_err object_attr_addattr_format(t_object* x, const char* attrname, const char* attrname2, t_symbol* type,
                                     long flags, const char* fmt, ...);

// An attribute of one object, with its value; one of the same name is replaced.
t_max_err object_addattr_parse(t_object* x, const char* attrname, t_symbol* type, long flags, const char* parsestr);
t_max_err object_addattr_format(t_object* x, const char* attrname, t_symbol* type, long flags, const char* fmt, ...);
t_max_err object_addattr_atoms(t_object* x, const char* attrname, t_symbol* type, long flags, long argc, t_atom* argv);

// A free-standing attribute with its value.
t_object* attribute_new_parse(const char* attrname, t_symbol* type, long flags, const char* parsestr);
t_object* attribute_new_format(const char* attrname, t_symbol* type, long flags, const char* fmt, ...);
t_object* attribute_new_atoms(const char* attrname, t_symbol* type, long flags, long argc, t_atom* argv);

MAX_API_END

// ---- declaring attributes of the class `c`

#define MAX_API_CLASS_ATTR(c, name, type, flags, structname, member) \
    class_addattr((c), attr_offset_new(name, gensym(type), (flags), 0, 0, calcoffset(structname, member)))
#define CLASS_ATTR_CHAR(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "char", flags, structname, member)
#define CLASS_ATTR_LONG(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "long", flags, structname, member)
#define CLASS_ATTR_ATOM_LONG(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "atom_long", flags, structname, member)
#define CLASS_ATTR_INT32(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "int32", flags, structname, member)
#define CLASS_ATTR_FILEPATH(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "filepath", flags, structname, member)
#define CLASS_ATTR_FLOAT(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "float32", flags, structname, member)
#define CLASS_ATTR_DOUBLE(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "float64", flags, structname, member)
#define CLASS_ATTR_SYM(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "symbol", flags, structname, member)
#define CLASS_ATTR_ATOM(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "atom", flags, structname, member)
#define CLASS_ATTR_OBJ(c, name, flags, structname, member) \
    MAX_API_CLASS_ATTR(c, name, "object", flags, structname, member)

#define MAX_API_CLASS_ATTR_ARRAY(c, name, type, flags, structname, member, offsetcount, size)        \
    class_addattr((c), attr_offset_array_new(name, gensym(type), (size), (flags), 0, 0, offsetcount, \
                                             calcoffset(structname, member)))
#define CLASS_ATTR_LONG_ARRAY(c, name, flags, structname, member, size) \
    MAX_API_CLASS_ATTR_ARRAY(c, name, "long", flags, structname, member, 0, size)
#define CLASS_ATTR_FLOAT_ARRAY(c, name, flags, structname, member, size) \
    MAX_API_CLASS_ATTR_ARRAY(c, name, "float32", flags, structname, member, 0, size)
#define CLASS_ATTR_DOUBLE_ARRAY(c, name, flags, structname, member, size) \
    MAX_API_CLASS_ATTR_ARRAY(c, name, "float64", flags, structname, member, 0, size)
#define CLASS_ATTR_SYM_VARSIZE(c, name, flags, structname, member, sizemember, maxsize) \
    MAX_API_CLASS_ATTR_ARRAY(c, name, "symbol", flags, structname, member, calcoffset(structname, sizemember), maxsize)
#define CLASS_ATTR_LONG_VARSIZE(c, name, flags, structname, member, sizemember, maxsize) \
    MAX_API_CLASS_ATTR_ARRAY(c, name, "long", flags, structname, member, calcoffset(structname, sizemember), maxsize)
#define CLASS_ATTR_DOUBLE_VARSIZE(c, name, flags, structname, member, sizemember, maxsize) \
    MAX_API_CLASS_ATTR_ARRAY(c, name, "float64", flags, structname, member, calcoffset(structname, sizemember), maxsize)
#define CLASS_ATTR_ATOM_VARSIZE(c, name, flags, structname, member, sizemember, maxsize) \
    MAX_API_CLASS_ATTR_ARRAY(c, name, "atom", flags, structname, member, calcoffset(structname, sizemember), maxsize)

/// Own accessors instead of the default ones; null keeps a default.
#define CLASS_ATTR_ACCESSORS(c, name, getter, setter)                            \
    do {                                                                         \
        t_object* max_api_attr = (t_object*)class_attr_get(c, gensym(name));     \
        object_method(max_api_attr, gensym("setmethod"), gensym("get"), getter); \
        object_method(max_api_attr, gensym("setmethod"), gensym("set"), setter); \
    } while (0)

#define MAX_API_CLASS_ATTR_FILTER(c, name, min, max, usemin, usemax)         \
    do {                                                                     \
        t_object* max_api_attr = (t_object*)class_attr_get(c, gensym(name)); \
        attr_addfilter_clip(max_api_attr, min, max, usemin, usemax);         \
    } while (0)
#define CLASS_ATTR_FILTER_CLIP(c, name, min, max) MAX_API_CLASS_ATTR_FILTER(c, name, min, max, 1, 1)
#define CLASS_ATTR_FILTER_MIN(c, name, min) MAX_API_CLASS_ATTR_FILTER(c, name, min, 0, 1, 0)
#define CLASS_ATTR_FILTER_MAX(c, name, max) MAX_API_CLASS_ATTR_FILTER(c, name, 0, max, 0, 1)

/// A property of an attribute: its value as text to parse, or as one symbol.
#define CLASS_ATTR_ATTR_PARSE(c, name, property, type, flags, text) \
    class_attr_addattr_parse(c, name, property, type, flags, text)
#define MAX_API_CLASS_ATTR_TEXT(c, name, property, flags, text) \
    class_attr_addattr_format(c, name, property, gensym("symbol"), flags, "s", gensym_tr(text))
#define MAX_API_CLASS_ATTR_OWN(c, name, property, flags, text) \
    CLASS_ATTR_ATTR_PARSE(c, name, property,                   \
                          (t_symbol*)object_method(class_attr_get(c, gensym(name)), gensym("gettype")), flags, text)

#define CLASS_ATTR_LABEL(c, name, flags, text) MAX_API_CLASS_ATTR_TEXT(c, name, "label", flags, text)
#define CLASS_ATTR_CATEGORY(c, name, flags, text) MAX_API_CLASS_ATTR_TEXT(c, name, "category", flags, text)
#define CLASS_ATTR_STYLE(c, name, flags, text) CLASS_ATTR_ATTR_PARSE(c, name, "style", gensym("symbol"), flags, text)
#define CLASS_ATTR_STYLE_LABEL(c, name, flags, style, label) \
    do {                                                     \
        CLASS_ATTR_STYLE(c, name, flags, style);             \
        CLASS_ATTR_LABEL(c, name, flags, label);             \
    } while (0)
#define CLASS_ATTR_ENUM(c, name, flags, text)                                    \
    do {                                                                         \
        CLASS_ATTR_STYLE(c, name, flags, "enum");                                \
        CLASS_ATTR_ATTR_PARSE(c, name, "enumvals", gensym("atom"), flags, text); \
    } while (0)
#define CLASS_ATTR_ENUMINDEX(c, name, flags, text)                               \
    do {                                                                         \
        CLASS_ATTR_STYLE(c, name, flags, "enumindex");                           \
        CLASS_ATTR_ATTR_PARSE(c, name, "enumvals", gensym("atom"), flags, text); \
    } while (0)
#define CLASS_ATTR_DEFAULT(c, name, flags, text) MAX_API_CLASS_ATTR_OWN(c, name, "default", flags, text)
#define CLASS_ATTR_DEFAULTNAME(c, name, flags, text) MAX_API_CLASS_ATTR_OWN(c, name, "defaultname", flags, text)
#define CLASS_ATTR_MIN(c, name, flags, text) MAX_API_CLASS_ATTR_OWN(c, name, "min", flags, text)
#define CLASS_ATTR_MAX(c, name, flags, text) MAX_API_CLASS_ATTR_OWN(c, name, "max", flags, text)
#define CLASS_ATTR_ORDER(c, name, flags, text) CLASS_ATTR_ATTR_PARSE(c, name, "order", gensym("long"), flags, text)
#define CLASS_ATTR_SAVE(c, name, flags) CLASS_ATTR_ATTR_PARSE(c, name, "save", gensym("long"), flags, "1")
#define CLASS_ATTR_SELFSAVE(c, name, flags) CLASS_ATTR_ATTR_PARSE(c, name, "selfsave", gensym("long"), flags, "1")
#define CLASS_ATTR_BASIC(c, name, flags) CLASS_ATTR_ATTR_PARSE(c, name, "basic", gensym("long"), flags, "1")
#define CLASS_ATTR_PAINT(c, name, flags) CLASS_ATTR_ATTR_PARSE(c, name, "paint", gensym("long"), flags, "1")
#define CLASS_ATTR_INVISIBLE(c, name, flags) CLASS_ATTR_ATTR_PARSE(c, name, "invisible", gensym("long"), flags, "1")
