// Attributes from "@name value …" runs and from dictionaries.

#include <string>
#include <vector>

#include "core/Attribute.h"
#include "core/AttributeRuns.h"
#include "core/DictionaryRecord.h"
#include "core/OutOfMemory.h"
#include "ext_obex.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

bool StartsRun(const t_atom& atom) { return atom.a_type == A_SYM && atom_getsym(&atom)->s_name[0] == '@'; }

void PostError(void* x, const std::string& text) {
    const t_symbol* const name = object_classname(x);
    PostRow(RowKind::Error, name != nullptr ? name->s_name : nullptr, text.c_str());
}

}  // namespace

long FindFirstRun(long ac, const t_atom* av) {
    long index = 0;
    while (index < ac && !StartsRun(av[index])) ++index;
    return index;
}

std::vector<AttributeRun> FindRuns(long ac, t_atom* av) {
    std::vector<AttributeRun> runs;
    for (long index = FindFirstRun(ac, av); index < ac;) {
        t_atom* const values = av + index + 1;
        const long count = FindFirstRun(ac - index - 1, values);
        runs.push_back({gensym(atom_getsym(av + index)->s_name + 1), count, values});
        index += 1 + count;
    }
    return runs;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

long attr_args_offset(short ac, t_atom* av) { return av != nullptr ? FindFirstRun(ac, av) : ac; }

void attr_args_process(void* x, short ac, t_atom* av) try {
    for (const AttributeRun& run : FindRuns(ac, av)) {
        if (object_attr_setvalueof(x, run.name, run.count, run.values) != MAX_ERR_NONE) {
            PostError(x, "can not set the attribute \"" + std::string(run.name->s_name) + '"');
        }
    }
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

void attr_args_dictionary(t_dictionary* x, short ac, t_atom* av) try {
    for (const AttributeRun& run : FindRuns(ac, av)) dictionary_appendatoms(x, run.name, run.count, run.values);
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

void attr_dictionary_process(void* x, t_dictionary* d) try {
    const DictionaryState* const state = StateOf(d);
    if (state == nullptr) return;
    // A copy of the keys: setters may change the dictionary.
    std::vector<t_symbol*> keys;
    for (const DictionaryState::Entry& entry : state->entries) keys.push_back(entry.key);
    for (t_symbol* key : keys) {
        long ac = 0;
        t_atom* av = nullptr;
        if (FindAttribute(x, key) == nullptr || dictionary_getatoms(d, key, &ac, &av) != MAX_ERR_NONE) continue;
        object_attr_setvalueof(x, key, ac, av);
    }
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

void attr_dictionary_check(void* x, t_dictionary* d) try {
    const DictionaryState* const state = StateOf(d);
    if (state == nullptr) return;
    for (const DictionaryState::Entry& entry : state->entries) {
        if (FindAttribute(x, entry.key) != nullptr) continue;
        PostError(x, '"' + std::string(entry.key->s_name) + "\" is not an attribute");
    }
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

}  // extern "C"
