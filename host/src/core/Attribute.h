#pragma once

#include <vector>

#include "core/AttributeType.h"
#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

/// An attribute object. Its accessors are always set, to the default ones if to nothing else.
struct Attribute {
    t_attr attr;
    const AttributeType* storage;    // null for a type without one
    long offset;                     // of the first value in the owner's record
    long countOffset;                // of the long that tells how many values there are; 0: always maxCount
    long maxCount;                   // values in the owner's record; 0: the attribute keeps its own
    std::vector<t_atom>* ownValues;  // of an attribute that keeps its own, else null
};

/// The attribute behind a plug-in's pointer; null when it is none.
Attribute* AsAttribute(void* attribute);

/// A new attribute that keeps its own values.
Attribute* NewOwnAttribute(const char* name, const t_symbol* type, long flags, const std::vector<t_atom>& values);

/// The attribute of an object, its own or its class's; null when it has none.
Attribute* FindAttribute(void* x, const t_symbol* name);

/// The attribute of a class; null when it has none.
Attribute* FindClassAttribute(t_class* c, const t_symbol* name);

/// Value through getter and filter: a copy to free with sysmem_freeptr, or into the memory given.
t_max_err GetValue(t_object* owner, Attribute& attribute, long* ac, t_atom** av);

/// Filter, setter, then notice to the attached clients.
t_max_err SetValue(t_object* owner, Attribute& attribute, long ac, t_atom* av);

/// Limits the numbers among atoms as a clip filter says; a null filter leaves them.
void ApplyFilter(t_object* filter, long ac, t_atom* av);

}  // namespace velmohost
