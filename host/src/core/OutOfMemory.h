#pragma once

#include <new>
#include <type_traits>

#include "ext.h"
#include "window/MaxWindow.h"

namespace velmohost {

/// What an API function gives when memory runs out: an error row tells the user, null or MAX_ERR_OUT_OF_MEM the caller.
/// Plug-ins are written for a host that never throws, so no function of the API may let std::bad_alloc out.
///
///     void* outlet_new(void* x, const char* type) try {
///         ...
///     } catch (const std::bad_alloc&) {
///         return OutOfMemory();
///     }
class OutOfMemory {
public:
    OutOfMemory() { PostRow(RowKind::Error, nullptr, "out of memory"); }

    template <class Result>
    operator Result() const {
        if constexpr (std::is_pointer_v<Result>) {
            return nullptr;
        } else {
            return MAX_ERR_OUT_OF_MEM;
        }
    }
};

/// What makes one of the host's own classes: the class from class_new, and the result of what is added to it.
/// @throws std::bad_alloc when that failed: the next one to need the class tries again
inline t_class* Required(t_class* c) {
    if (c == nullptr) throw std::bad_alloc();
    return c;
}
inline void Required(t_max_err error) {
    if (error == MAX_ERR_OUT_OF_MEM) throw std::bad_alloc();
}

/// A new object of one of the host's own classes, whose record is a `Record`.
/// @throws std::bad_alloc
template <class Record>
Record* NewRecord(t_class* c) {
    void* const record = object_alloc(c);
    if (record == nullptr) throw std::bad_alloc();
    return static_cast<Record*>(record);
}

}  // namespace velmohost
