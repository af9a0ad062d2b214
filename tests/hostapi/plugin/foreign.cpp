// A plug-in of another maker, as far as the host is concerned: it calls functions that this host does not have, and on
// Windows it has no start function of its own, but the audio library's.

#include "ext.h"

#include "ext_obex.h"
#include "z_dsp.h"

extern "C" {
double systimer_gettime(void);
void* qelem_new(void* x, method function);
}

namespace {

t_class* foreignClass = nullptr;

void* New() { return object_alloc(foreignClass); }

void Bang(t_object* x) {
    for (int i = 0; i < 2; ++i) {
        object_post(x, "the time is %g, there is %s queue", systimer_gettime(), qelem_new(x, nullptr) ? "a" : "no");
    }
    object_post(x, "the rate is %g", static_cast<double>(sys_getsr()));
}

}  // namespace

extern "C" C74_EXPORT void ext_main(void*) {
    foreignClass = class_new("foreign", reinterpret_cast<method>(New), nullptr, sizeof(t_object), nullptr, 0);
    class_addmethod(foreignClass, reinterpret_cast<method>(Bang), "bang", 0);
    class_register(CLASS_BOX, foreignClass);
}
