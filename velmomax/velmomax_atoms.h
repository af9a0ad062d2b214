/// Atoms that the host hands out as copies.
#pragma once

#include "velmomax_api.h"

namespace velmomax {

/// The current value of an attribute, freed with this object. Main thread.
///
///     const AttributeValue value(x, name);
///     if (value.Error() == MAX_ERR_NONE && value.Count() > 0) use(value[0]);
class AttributeValue {
public:
    /// Reads the attribute `name` of `object`, which may be an attribute itself: its attributes are its properties.
    AttributeValue(void* object, t_symbol* name) noexcept : error(object_attr_getvalueof(object, name, &ac, &av)) {}
    ~AttributeValue() {
        if (av) sysmem_freeptr(av);
    }
    AttributeValue(const AttributeValue&) = delete;
    AttributeValue& operator=(const AttributeValue&) = delete;

    /// The host's error code of the reading; without `MAX_ERR_NONE` there are no atoms.
    t_max_err Error() const noexcept { return error; }

    /// The count as the host reports it, which is negative when the host is at fault.
    long ReportedCount() const noexcept { return ac; }

    /// Number of atoms that can be read; 0 after an error.
    long Count() const noexcept { return error == MAX_ERR_NONE && av && ac > 0 ? ac : 0; }

    /// The atoms; meaningful up to `Count`.
    const t_atom* Atoms() const noexcept { return av; }
    const t_atom& operator[](long index) const noexcept { return av[index]; }

private:
    long ac = 0;
    t_atom* av = nullptr;
    t_max_err error;  // after the two above, which the reading fills
};

}  // namespace velmomax
