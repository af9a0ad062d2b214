// Dictionaries by name. A name does not keep a dictionary alive; references handed out under it do.

#include <unordered_map>

#include "core/DictionaryRecord.h"
#include "core/Instance.h"
#include "core/OutOfMemory.h"
#include "ext_dictobj.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

using Names = std::unordered_map<const t_symbol*, t_dictionary*>;

Names& RegisteredDictionaries() {
    static Names& names = *new Names;
    return names;
}

t_dictionary* Find(const t_symbol* name) {
    const auto found = RegisteredDictionaries().find(name);
    return found != RegisteredDictionaries().end() ? found->second : nullptr;
}

}  // namespace

void UnregisterDictionary(DictionaryState& state) {
    if (state.registeredName == nullptr) return;
    RegisteredDictionaries().erase(state.registeredName);
    state.registeredName = nullptr;
}

bool PostponeFree(t_object* x) {
    DictionaryState* const state = StateOf(x);
    if (state == nullptr || state->retainCount == 0) return false;
    UnregisterDictionary(*state);
    state->freeAtRelease = true;
    return true;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_dictionary* dictobj_register(t_dictionary* d, t_symbol** name) try {
    DictionaryState* const state = StateOf(d);
    if (state == nullptr || name == nullptr) return nullptr;
    if (*name == nullptr) *name = symbol_unique();
    if (*name == nullptr) return nullptr;
    t_dictionary* const holder = Find(*name);
    if (holder == d) return d;
    if (holder != nullptr) {
        object_free(d);
        return holder;
    }
    UnregisterDictionary(*state);
    RegisteredDictionaries()[*name] = d;
    state->registeredName = *name;
    return d;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err dictobj_unregister(t_dictionary* d) {
    DictionaryState* const state = StateOf(d);
    if (state == nullptr) return MAX_ERR_INVALID_PTR;
    if (state->registeredName == nullptr) return MAX_ERR_GENERIC;
    UnregisterDictionary(*state);
    return MAX_ERR_NONE;
}

t_dictionary* dictobj_findregistered_clone(t_symbol* name) { return dictionary_clone(Find(name)); }

t_dictionary* dictobj_findregistered_retain(t_symbol* name) {
    t_dictionary* const found = Find(name);
    if (found != nullptr) ++StateOf(found)->retainCount;
    return found;
}

t_max_err dictobj_release(t_dictionary* d) {
    DictionaryState* const state = StateOf(d);
    if (state == nullptr) return MAX_ERR_INVALID_PTR;
    if (state->retainCount == 0) return MAX_ERR_GENERIC;
    if (--state->retainCount == 0 && state->freeAtRelease) object_free(d);
    return MAX_ERR_NONE;
}

t_symbol* dictobj_namefromptr(t_dictionary* d) {
    const DictionaryState* const state = StateOf(d);
    return state != nullptr ? state->registeredName : nullptr;
}

}  // extern "C"
