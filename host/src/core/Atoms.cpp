#include <cstring>

#include "core/Numbers.h"
#include "ext.h"
#include "ext_obex.h"
#include "ext_obex_util.h"

namespace velmohost {
namespace {

bool HasAtom(long index, long ac, const t_atom* av) { return av != nullptr && index >= 0 && index < ac; }

t_max_err GiveRoom(long count, long* ac, t_atom** av, char* alloc) {
    if (ac == nullptr || av == nullptr || alloc == nullptr) return MAX_ERR_INVALID_PTR;
    *alloc = 0;
    if (*ac >= count && *av != nullptr) {
        *ac = count;
        return MAX_ERR_NONE;
    }
    if (*ac != 0 && *av != nullptr) return MAX_ERR_GENERIC;  // memory was passed in, but too little
    *av = reinterpret_cast<t_atom*>(sysmem_newptrclear(static_cast<t_ptr_size>(count) * sizeof(t_atom)));
    if (*av == nullptr) return MAX_ERR_OUT_OF_MEM;
    *ac = count;
    *alloc = 1;
    return MAX_ERR_NONE;
}

}  // namespace
}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_max_err atom_setlong(t_atom* a, t_atom_long b) {
    if (a == nullptr) return MAX_ERR_INVALID_PTR;
    A_SETLONG(a, b);
    return MAX_ERR_NONE;
}

t_max_err atom_setfloat(t_atom* a, double b) {
    if (a == nullptr) return MAX_ERR_INVALID_PTR;
    A_SETFLOAT(a, b);
    return MAX_ERR_NONE;
}

t_max_err atom_setsym(t_atom* a, const t_symbol* b) {
    if (a == nullptr) return MAX_ERR_INVALID_PTR;
    A_SETSYM(a, const_cast<t_symbol*>(b));
    return MAX_ERR_NONE;
}

t_max_err atom_setobj(t_atom* a, void* b) {
    if (a == nullptr) return MAX_ERR_INVALID_PTR;
    A_SETOBJ(a, static_cast<t_object*>(b));
    return MAX_ERR_NONE;
}

t_atom_long atom_getlong(const t_atom* a) {
    if (a == nullptr) return 0;
    if (a->a_type == A_LONG) return a->a_w.w_long;
    if (a->a_type == A_FLOAT) return TruncateToLong(a->a_w.w_float);
    t_atom number;
    const bool isNumber = a->a_type == A_SYM && ReadNumber(atom_getsym(a)->s_name, number);
    return isNumber ? atom_getlong(&number) : 0;
}

t_atom_float atom_getfloat(const t_atom* a) {
    if (a == nullptr) return 0.0;
    if (a->a_type == A_FLOAT) return a->a_w.w_float;
    if (a->a_type == A_LONG) return static_cast<t_atom_float>(a->a_w.w_long);
    t_atom number;
    const bool isNumber = a->a_type == A_SYM && ReadNumber(atom_getsym(a)->s_name, number);
    return isNumber ? atom_getfloat(&number) : 0.0;
}

t_symbol* atom_getsym(const t_atom* a) {
    const bool isSymbol = a != nullptr && a->a_type == A_SYM && a->a_w.w_sym != nullptr;
    return isSymbol ? a->a_w.w_sym : gensym("");
}

void* atom_getobj(const t_atom* a) { return a != nullptr && a->a_type == A_OBJ ? a->a_w.w_obj : nullptr; }

long atom_gettype(const t_atom* a) { return a != nullptr ? a->a_type : static_cast<long>(A_NOTHING); }

long atom_arg_getlong(t_atom_long* c, long idx, long ac, const t_atom* av) {
    if (c == nullptr || !HasAtom(idx, ac, av)) return MAX_ERR_GENERIC;
    *c = atom_getlong(av + idx);
    return MAX_ERR_NONE;
}

long atom_arg_getfloat(float* c, long idx, long ac, const t_atom* av) {
    if (c == nullptr || !HasAtom(idx, ac, av)) return MAX_ERR_GENERIC;
    *c = static_cast<float>(atom_getfloat(av + idx));
    return MAX_ERR_NONE;
}

long atom_arg_getdouble(double* c, long idx, long ac, const t_atom* av) {
    if (c == nullptr || !HasAtom(idx, ac, av)) return MAX_ERR_GENERIC;
    *c = atom_getfloat(av + idx);
    return MAX_ERR_NONE;
}

long atom_arg_getsym(t_symbol** c, long idx, long ac, const t_atom* av) {
    if (c == nullptr || !HasAtom(idx, ac, av) || av[idx].a_type != A_SYM) return MAX_ERR_GENERIC;
    *c = av[idx].a_w.w_sym;
    return MAX_ERR_NONE;
}

t_max_err atom_alloc(long* ac, t_atom** av, char* alloc) { return GiveRoom(1, ac, av, alloc); }

t_max_err atom_alloc_array(long minsize, long* ac, t_atom** av, char* alloc) {
    return minsize >= 0 ? GiveRoom(minsize, ac, av, alloc) : static_cast<t_max_err>(MAX_ERR_GENERIC);
}

long atomisatomarray(t_atom* a) { return object_classname_compare(atom_getobj(a), gensym("atomarray")); }

long atomisdictionary(t_atom* a) { return object_classname_compare(atom_getobj(a), gensym("dictionary")); }

long atomisstring(t_atom* a) { return object_classname_compare(atom_getobj(a), gensym("string")); }

}  // extern "C"
