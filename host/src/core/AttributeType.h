#pragma once

#include <cstddef>

#include "ext.h"

namespace velmohost {

/// How values of an attribute's type lie in an object's record.
struct AttributeType {
    const char* name;
    std::size_t size;
    t_atom (*read)(const void* place);
    void (*write)(void* place, const t_atom& atom);
};

/// The type of that name; null for one that has no storage of its own, such as those of attributes whose accessors do
/// everything themselves.
const AttributeType* FindAttributeType(const t_symbol* name);

/// The atom as a value of the type: what writing it and reading it back gives. Unchanged for a null type.
t_atom ConvertToType(const AttributeType* type, const t_atom& atom);

}  // namespace velmohost
