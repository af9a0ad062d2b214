// Attributes made with their value in one call: the properties of attributes above all.

#include <cstdarg>
#include <string>

#include "core/AtomFormat.h"
#include "core/AtomText.h"
#include "core/Attribute.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "ext_obex.h"
#include "ext_obex_util.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

t_max_err AddWithValue(void* x, const char* name, const t_symbol* type, long flags, const std::vector<t_atom>& values) {
    if (NOGOOD(x)) return MAX_ERR_INVALID_PTR;
    OwnedRecord<Attribute> attribute(NewOwnAttribute(name, type, flags, values));
    if (attribute == nullptr) return MAX_ERR_INVALID_PTR;
    const t_max_err result = object_addattr(x, &attribute->attr.ob);
    if (result == MAX_ERR_NONE) static_cast<void>(attribute.release());
    return result;
}

t_max_err AddFormatted(void* x, const char* name, const t_symbol* type, long flags, const char* format,
                       std::va_list values) {
    std::vector<t_atom> atoms;
    const t_max_err result = FormatAtoms(format, values, atoms);
    return result == MAX_ERR_NONE ? AddWithValue(x, name, type, flags, atoms) : result;
}

/// The attribute to give a property to; an error row when the class has none of that name.
Attribute* FindForProperty(t_class* c, const char* name) {
    Attribute* const found = c != nullptr && name != nullptr ? FindClassAttribute(c, gensym(name)) : nullptr;
    if (found == nullptr && c != nullptr && name != nullptr) {
        const std::string text = "the class has no attribute \"" + std::string(name) + '"';
        PostRow(RowKind::Error, c->c_sym->s_name, text.c_str());
    }
    return found;
}

std::vector<t_atom> ParseOrNothing(const char* text) {
    return text != nullptr ? ParseAtoms(text) : std::vector<t_atom>{};
}

std::vector<t_atom> Copy(long ac, const t_atom* av) {
    return ac > 0 && av != nullptr ? std::vector<t_atom>(av, av + ac) : std::vector<t_atom>{};
}

}  // namespace
}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_max_err class_attr_addattr_parse(t_class* c, const char* attrname, const char* attrname2, t_symbol* type, long flags,
                                   const char* parsestr) try {
    return AddWithValue(FindForProperty(c, attrname), attrname2, type, flags, ParseOrNothing(parsestr));
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err class_attr_addattr_format(t_class* c, const char* attrname, const char* attrname2, const t_symbol* type,
                                    long flags, const char* fmt, ...) try {
    std::va_list values;
    va_start(values, fmt);
    const t_max_err result = AddFormatted(FindForProperty(c, attrname), attrname2, type, flags, fmt, values);
    va_end(values);
    return result;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err class_attr_addattr_atoms(t_class* c, const char* attrname, const char* attrname2, t_symbol* type, long flags,
                                   long argc, t_atom* argv) try {
    return AddWithValue(FindForProperty(c, attrname), attrname2, type, flags, Copy(argc, argv));
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_attr_addattr_parse(t_object* x, const char* attrname, const char* attrname2, t_symbol* type,
                                    long flags, const char* parsestr) try {
    return AddWithValue(FindAttribute(x, gensym(attrname)), attrname2, type, flags, ParseOrNothing(parsestr));
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_attr_addattr_format(t_object* x, const char* attrname, const char* attrname2, t_symbol* type,
                                     long flags, const char* fmt, ...) try {
    std::va_list values;
    va_start(values, fmt);
    const t_max_err result = AddFormatted(FindAttribute(x, gensym(attrname)), attrname2, type, flags, fmt, values);
    va_end(values);
    return result;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_addattr_parse(t_object* x, const char* attrname, t_symbol* type, long flags,
                               const char* parsestr) try {
    return AddWithValue(x, attrname, type, flags, ParseOrNothing(parsestr));
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_addattr_format(t_object* x, const char* attrname, t_symbol* type, long flags, const char* fmt,
                                ...) try {
    std::va_list values;
    va_start(values, fmt);
    const t_max_err result = AddFormatted(x, attrname, type, flags, fmt, values);
    va_end(values);
    return result;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_addattr_atoms(t_object* x, const char* attrname, t_symbol* type, long flags, long argc,
                               t_atom* argv) try {
    return AddWithValue(x, attrname, type, flags, Copy(argc, argv));
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_object* attribute_new_parse(const char* attrname, t_symbol* type, long flags, const char* parsestr) try {
    return reinterpret_cast<t_object*>(NewOwnAttribute(attrname, type, flags, ParseOrNothing(parsestr)));
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_object* attribute_new_format(const char* attrname, t_symbol* type, long flags, const char* fmt, ...) try {
    std::vector<t_atom> atoms;
    std::va_list values;
    va_start(values, fmt);
    const t_max_err result = FormatAtoms(fmt, values, atoms);
    va_end(values);
    return result == MAX_ERR_NONE ? reinterpret_cast<t_object*>(NewOwnAttribute(attrname, type, flags, atoms))
                                  : nullptr;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_object* attribute_new_atoms(const char* attrname, t_symbol* type, long flags, long argc, t_atom* argv) try {
    return reinterpret_cast<t_object*>(NewOwnAttribute(attrname, type, flags, Copy(argc, argv)));
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // extern "C"
