#include "velmomax_arguments.h"

#include <algorithm>
#include <cstdarg>
#include <vector>

#include "velmomax_atoms.h"
#include "velmomax_guard.h"

namespace velmomax {

namespace {

t_dictionary* argumentDictionary(void* x, long argc, t_atom* argv) {
    t_dictionary* dict = object_dictionaryarg(argc, argv);
    if (!dict) object_bug(static_cast<t_object*>(x), "couldnt process dictionnary");
    return dict;
}

}  // namespace

bool dictionary_process_all(void* x, long argc, t_atom* argv, bool check) noexcept {
    t_dictionary* dict = argumentDictionary(x, argc, argv);
    if (!dict) return false;
    if (check) attr_dictionary_check(x, dict);
    attr_dictionary_process(x, dict);
    return true;
}

bool dictionary_process_partial(void* x, long argc, t_atom* argv, int count, ...) {
    t_dictionary* dict = argumentDictionary(x, argc, argv);
    if (!dict) return false;
    std::vector<t_symbol*> names(static_cast<std::size_t>(std::max(count, 0)));
    std::va_list texts;
    va_start(texts, count);
    for (t_symbol*& name : names) name = gensym(va_arg(texts, const char*));
    va_end(texts);
    bool isComplete = true;
    // Every name is tried, so that one message tells the user all that is wrong.
    for (t_symbol* name : names) isComplete &= attr_dictionary_process_atom(x, dict, name);
    if (!isComplete) object_error(static_cast<t_object*>(x), "error parsing dictionary");
    return isComplete;
}

bool attr_dictionary_process_atom(void* x, t_dictionary* dict, t_symbol* name) {
    auto* object = static_cast<t_object*>(x);
    if (!dictionary_hasentry(dict, name)) {
        object_error(object, "dictionary doesnt have entry for %s", name->s_name);
        return false;
    }
    const DictionaryValue value(dict, name);
    if (!value.IsAtoms() || value.Count() != 1) {
        object_error(object, "error getting atom value from dict for entry %s", name->s_name);
        return false;
    }
    ThrowIfOutOfMemory(object_attr_setvalueof(x, name, 1, value.Atoms()));
    return true;
}

}  // namespace velmomax
