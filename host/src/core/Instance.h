#pragma once

#include <vector>

#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

/// An outlet: an object of its own, so that the obex may hold it.
struct OutletRecord {
    t_object ob;
    t_object* owner;
    t_symbol* type;  // empty symbol: any message
};

/// An inlet beside the one that every object has by itself.
struct InletRecord {
    t_object ob;
    t_object* owner;
    t_symbol* type;      // what arrives: "int", "float", or empty for any message
    t_symbol* selector;  // what the owner receives instead of "int" and "float"; null: what arrives
    long id;             // what proxy_getinlet gives
    long* idCopy;        // the owner's own place for it, or null
};

/// A value in the obex.
struct ObexEntry {
    t_symbol* key;
    t_object* value;
    long flags;
};

/// What the host keeps of an object beside the record that the object's class defines. The header's o_inlet leads to
/// it; objects that need none of it have none.
struct Instance {
    std::vector<OutletRecord*> outlets;  // in the order of their creation: from right to left
    std::vector<InletRecord*> inlets;    // the same; without the left one
    std::vector<ObexEntry> obex;
    std::vector<t_object*> attributes;  // the object's own, beside its class's
    std::vector<t_object*> clients;     // told of changes
    std::vector<t_object*> targets;     // those whose client this object is
    t_symbol* registeredNameSpace = nullptr;
    t_symbol* registeredName = nullptr;
    long currentInlet = 0;  // of the message being delivered
};

/// Null when the object has none.
inline Instance* FindInstance(const t_object* x) { return static_cast<Instance*>(x->o_inlet); }

/// Makes one when the object has none.
Instance& GetInstance(t_object* x);

/// The object that a plug-in's pointer stands for, null when it is no living one.
inline t_object* LivingObject(void* x) { return NOGOOD(x) ? nullptr : static_cast<t_object*>(x); }

// What each concern takes back when an object is freed.
void FreeObex(t_object* x);
void FreeInletsAndOutlets(t_object* x);
void FreeOwnAttributes(t_object* x);
void ForgetRegistration(t_object* x);

/// Whether the dictionary `x` is in use by name: then it is freed at its last release. False for any other object.
bool PostponeFree(t_object* x);

}  // namespace velmohost
