#include "velmomax_documentation.h"

#include <array>

namespace velmomax {

namespace {

t_object* descriptionAttribute(t_class* c) {
    return static_cast<t_object*>(class_attr_get(c, gensym("classdescription")));
}

/// The dictionary of documented messages, or null when nothing was documented yet.
t_dictionary* methodStore(t_object* attribute) {
    return reinterpret_cast<t_dictionary*>(object_attr_getobj(attribute, gensym("methods")));
}

t_dictionary* addMethodStore(t_object* attribute) {
    t_dictionary* store = dictionary_new();
    object_addattr_format(attribute, "methods", gensym("object"), 0, "o", store);
    return store;
}

}  // namespace

void class_doc_method(t_class* c, const char* methodName, const char* description) noexcept {
    t_object* attribute = descriptionAttribute(c);
    if (!attribute) return;
    t_dictionary* store = methodStore(attribute);
    if (!store) store = addMethodStore(attribute);

    std::array<t_atom, 2> entry{};
    atom_setsym(&entry[0], gensym(description));
    atom_setlong(&entry[1], 0);
    t_atomarray* pairs = atomarray_new(static_cast<long>(entry.size()), entry.data());
    dictionary_appendobject(store, gensym(methodName), reinterpret_cast<t_object*>(pairs));
}

void class_doc_method_arg(t_class* c, const char* methodName, const char* argDescription,
                          const char* argType) noexcept {
    t_object* attribute = descriptionAttribute(c);
    if (!attribute) return;
    t_dictionary* store = methodStore(attribute);
    if (!store) return;
    t_object* pairs = nullptr;
    if (dictionary_getobject(store, gensym(methodName), &pairs) || !pairs) return;

    std::array<t_atom, 2> argument{};
    atom_setsym(&argument[0], gensym(argDescription));
    atom_setsym(&argument[1], gensym(argType));
    atomarray_appendatoms(reinterpret_cast<t_atomarray*>(pairs), static_cast<long>(argument.size()), argument.data());
}

}  // namespace velmomax
