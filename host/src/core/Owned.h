#pragma once

#include <memory>

#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

/// Frees an object of the API at the end of its scope, unless it was released to somebody else.
struct ObjectFreer {
    void operator()(void* object) const { object_free(object); }
};
template <class Record>
using OwnedRecord = std::unique_ptr<Record, ObjectFreer>;

/// Frees a class in the making.
struct ClassFreer {
    void operator()(t_class* c) const { class_free(c); }
};
using OwnedClass = std::unique_ptr<t_class, ClassFreer>;

/// Frees memory of the API, such as the atoms that it hands out, at the end of its scope.
struct MemoryFreer {
    void operator()(void* memory) const { sysmem_freeptr(memory); }
};
template <class Element>
using OwnedMemory = std::unique_ptr<Element, MemoryFreer>;

}  // namespace velmohost
