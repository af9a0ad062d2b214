#include "core/Inlets.h"

#include <algorithm>
#include <string>

#include "core/Instance.h"
#include "core/Objects.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

/// The scope of the message being delivered, the innermost if one led to another. Main thread.
ScopedInlet* innermost = nullptr;

void LeaveOwner(InletRecord* inlet) {
    if (Instance* const instance = FindInstance(inlet->owner)) std::erase(instance->inlets, inlet);
}

t_class* InletClass() {
    static t_class* const c =
        Required(class_new("proxy", nullptr, reinterpret_cast<method>(LeaveOwner), sizeof(InletRecord), nullptr, 0));
    return c;
}

bool HasLeftInlet(t_object* x) { return ob_class(x)->c_noinlet == 0; }

InletRecord* NewInlet(void* object, const char* type, t_symbol* selector, long id, long* idCopy) try {
    t_object* const owner = LivingObject(object);
    if (owner == nullptr) return nullptr;
    OwnedRecord<InletRecord> inlet(NewRecord<InletRecord>(InletClass()));
    *inlet = {inlet->ob, owner, gensym(type), selector, id, idCopy};
    GetInstance(owner).inlets.push_back(inlet.get());
    return inlet.release();
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

InletRecord* NewNumberInlet(void* x, const char* type, const char* prefix, short n) {
    if (n < 1 || n > 9) return nullptr;
    return NewInlet(x, type, gensym((prefix + std::to_string(n)).c_str()), n, nullptr);
}

/// The inlet at a position counted from the left; null for the left one and for what is missing.
InletRecord* FindInlet(t_object* x, unsigned index) {
    const Instance* const instance = FindInstance(x);
    if (HasLeftInlet(x)) {
        if (index == 0) return nullptr;
        --index;
    }
    if (instance == nullptr || index >= instance->inlets.size()) return nullptr;
    return instance->inlets[instance->inlets.size() - 1 - index];
}

}  // namespace

std::vector<InletInfo> GetInlets(t_object* x) {
    std::vector<InletInfo> infos;
    if (NOGOOD(x)) return infos;
    if (HasLeftInlet(x)) infos.emplace_back();
    if (const Instance* const instance = FindInstance(x)) {
        for (auto inlet = instance->inlets.rbegin(); inlet != instance->inlets.rend(); ++inlet) {
            infos.push_back({(*inlet)->type->s_name});
        }
    }
    return infos;
}

ScopedInlet::ScopedInlet(t_object* x, unsigned index)
    : owner(x), previous(proxy_getinlet(x)), inlet(FindInlet(x, index)), outer(innermost) {
    innermost = this;
    const bool isNew = inlet != nullptr || previous != 0;
    if (isNew) GetInstance(owner).currentInlet = inlet != nullptr ? inlet->id : 0;
    if (inlet != nullptr && inlet->idCopy != nullptr) *inlet->idCopy = inlet->id;
}

ScopedInlet::~ScopedInlet() {
    innermost = outer;
    Instance* const instance = OwnerLives() ? FindInstance(owner) : nullptr;
    if (instance == nullptr) return;
    instance->currentInlet = previous;
    // The message may have removed the inlet.
    const bool inletLives =
        std::find(instance->inlets.begin(), instance->inlets.end(), inlet) != instance->inlets.end();
    if (inletLives && inlet->idCopy != nullptr) *inlet->idCopy = previous;
}

void ScopedInlet::ForgetOwner(const t_object* x) {
    for (ScopedInlet* scope = innermost; scope != nullptr; scope = scope->outer) {
        if (scope->owner == x) scope->owner = nullptr;
    }
}

t_symbol* ScopedInlet::Translate(t_symbol* selector) const {
    const bool isNumber = selector == gensym("int") || selector == gensym("float");
    return isNumber && inlet != nullptr && inlet->selector != nullptr ? inlet->selector : selector;
}

void FreeInletsAndOutlets(t_object* x) {
    ScopedInlet::ForgetOwner(x);
    Instance* const instance = FindInstance(x);
    if (instance == nullptr) return;
    while (!instance->inlets.empty()) object_free(instance->inlets.back());
    while (!instance->outlets.empty()) object_free(instance->outlets.back());
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

void* inlet_new(void* x, const char* s) { return NewInlet(x, nullptr, s != nullptr ? gensym(s) : nullptr, 0, nullptr); }

void* intin(void* x, short n) { return NewNumberInlet(x, "int", "in", n); }

void* floatin(void* x, short n) { return NewNumberInlet(x, "float", "ft", n); }

void* proxy_new(void* x, long id, long* stuffloc) { return NewInlet(x, nullptr, nullptr, id, stuffloc); }

long proxy_getinlet(t_object* x) {
    const Instance* const instance = NOGOOD(x) ? nullptr : FindInstance(x);
    return instance != nullptr ? instance->currentInlet : 0;
}

short inlet_count(t_object* x) try { return static_cast<short>(GetInlets(x).size()); } catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_inlet* inlet_nth(t_object* x, short n) {
    return NOGOOD(x) || n < 0 ? nullptr : FindInlet(x, static_cast<unsigned>(n));
}

void inlet_delete(t_inlet* x) {
    if (object_class(x) == InletClass()) object_free(x);
}

void stdinletinfo(t_object*, void*, long index, char* t) {
    if (t != nullptr) *t = index > 0 ? 1 : 0;
}

}  // extern "C"
