// Reading, setting and listing the attributes of classes and objects.

#include <algorithm>
#include <string>

#include "core/Attribute.h"
#include "core/ClassRecord.h"
#include "core/Instance.h"
#include "core/OutOfMemory.h"
#include "core/PluginCall.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

Attribute* FindAmong(const std::vector<t_object*>& attributes, const t_symbol* name) {
    const auto found = std::find_if(attributes.begin(), attributes.end(), [name](t_object* attribute) {
        return reinterpret_cast<Attribute*>(attribute)->attr.name == name;
    });
    return found != attributes.end() ? reinterpret_cast<Attribute*>(*found) : nullptr;
}

/// Adds an attribute; an earlier one of its name is freed, and its place taken.
t_max_err Add(std::vector<t_object*>& attributes, t_object* attribute) {
    const Attribute* const added = AsAttribute(attribute);
    if (added == nullptr) return MAX_ERR_INVALID_PTR;
    Attribute* const earlier = FindAmong(attributes, added->attr.name);
    if (earlier == added) return MAX_ERR_DUPLICATE;
    if (earlier == nullptr) {
        attributes.push_back(attribute);
        return MAX_ERR_NONE;
    }
    std::replace(attributes.begin(), attributes.end(), &earlier->attr.ob, attribute);
    object_free(earlier);
    return MAX_ERR_NONE;
}

/// One value of an attribute; nothing written when it is missing.
bool GetFirst(void* x, t_symbol* name, t_atom& value) {
    long ac = 0;
    t_atom* av = nullptr;
    if (object_attr_getvalueof(x, name, &ac, &av) != MAX_ERR_NONE) return false;
    const bool found = ac > 0 && av != nullptr;
    if (found) value = av[0];
    sysmem_freeptr(av);
    return found;
}

t_atom GetFirstOrNothing(void* x, t_symbol* name) {
    t_atom value{};
    GetFirst(x, name, value);
    return value;
}

}  // namespace

Attribute* FindAttribute(void* object, const t_symbol* name) {
    t_object* const x = LivingObject(object);
    if (x == nullptr) return nullptr;
    const Instance* const instance = FindInstance(x);
    Attribute* const own = instance != nullptr ? FindAmong(instance->attributes, name) : nullptr;
    return own != nullptr ? own : FindClassAttribute(ob_class(x), name);
}

Attribute* FindClassAttribute(t_class* c, const t_symbol* name) {
    return c != nullptr ? FindAmong(RecordOf(c).attributes, name) : nullptr;
}

t_max_err GetValue(t_object* owner, Attribute& attribute, long* ac, t_atom** av) {
    if (ac == nullptr || av == nullptr) return MAX_ERR_INVALID_PTR;
    const t_max_err result = CallPlugin<t_max_err>(attribute.attr.get, owner, &attribute, ac, av);
    if (result == MAX_ERR_NONE) ApplyFilter(attribute.attr.filterget, *ac, *av);
    return result;
}

