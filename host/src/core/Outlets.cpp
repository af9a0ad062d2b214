#include <algorithm>
#include <utility>

#include "core/Instance.h"
#include "core/Objects.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

OutletListener& Listener() {
    static OutletListener listener;
    return listener;
}

/// Takes the outlet out of its owner's row; the leftmost of the rest is the owner's o_outlet.
void LeaveOwner(OutletRecord* outlet) {
    Instance* const instance = FindInstance(outlet->owner);
    if (instance == nullptr) return;
    std::erase(instance->outlets, outlet);
    outlet->owner->o_outlet = instance->outlets.empty() ? nullptr : instance->outlets.back();
}

t_class* OutletClass() {
    static t_class* const c =
        Required(class_new("outlet", nullptr, reinterpret_cast<method>(LeaveOwner), sizeof(OutletRecord), nullptr, 0));
    return c;
}

OutletRecord* LivingOutlet(t_outlet* outlet) {
    return object_class(outlet) == OutletClass() ? static_cast<OutletRecord*>(outlet) : nullptr;
}

unsigned IndexFromLeft(const OutletRecord* outlet) {
    const auto& outlets = FindInstance(outlet->owner)->outlets;
    return static_cast<unsigned>(outlets.end() - std::find(outlets.begin(), outlets.end(), outlet) - 1);
}

/// @returns what the API gives for a message that went out: something that is not null
void* Send(t_outlet* handle, t_symbol* selector, long ac, const t_atom* av) try {
    OutletRecord* const outlet = LivingOutlet(handle);
    if (outlet == nullptr || selector == nullptr) return nullptr;
    // Held by value: the receiver may change the listener.
    const OutletListener listener = Listener();
    if (listener) listener(outlet->owner, handle, IndexFromLeft(outlet), selector, ac, av);
    return handle;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // namespace

std::vector<OutletInfo> GetOutlets(t_object* x) {
    std::vector<OutletInfo> infos;
    const Instance* const instance = NOGOOD(x) ? nullptr : FindInstance(x);
    if (instance == nullptr) return infos;
    for (auto outlet = instance->outlets.rbegin(); outlet != instance->outlets.rend(); ++outlet) {
        infos.push_back({(*outlet)->type->s_name, *outlet});
    }
    return infos;
}

void SetOutletListener(OutletListener listener) { Listener() = std::move(listener); }

}  // namespace velmohost

using namespace velmohost;

extern "C" {

void* outlet_new(void* object, const char* type) try {
    t_object* const owner = LivingObject(object);
    if (owner == nullptr) return nullptr;
    OwnedRecord<OutletRecord> outlet(NewRecord<OutletRecord>(OutletClass()));
    outlet->owner = owner;
    outlet->type = gensym(type);
    GetInstance(owner).outlets.push_back(outlet.get());
    owner->o_outlet = outlet.get();
    return outlet.release();
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void* bangout(void* x) { return outlet_new(x, "bang"); }
void* intout(void* x) { return outlet_new(x, "int"); }
void* floatout(void* x) { return outlet_new(x, "float"); }
void* listout(void* x) { return outlet_new(x, "list"); }

void* outlet_bang(t_outlet* o) { return Send(o, gensym("bang"), 0, nullptr); }

void* outlet_int(t_outlet* o, t_atom_long n) {
    t_atom atom;
    atom_setlong(&atom, n);
    return Send(o, gensym("int"), 1, &atom);
}

void* outlet_float(t_outlet* o, double f) {
    t_atom atom;
    atom_setfloat(&atom, f);
    return Send(o, gensym("float"), 1, &atom);
}

void* outlet_list(t_outlet* o, t_symbol*, short ac, t_atom* av) { return Send(o, gensym("list"), ac, av); }

void* outlet_anything(t_outlet* o, t_symbol* s, short ac, t_atom* av) { return Send(o, s, ac, av); }

short outlet_count(t_object* x) try { return static_cast<short>(GetOutlets(x).size()); } catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_outlet* outlet_nth(t_object* x, short n) try {
    const std::vector<OutletInfo> outlets = GetOutlets(x);
    return n >= 0 && n < static_cast<short>(outlets.size()) ? outlets[static_cast<std::size_t>(n)].handle : nullptr;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void outlet_delete(t_outlet* o) { object_free(LivingOutlet(o)); }

}  // extern "C"
