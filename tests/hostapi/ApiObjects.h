#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/AtomText.h"
#include "ext.h"
#include "ext_obex.h"

namespace velmotest {

struct FreeObject {
    void operator()(void* x) const { object_free(x); }
};

/// An object of the host's API that is freed at the end of its scope.
template <class Object>
using Owned = std::unique_ptr<Object, FreeObject>;

/// A plug-in's function as the API takes it.
template <class Function>
method AsMethod(Function* function) {
    return reinterpret_cast<method>(function);
}

/// A class without constructor for objects made with object_alloc.
template <class Record>
t_class* NewClass(const char* name) {
    return class_new(name, nullptr, nullptr, static_cast<long>(sizeof(Record)), nullptr, 0);
}

template <class Record>
Owned<Record> NewObject(t_class* c) {
    return Owned<Record>(static_cast<Record*>(object_alloc(c)));
}

/// The value of an attribute as text, "error" when it can not be read.
inline std::string ValueText(void* x, const char* attribute) {
    long ac = 0;
    t_atom* av = nullptr;
    if (object_attr_getvalueof(x, gensym(attribute), &ac, &av) != MAX_ERR_NONE) return "error";
    const std::string text = velmohost::AtomsToText(ac, av);
    sysmem_freeptr(av);
    return text;
}

/// Sets an attribute from the atoms of a text.
inline t_max_err SetFromText(void* x, const char* attribute, const std::string& text) {
    std::vector<t_atom> atoms = velmohost::ParseAtoms(text);
    return object_attr_setvalueof(x, gensym(attribute), static_cast<long>(atoms.size()), atoms.data());
}

}  // namespace velmotest