t_max_err SetValue(t_object* owner, Attribute& attribute, long ac, t_atom* av) {
    if (ac < 0 || (ac > 0 && av == nullptr)) return MAX_ERR_INVALID_PTR;
    // The filter works on a copy: the caller's atoms are the caller's.
    std::vector<t_atom> atoms(av, av + ac);
    ApplyFilter(attribute.attr.filterset, ac, atoms.data());
    t_symbol* const name = attribute.attr.name;
    const t_max_err result = CallPlugin<t_max_err>(attribute.attr.set, owner, &attribute, ac, atoms.data());
    if (result == MAX_ERR_NONE) object_attr_touch(owner, name);
    return result;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_max_err class_addattr(t_class* c, t_object* attr) try {
    return c != nullptr ? Add(RecordOf(c).attributes, attr) : static_cast<t_max_err>(MAX_ERR_INVALID_PTR);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void* class_attr_get(t_class* x, t_symbol* attrname) { return FindClassAttribute(x, attrname); }

void* object_attr_get(void* x, t_symbol* attrname) { return FindAttribute(x, attrname); }

t_max_err object_attr_getvalueof(void* x, t_symbol* s, long* argc, t_atom** argv) {
    Attribute* const attribute = FindAttribute(x, s);
    if (attribute == nullptr || (attribute->attr.flags & ATTR_GET_OPAQUE) != 0) return MAX_ERR_GENERIC;
    return GetValue(static_cast<t_object*>(x), *attribute, argc, argv);
}

t_max_err object_attr_setvalueof(void* x, t_symbol* s, long argc, t_atom* argv) try {
    Attribute* const attribute = FindAttribute(x, s);
    if (attribute == nullptr || (attribute->attr.flags & ATTR_SET_OPAQUE) != 0) return MAX_ERR_GENERIC;
    return SetValue(static_cast<t_object*>(x), *attribute, argc, argv);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_attr_getnames(void* object, long* argc, t_symbol*** argv) try {
    t_object* const x = LivingObject(object);
    if (x == nullptr || argc == nullptr || argv == nullptr) return MAX_ERR_INVALID_PTR;
    std::vector<t_object*> attributes = RecordOf(ob_class(x)).attributes;
    if (const Instance* const instance = FindInstance(x)) {
        attributes.insert(attributes.end(), instance->attributes.begin(), instance->attributes.end());
    }
    std::vector<t_symbol*> names;
    for (t_object* attribute : attributes) {
        t_symbol* const name = reinterpret_cast<Attribute*>(attribute)->attr.name;
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
    *argv = names.empty() ? nullptr : reinterpret_cast<t_symbol**>(sysmem_newptr(names.size() * sizeof(t_symbol*)));
    if (*argv == nullptr && !names.empty()) throw std::bad_alloc();
    *argc = static_cast<long>(names.size());
    std::copy(names.begin(), names.end(), *argv);
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_addattr(void* object, t_object* attr) try {
    t_object* const x = LivingObject(object);
    return x != nullptr ? Add(GetInstance(x).attributes, attr) : static_cast<t_max_err>(MAX_ERR_INVALID_PTR);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_chuckattr(void* object, t_symbol* attrname) {
    t_object* const x = LivingObject(object);
    if (x == nullptr) return MAX_ERR_INVALID_PTR;
    std::vector<t_object*>& attributes = GetInstance(x).attributes;
    Attribute* const found = FindAmong(attributes, attrname);
    return found != nullptr && std::erase(attributes, &found->attr.ob) > 0 ? MAX_ERR_NONE : MAX_ERR_GENERIC;
}

t_max_err object_deleteattr(void* x, t_symbol* attrname) {
    Attribute* const attribute = FindAttribute(x, attrname);
    const t_max_err result = object_chuckattr(x, attrname);
    if (result == MAX_ERR_NONE) object_free(attribute);
    return result;
}

t_max_err object_attr_touch(t_object* x, t_symbol* attrname) {
    Attribute* const attribute = FindAttribute(x, attrname);
    return attribute != nullptr ? object_notify(x, gensym("attr_modified"), attribute)
                                : static_cast<t_max_err>(MAX_ERR_GENERIC);
}

method object_attr_method(void* x, t_symbol* methodname, void** attr, long* get) try {
    if (methodname == nullptr || attr == nullptr || get == nullptr) return nullptr;
    const std::string name = methodname->s_name;
    Attribute* attribute = FindAttribute(x, methodname);
    *get = attribute == nullptr && name.starts_with("get");
    if (*get != 0) attribute = FindAttribute(x, gensym(name.substr(3).c_str()));
    if (attribute == nullptr) return nullptr;
    *attr = attribute;
    return *get != 0 ? attribute->attr.get : attribute->attr.set;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

long object_attr_usercanget(void* x, t_symbol* s) {
    const Attribute* const attribute = FindAttribute(x, s);
    return attribute != nullptr && (attribute->attr.flags & (ATTR_GET_OPAQUE | ATTR_GET_OPAQUE_USER)) == 0;
}

long object_attr_usercanset(void* x, t_symbol* s) {
    const Attribute* const attribute = FindAttribute(x, s);
    return attribute != nullptr && (attribute->attr.flags & (ATTR_SET_OPAQUE | ATTR_SET_OPAQUE_USER)) == 0;
}

t_atom_long object_attr_getlong(void* x, t_symbol* s) {
    const t_atom value = GetFirstOrNothing(x, s);
    return atom_getlong(&value);
}

t_atom_float object_attr_getfloat(void* x, t_symbol* s) {
    const t_atom value = GetFirstOrNothing(x, s);
    return atom_getfloat(&value);
}

t_symbol* object_attr_getsym(void* x, t_symbol* s) {
    const t_atom value = GetFirstOrNothing(x, s);
    return atom_getsym(&value);
}

char object_attr_getchar(void* x, t_symbol* s) { return static_cast<char>(object_attr_getlong(x, s)); }

t_object* object_attr_getobj(void* x, t_symbol* s) {
    const t_atom value = GetFirstOrNothing(x, s);
    return static_cast<t_object*>(atom_getobj(&value));
}

t_max_err object_attr_setlong(void* x, t_symbol* s, t_atom_long c) {
    t_atom atom;
    atom_setlong(&atom, c);
    return object_attr_setvalueof(x, s, 1, &atom);
}

t_max_err object_attr_setfloat(void* x, t_symbol* s, t_atom_float c) {
    t_atom atom;
    atom_setfloat(&atom, c);
    return object_attr_setvalueof(x, s, 1, &atom);
}

t_max_err object_attr_setsym(void* x, t_symbol* s, t_symbol* c) {
    t_atom atom;
    atom_setsym(&atom, c);
    return object_attr_setvalueof(x, s, 1, &atom);
}

t_max_err object_attr_setchar(void* x, t_symbol* s, char c) { return object_attr_setlong(x, s, c); }

t_max_err object_attr_setobj(void* x, t_symbol* s, t_object* o) {
    t_atom atom;
    atom_setobj(&atom, o);
    return object_attr_setvalueof(x, s, 1, &atom);
}

}  // extern "C"
