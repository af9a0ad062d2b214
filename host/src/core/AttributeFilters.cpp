// Clip filters: limits for the numbers that pass through an attribute.

#include "core/Attribute.h"
#include "core/Numbers.h"
#include "core/OutOfMemory.h"

namespace velmohost {
namespace {

struct ClipFilter {
    t_object ob;
    double min, max;
    bool useMin, useMax;
};

t_class* ClipFilterClass() {
    static t_class* const c = Required(class_new("clipfilter", nullptr, nullptr, sizeof(ClipFilter), nullptr, 0));
    return c;
}

t_object* NewClipFilter(double min, double max, long useMin, long useMax) {
    auto* const filter = NewRecord<ClipFilter>(ClipFilterClass());
    *filter = {filter->ob, min, max, useMin != 0, useMax != 0};
    return &filter->ob;
}

void Clip(const ClipFilter& filter, t_atom& atom) {
    const double value = atom_getfloat(&atom);
    const bool tooLow = filter.useMin && value < filter.min;
    const bool tooHigh = filter.useMax && value > filter.max;
    if (!tooLow && !tooHigh) return;
    const double limit = tooLow ? filter.min : filter.max;
    // A whole limit keeps a long a long; another one is met exactly.
    const t_atom_long wholeLimit = TruncateToLong(limit);
    if (atom.a_type == A_LONG && static_cast<double>(wholeLimit) == limit) {
        atom_setlong(&atom, wholeLimit);
    } else {
        atom_setfloat(&atom, limit);
    }
}

/// Replaces the filter of one direction and frees the one that was there.
void PutFilter(t_object*& place, t_object* filter) {
    object_free(place);
    place = filter;
}

}  // namespace

void ApplyFilter(t_object* filter, long ac, t_atom* av) {
    if (object_class(filter) != ClipFilterClass() || av == nullptr) return;
    for (long i = 0; i < ac; ++i) {
        if (av[i].a_type == A_LONG || av[i].a_type == A_FLOAT) Clip(*reinterpret_cast<ClipFilter*>(filter), av[i]);
    }
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_max_err attr_addfilter_clip(void* x, double min, double max, long usemin, long usemax) {
    const t_max_err result = attr_addfilterset_clip(x, min, max, usemin, usemax);
    return result == MAX_ERR_NONE ? attr_addfilterget_clip(x, min, max, usemin, usemax) : result;
}

t_max_err attr_addfilterset_clip(void* x, double min, double max, long usemin, long usemax) try {
    Attribute* const attribute = AsAttribute(x);
    if (attribute == nullptr) return MAX_ERR_INVALID_PTR;
    PutFilter(attribute->attr.filterset, NewClipFilter(min, max, usemin, usemax));
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err attr_addfilterget_clip(void* x, double min, double max, long usemin, long usemax) try {
    Attribute* const attribute = AsAttribute(x);
    if (attribute == nullptr) return MAX_ERR_INVALID_PTR;
    PutFilter(attribute->attr.filterget, NewClipFilter(min, max, usemin, usemax));
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // extern "C"
