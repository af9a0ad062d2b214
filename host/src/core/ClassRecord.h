#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

/// A class as the host keeps it: behind the record that plug-ins see lies what only the host needs.
struct ClassRecord {
    t_class c{};  // first: plug-ins hold pointers to it
    t_messlist constructor{};
    t_symbol* nameSpace = nullptr;      // null until registered
    std::vector<t_object*> attributes;  // in the order of their declaration
    std::unordered_map<t_symbol*, void*> extras;
    long messageCapacity = 0;
    // Message lists, the current one last. Outgrown ones stay, because living objects point into them.
    std::vector<std::unique_ptr<t_messlist[]>> messageLists;
};

inline ClassRecord& RecordOf(t_class* c) { return *reinterpret_cast<ClassRecord*>(c); }

/// The class's own entry of a message; null when it has none.
const t_messlist* FindMessage(const t_class* c, const t_symbol* selector);

/// The entry of a message in the class of a living object; null when it has none or `x` is no living object.
const t_messlist* FindMessage(t_object* x, const t_symbol* selector);

/// The class registered under a name or alias; null when there is none.
t_class* FindClass(t_symbol* nameSpace, t_symbol* name);

/// Makes the host's own classes known, those of namespace "nobox" that plug-ins create by name.
void RegisterHostClasses();

}  // namespace velmohost
