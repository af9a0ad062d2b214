// The obex: objects kept under names on an instance, and freed with it unless they are someone else's.

#include <algorithm>

#include "core/Instance.h"
#include "core/OutOfMemory.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

ObexEntry* FindEntry(t_object* x, const t_symbol* key) {
    Instance* const instance = FindInstance(x);
    if (instance == nullptr) return nullptr;
    const auto found =
        std::find_if(instance->obex.begin(), instance->obex.end(), [key](const ObexEntry& e) { return e.key == key; });
    return found != instance->obex.end() ? &*found : nullptr;
}

}  // namespace

void FreeObex(t_object* x) {
    Instance* const instance = FindInstance(x);
    while (instance != nullptr && !instance->obex.empty()) {
        const ObexEntry entry = instance->obex.back();
        instance->obex.pop_back();
        if ((entry.flags & (OBJ_FLAG_REF | OBJ_FLAG_DATA)) != 0) continue;
        if ((entry.flags & OBJ_FLAG_MEMORY) != 0) {
            sysmem_freeptr(entry.value);
        } else {
            object_free(entry.value);
        }
    }
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_max_err object_obex_store(void* x, t_symbol* key, t_object* val) { return object_obex_storeflags(x, key, val, 0); }

t_max_err object_obex_storeflags(void* object, t_symbol* key, t_object* val, long flags) try {
    t_object* const x = LivingObject(object);
    if (x == nullptr || key == nullptr) return MAX_ERR_INVALID_PTR;
    if (ObexEntry* const earlier = FindEntry(x, key)) {
        *earlier = {key, val, flags};
    } else {
        GetInstance(x).obex.push_back({key, val, flags});
    }
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err object_obex_lookup(void* object, t_symbol* key, t_object** val) {
    t_object* const x = LivingObject(object);
    if (x == nullptr || val == nullptr) return MAX_ERR_INVALID_PTR;
    const ObexEntry* const entry = FindEntry(x, key);
    if (entry == nullptr) return MAX_ERR_GENERIC;
    *val = entry->value;
    return MAX_ERR_NONE;
}

void object_obex_dumpout(void* x, t_symbol* s, long argc, t_atom* argv) {
    t_object* outlet = nullptr;
    if (object_obex_lookup(x, gensym("dumpout"), &outlet) != MAX_ERR_NONE || outlet == nullptr) return;
    outlet_anything(outlet, s, static_cast<short>(argc), argv);
}

}  // extern "C"
