// The life of an object: memory, header, construction through its class, and the order in which all is taken back.

#include "core/Objects.h"

#include "core/ClassRecord.h"
#include "core/Construction.h"
#include "core/Instance.h"
#include "core/OutOfMemory.h"
#include "core/PluginCall.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

/// "#P" and "#B" answer for the object's whole life, their symbols only while its constructor runs.
void KeepBoxContext(t_object* x) {
    for (const char* key : {"#P", "#B"}) {
        if (t_object* const value = gensym(key)->s_thing) object_obex_storeflags(x, gensym(key), value, OBJ_FLAG_REF);
    }
}

}  // namespace

Instance& GetInstance(t_object* x) {
    if (x->o_inlet == nullptr) x->o_inlet = new Instance;
    return *FindInstance(x);
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

void* object_alloc(t_class* c) {
    if (c == nullptr) return nullptr;
    const bool zero = (c->c_flags & CLASS_FLAG_DO_NOT_ZERO) == 0;
    const t_ptr memory = zero ? sysmem_newptrclear(c->c_size) : sysmem_newptr(c->c_size);
    if (memory == nullptr) return nullptr;
    auto* const x = reinterpret_cast<t_object*>(memory);
    *x = {c->c_messlist, OB_MAGIC, nullptr, nullptr};
    KeepBoxContext(x);
    return x;
}

t_max_err object_free(void* object) {
    if (object == nullptr) return MAX_ERR_NONE;
    t_object* const x = LivingObject(object);
    if (x == nullptr) return MAX_ERR_INVALID_PTR;
    if (PostponeFree(x)) return MAX_ERR_NONE;
    ForgetRegistration(x);
    if (const method freeFunction = ob_class(x)->c_freefun) CallPlugin<void>(freeFunction, x);
    FreeObex(x);
    FreeInletsAndOutlets(x);
    FreeOwnAttributes(x);
    delete FindInstance(x);
    *x = {};
    sysmem_freeptr(x);
    return MAX_ERR_NONE;
}

void freeobject(void* op) { object_free(op); }

long object_isnogood(t_object* x) { return NOGOOD(x); }

t_class* object_class(void* x) { return NOGOOD(x) ? nullptr : ob_class(x); }

t_symbol* object_classname(void* x) { return class_nameget(object_class(x)); }

t_symbol* object_namespace(t_object* x) { return class_namespace(object_class(x)); }

long object_classname_compare(void* x, t_symbol* name) { return name != nullptr && object_classname(x) == name; }

void* object_new_typed(t_symbol* name_space, t_symbol* classname, long ac, t_atom* av) try {
    t_class* const c = FindClass(name_space, classname);
    return c != nullptr ? Construct(c, classname, ac, av) : nullptr;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void* object_new_imp(void* name_space, void* classname, void* p1, void* p2, void* p3, void* p4, void* p5, void* p6,
                     void* p7, void* p8) try {
    t_class* const c = FindClass(static_cast<t_symbol*>(name_space), static_cast<t_symbol*>(classname));
    if (c == nullptr || c->c_newmess->m_fun == nullptr) return nullptr;
    return CallPlugin<void*>(c->c_newmess->m_fun, p1, p2, p3, p4, p5, p6, p7, p8);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // extern "C"
