// Calls of methods from code: directly, by atoms, or by asking for the function.

#include "core/MethodCalls.h"

#include "core/ClassRecord.h"
#include "core/Instance.h"
#include "core/Messages.h"
#include "core/OutOfMemory.h"
#include "core/PluginCall.h"
#include "core/TypedArguments.h"
#include "ext_obex.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

method FindOrComplain(t_object* x, t_symbol* selector) try {
    const method found = FindMethod(x, selector);
    if (found == nullptr && !NOGOOD(x) && selector != nullptr) {
        const std::string text = "no method for \"" + std::string(selector->s_name) + '"';
        PostRow(RowKind::Error, object_classname(x)->s_name, text.c_str());
    }
    return found;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

const method doNothing = reinterpret_cast<method>(method_false);

}  // namespace

const char* CallTyped(t_object* x, const t_messlist& entry, t_symbol* selector, long ac, t_atom* av, t_atom* result) {
    // A copy: the method may change its class.
    const t_messlist called = entry;
    if (TakesAtoms(called.m_type)) {
        CallPlugin<void*>(called.m_fun, x, selector, ac, av);
        return nullptr;
    }
    if (called.m_type[0] == A_GIMMEBACK) {
        t_atom unused{};
        CallPlugin<t_max_err>(called.m_fun, x, selector, ac, av, result != nullptr ? result : &unused);
        return nullptr;
    }
    const TypedArguments arguments = ConvertArguments(called.m_type, ac, av);
    if (arguments.problem == nullptr) CallWithArguments(called.m_fun, x, arguments.values);
    return arguments.problem;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

void* object_method_imp(void* x, void* sym, void* p1, void* p2, void* p3, void* p4, void* p5, void* p6, void* p7,
                        void* p8) {
    t_object* const object = LivingObject(x);
    const method found = FindMethod(object, static_cast<t_symbol*>(sym));
    return found != nullptr ? CallPlugin<void*>(found, object, p1, p2, p3, p4, p5, p6, p7, p8) : nullptr;
}

t_max_err object_method_typed(void* object, t_symbol* s, long ac, t_atom* av, t_atom* rv) try {
    if (rv != nullptr) *rv = {};
    t_object* const x = LivingObject(object);
    if (x == nullptr || ac < 0 || (ac > 0 && av == nullptr)) return MAX_ERR_INVALID_PTR;
    const t_messlist* const entry = FindMessage(x, s);
    if (entry == nullptr || entry->m_type[0] == A_CANT) return MAX_ERR_GENERIC;
    return CallTyped(x, *entry, s, ac, av, rv) == nullptr ? MAX_ERR_NONE : MAX_ERR_GENERIC;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

method object_getmethod(void* x, t_symbol* s) {
    const method found = FindMethod(static_cast<t_object*>(x), s);
    return found != nullptr ? found : doNothing;
}

method object_method_direct_getmethod(t_object* x, t_symbol* sym) { return object_getmethod(x, sym); }

void* object_method_direct_getobject(t_object* x, t_symbol*) { return x; }

method getfn(t_object* op, t_symbol* msg) { return FindOrComplain(op, msg); }

method egetfn(t_object* op, t_symbol* msg) {
    const method found = FindOrComplain(op, msg);
    return found != nullptr ? found : doNothing;
}

method zgetfn(t_object* op, t_symbol* msg) { return FindMethod(op, msg); }

long method_true(void*) { return 1; }

long method_false(void*) { return 0; }

}  // extern "C"
