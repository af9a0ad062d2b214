#include "velmomax_object.h"

namespace velmomax {

void* ObjectAlloc(t_class* c) noexcept { return object_alloc(c); }

void AddDumpOutlet(void* x) noexcept {
    void* outlet = outlet_new(x, nullptr);
    object_obex_store(x, gensym("dumpout"), static_cast<t_object*>(outlet));
}

t_outlet* getdumpoutlet(void* x) noexcept {
    t_object* outlet = nullptr;
    if (object_obex_lookup(x, gensym("dumpout"), &outlet) || !outlet) {
        object_error(static_cast<t_object*>(x), "no dump outlet");
        return nullptr;
    }
    return reinterpret_cast<t_outlet*>(outlet);
}

}  // namespace velmomax
