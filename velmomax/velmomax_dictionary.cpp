#include "velmomax_dictionary.h"

#include "velmomax_atoms.h"
#include "velmomax_attribute.h"
#include "velmomax_guard.h"
#include "velmomax_object.h"
#include "velmomax_state.h"
#include "velmomax_text.h"

namespace velmomax {

namespace {

t_max_err appendAtom(void* x, t_dictionary* dict, t_symbol* name, const t_atom& atom) {
    switch (atom.a_type) {
        case A_SYM:
            return dictionary_appendsym(dict, name, atom_getsym(&atom));
        case A_FLOAT:
            return dictionary_appendfloat(dict, name, static_cast<double>(static_cast<float>(atom_getfloat(&atom))));
        case A_LONG:
            return dictionary_appendlong(dict, name, atom_getlong(&atom));
        default:
            object_warn(static_cast<t_object*>(x), "unknown atom type in AppendAttributeToDictionary");
            return MAX_ERR_NONE;
    }
}

/// Adds the attributes that the arguments of "dumpdict" name. False when one of them is no name.
bool appendNamedAttributes(void* x, t_dictionary* dict, long argc, t_atom* argv) {
    for (long i = 0; i < argc; ++i) {
        if (argv[i].a_type != A_SYM) {
            post_error_message(x, argc, argv, "invalid message : dumpdict");
            return false;
        }
        AppendAttributeToDictionary(x, dict, atom_getsym(&argv[i]));
    }
    return true;
}

void parseEntry(void* x, t_dictionary* dict, t_symbol* key) {
    const DictionaryValue value(dict, key);
    if (!value.IsAtoms()) {
        object_error(static_cast<t_object*>(x), "entry %s is not atom ? ", key->s_name);
    } else if (value.Count() > 0) {
        object_attr_setvalueof(x, key, value.Count(), value.Atoms());
    }
}

}  // namespace

t_dictionary* AddAttributesToDictionary(void* x) {
    OwnedObject<t_dictionary> dict(dictionary_new());
    for (t_symbol* name : GetStateAttributes(x)) AppendAttributeToDictionary(x, dict.get(), name);
    return dict.release();
}

void AppendAttributeToDictionary(void* x, t_dictionary* dict, t_symbol* name) {
    if (!dict) return;
    auto* object = static_cast<t_object*>(x);
    if (MaxAttribute(x, name).IsNull()) {
        object_error(object, "no attribute %s", name->s_name);
        return;
    }
    const AttributeValue value(x, name);
    if (value.Error() != MAX_ERR_NONE) {
        object_bug(object, "AppendAttributeToDictionary : %s in object_attr_getvalueof (%s)",
                   GetErrorName(value.Error()), name->s_name);
        ThrowIfOutOfMemory(value.Error());
    } else if (value.Count() == 1) {
        ThrowIfOutOfMemory(appendAtom(x, dict, name, value[0]));
    } else if (value.Count() > 1) {
        ThrowIfOutOfMemory(dictionary_appendatoms(dict, name, value.Count(), const_cast<t_atom*>(value.Atoms())));
    }
}

void dump_dictionary(void* x, t_dictionary* dict) noexcept {
    t_outlet* outlet = getdumpoutlet(x);
    if (!outlet) return;
    t_symbol* name = dict ? symbol_unique() : nullptr;
    dict = name ? dictobj_register(dict, &name) : nullptr;
    if (!dict) {
        object_error(static_cast<t_object*>(x), "couldnt create dictionary");
        return;
    }
    t_atom argument{};
    atom_setsym(&argument, name);
    outlet_anything(outlet, gensym("dictionary"), 1, &argument);
    dictionary_clear(dict);
}

bool parse_dictionary(void* x, t_dictionary* dict) noexcept {
    const DictionaryKeys keys(dict, dictionary_getkeys);
    if (keys.Error() != MAX_ERR_NONE || keys.ReportedCount() < 0) {
        object_error(static_cast<t_object*>(x), "couldnt get dict key : %s", GetErrorName(keys.Error()));
        return false;
    }
    for (t_symbol* key : keys) parseEntry(x, dict, key);
    return true;
}

void dump_dict(void* x, t_symbol*, long argc, t_atom* argv) noexcept {
    Guarded(x, [&] {
        OwnedObject<t_dictionary> dict(argc > 0 ? dictionary_new() : AddAttributesToDictionary(x));
        if (appendNamedAttributes(x, dict.get(), argc, argv)) dump_dictionary(x, dict.get());
        // The host's from now on
        if (dict && dictobj_namefromptr(dict.get())) static_cast<void>(dict.release());
    });
}

void readdict(void* x, t_symbol* name) noexcept {
    auto* object = static_cast<t_object*>(x);
    t_dictionary* dict = dictobj_findregistered_retain(name);
    if (!dict) {
        object_error(object, "unable to reference dictionary named %s", name->s_name);
        return;
    }
    const bool isParsed = parse_dictionary(x, dict);
    dictobj_release(dict);
    if (!isParsed) object_error(object, "error parsing dictionary named %s", name->s_name);
}

}  // namespace velmomax
