#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "core/AtomText.h"
#include "core/Messages.h"
#include "core/Objects.h"
#include "ext.h"
#include "ext_obex.h"
#include "ext_obex_util.h"
#include "support/CapturedWindow.h"

namespace velmotest {

using testing::ElementsAre;
using testing::IsEmpty;
using velmohost::AtomsToText;
using velmohost::ParseAtoms;

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

/// A class without constructor; it goes away at the end of its scope, after the objects made of it.
template <class Record>
class TestClass {
public:
    explicit TestClass(const char* name, method freeFunction = nullptr)
        : c(class_new(name, nullptr, freeFunction, static_cast<long>(sizeof(Record)), nullptr, 0)) {}
    ~TestClass() { class_free(c); }
    TestClass(const TestClass&) = delete;
    TestClass& operator=(const TestClass&) = delete;

    operator t_class*() const { return c; }
    Owned<Record> New() const { return Owned<Record>(static_cast<Record*>(object_alloc(c))); }

private:
    t_class* const c;
};

/// What leaves the outlets of all objects while it lives, as "outlet selector atoms; " for each message.
struct OutletLog {
    OutletLog() {
        velmohost::SetOutletListener([this](t_object*, t_outlet*, unsigned i, t_symbol* s, long ac, const t_atom* av) {
            text += std::to_string(i) + " " + s->s_name + (ac > 0 ? " " + AtomsToText(ac, av) : "") + "; ";
        });
    }
    ~OutletLog() { velmohost::SetOutletListener({}); }
    OutletLog(const OutletLog&) = delete;
    OutletLog& operator=(const OutletLog&) = delete;

    std::string text;
};

/// Sends a user's message, written as in a message box.
inline bool Send(void* x, const std::string& message, unsigned inlet = 0) {
    std::vector<t_atom> atoms = ParseAtoms(message);
    return velmohost::SendMessage(static_cast<t_object*>(x), inlet, atom_getsym(atoms.data()),
                                  static_cast<long>(atoms.size()) - 1, atoms.data() + 1);
}

/// What a dictionary holds, in its order, as "key atoms; " for each entry.
inline std::string DictionaryText(const t_dictionary* d) {
    std::string text;
    long numKeys = 0, ac = 0;
    t_symbol** keys = nullptr;
    t_atom* av = nullptr;
    dictionary_getkeys_ordered(d, &numKeys, &keys);
    for (long i = 0; i < numKeys; ++i) {
        dictionary_getatoms(d, keys[i], &ac, &av);
        text += std::string(keys[i]->s_name) + " " + AtomsToText(ac, av) + "; ";
    }
    dictionary_freekeys(const_cast<t_dictionary*>(d), numKeys, keys);
    return text;
}

/// The value of an attribute as text, "error" when it can not be read.
inline std::string ValueText(void* x, const char* attribute) {
    long ac = 0;
    t_atom* av = nullptr;
    if (object_attr_getvalueof(x, gensym(attribute), &ac, &av) != MAX_ERR_NONE) return "error";
    const std::string text = AtomsToText(ac, av);
    sysmem_freeptr(av);
    return text;
}

/// Sets an attribute from the atoms of a text.
inline t_max_err SetFromText(void* x, const char* attribute, const std::string& text) {
    std::vector<t_atom> atoms = ParseAtoms(text);
    return object_attr_setvalueof(x, gensym(attribute), static_cast<long>(atoms.size()), atoms.data());
}

}  // namespace velmotest
