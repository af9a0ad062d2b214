#include <algorithm>
#include <vector>

#include "core/AtomOutput.h"
#include "core/HostClasses.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "ext.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

t_atomarray* LivingArray(void* x) {
    return object_class(x) == AtomArrayClass() ? static_cast<t_atomarray*>(x) : nullptr;
}

/// Takes the content out and, if the array owns what its atoms hold, frees that.
void Empty(t_atomarray* x) {
    t_atom* const av = x->av;
    const long ac = x->ac;
    x->av = nullptr;
    x->ac = 0;
    for (long i = 0; i < ac && (x->flags & ATOMARRAY_FLAG_FREECHILDREN) != 0; ++i) object_free(atom_getobj(av + i));
    sysmem_freeptr(av);
}

t_max_err Append(t_atomarray* x, long ac, const t_atom* av) {
    if (x == nullptr || ac < 0 || (ac > 0 && av == nullptr)) return MAX_ERR_INVALID_PTR;
    if (ac == 0) return MAX_ERR_NONE;
    // Copied first: the atoms may be the array's own, which move.
    const std::vector<t_atom> added(av, av + ac);
    const t_ptr_size bytes = static_cast<t_ptr_size>(x->ac + ac) * sizeof(t_atom);
    auto* const grown = reinterpret_cast<t_atom*>(sysmem_resizeptr(x->av, bytes));
    if (grown == nullptr) return MAX_ERR_OUT_OF_MEM;
    std::copy(added.begin(), added.end(), grown + x->ac);
    x->av = grown;
    x->ac += ac;
    return MAX_ERR_NONE;
}

}  // namespace

t_class* AtomArrayClass() {
    static t_class* const c =
        Required(class_new("atomarray", reinterpret_cast<method>(atomarray_new), reinterpret_cast<method>(Empty),
                           sizeof(t_atomarray), nullptr, A_CANT, 0));
    return c;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_atomarray* atomarray_new(long ac, t_atom* av) try {
    OwnedRecord<t_atomarray> x(NewRecord<t_atomarray>(AtomArrayClass()));
    if (Append(x.get(), ac, av) == MAX_ERR_OUT_OF_MEM) throw std::bad_alloc();
    return x.release();
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void atomarray_flags(t_atomarray* x, long flags) {
    if (LivingArray(x) != nullptr) x->flags = flags;
}

long atomarray_getflags(t_atomarray* x) { return LivingArray(x) != nullptr ? x->flags : 0; }

t_max_err atomarray_setatoms(t_atomarray* x, long ac, t_atom* av) try {
    if (LivingArray(x) == nullptr || ac < 0 || (ac > 0 && av == nullptr)) return MAX_ERR_INVALID_PTR;
    const std::vector<t_atom> atoms(av, av + ac);
    Empty(x);
    return Append(x, ac, atoms.data());
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err atomarray_getatoms(t_atomarray* x, long* ac, t_atom** av) {
    if (LivingArray(x) == nullptr || ac == nullptr || av == nullptr) return MAX_ERR_INVALID_PTR;
    *ac = x->ac;
    *av = x->av;
    return MAX_ERR_NONE;
}

t_max_err atomarray_copyatoms(t_atomarray* x, long* ac, t_atom** av) try {
    if (LivingArray(x) == nullptr) return MAX_ERR_INVALID_PTR;
    return GiveAtoms({x->av, x->av + x->ac}, ac, av);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_atom_long atomarray_getsize(t_atomarray* x) { return LivingArray(x) != nullptr ? x->ac : 0; }

t_max_err atomarray_getindex(t_atomarray* x, long index, t_atom* av) {
    if (LivingArray(x) == nullptr || av == nullptr) return MAX_ERR_INVALID_PTR;
    if (index < 0 || index >= x->ac) return MAX_ERR_GENERIC;
    *av = x->av[index];
    return MAX_ERR_NONE;
}

void* atomarray_duplicate(t_atomarray* x) { return LivingArray(x) != nullptr ? atomarray_new(x->ac, x->av) : nullptr; }

void atomarray_appendatom(t_atomarray* x, t_atom* a) try {
    Append(LivingArray(x), 1, a);
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

void atomarray_appendatoms(t_atomarray* x, long ac, t_atom* av) try {
    Append(LivingArray(x), ac, av);
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

void atomarray_chuckindex(t_atomarray* x, long index) {
    if (LivingArray(x) == nullptr || index < 0 || index >= x->ac) return;
    std::copy(x->av + index + 1, x->av + x->ac, x->av + index);
    --x->ac;
}

void atomarray_clear(t_atomarray* x) {
    if (LivingArray(x) != nullptr) Empty(x);
}

}  // extern "C"
