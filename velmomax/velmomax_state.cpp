#include "velmomax_state.h"

#include <algorithm>
#include <limits>

#include "velmomax_atoms.h"
#include "velmomax_attribute.h"
#include "velmomax_symbols.h"
#include "velmomax_text.h"

namespace velmomax {

namespace {

using Atoms = std::vector<t_atom>;

/// Copies an atom as the state keeps it, with floats of 32 bits. False for an atom that is neither number nor symbol.
bool copyStateAtom(const t_atom& from, t_atom& to) {
    switch (from.a_type) {
        case A_SYM:
            atom_setsym(&to, atom_getsym(&from));
            return true;
        case A_FLOAT:
            atom_setfloat(&to, static_cast<double>(static_cast<float>(atom_getfloat(&from))));
            return true;
        case A_LONG:
            atom_setlong(&to, atom_getlong(&from));
            return true;
        default:
            return false;
    }
}

long numberOfAtoms(void* x, const std::vector<t_symbol*>& names) {
    long count = 0;
    for (t_symbol* name : names) count += MaxAttribute::GetNumberOfAtomsNeededToStoreAttribute(x, name);
    return count;
}

void appendValue(void* x, t_symbol* name, Atoms& atoms) {
    auto* object = static_cast<t_object*>(x);
    const AttributeValue value(x, name);
    if (value.Error() != MAX_ERR_NONE) {
        object_bug(object, "velmomax_getvalueof : %s in object_attr_getvalueof (%s)", GetErrorName(value.Error()),
                   name->s_name);
    } else if (value.Count() == 0) {
        object_bug(object, "velmomax_getvalueof : error in object_attr_getvalueof %s (tmpac=%ld)", name->s_name,
                   value.ReportedCount());
    }
    for (long i = 0; i < value.Count(); ++i) {
        t_atom atom{};
        if (copyStateAtom(value[i], atom)) {
            atoms.push_back(atom);
        } else {
            object_bug(object, "velmomax_getvalueof : unknown atom type");
        }
    }
}

void setAttribute(void* x, t_symbol* name, long count, const t_atom* values) {
    auto* object = static_cast<t_object*>(x);
    Atoms atoms(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < atoms.size(); ++i) {
        if (!copyStateAtom(values[i], atoms[i])) {
            object_warn(object, "unknown atom type in velmomax_setvalueof");
        }
    }
    const t_max_err error = object_attr_setvalueof(x, name, count, atoms.data());
    if (error != MAX_ERR_NONE) {
        object_error(object, "%s in object_attr_setvalueof %s", GetErrorName(error), name->s_name);
    }
}

/// The message that brings the state back: the object, its class, the selector and the values. Empty on failure.
Atoms presetLine(void* x) {
    const long needed = numberOfAtoms(x, GetStateAttributes(x));
    long count = 0;
    t_atom* values = nullptr;
    velmomax_getvalueof(x, &count, &values);
    Atoms line;
    // The host counts a message's atoms in 16 bits.
    if (values && count == needed && needed <= std::numeric_limits<short>::max() - 3) {
        line.resize(3);
        atom_setobj(&line[0], x);
        atom_setsym(&line[1], object_classname(x));
        atom_setsym(&line[2], CommonSymbol(SlotOf("recallpreset")));
        line.insert(line.end(), values, values + count);
    }
    if (values) sysmem_freeptr(values);
    return line;
}

}  // namespace

std::vector<t_symbol*> GetStateAttributes(void* x) noexcept {
    std::vector<t_symbol*> names;
    MaxAttribute::GetListOfAttributesName(x, names, MaxAttribute::Alphabetical);
    MaxAttribute::RemoveInvisibleAndOpaqueAttributes(x, names);
    return names;
}

t_max_err velmomax_getvalueof(void* x, long* ac, t_atom** av) noexcept {
    auto* object = static_cast<t_object*>(x);
    if (!x || !ac || !av) {
        object_bug(object, "velmomax_getvalueof : there is a problem");
        return MAX_ERR_NONE;
    }
    const std::vector<t_symbol*> names = GetStateAttributes(x);
    const long needed = numberOfAtoms(x, names);
    if (*ac > 0 && *av) {
        object_warn(object, "velmomax_getvalueof : memory passed in");
    } else {
        const auto size = static_cast<t_ptr_size>(needed) * sizeof(t_atom);
        *av = needed > 0 ? reinterpret_cast<t_atom*>(sysmem_newptr(size)) : nullptr;
        *ac = *av ? needed : 0;
    }

    Atoms atoms;
    for (t_symbol* name : names) appendValue(x, name, atoms);
    const auto found = static_cast<long>(atoms.size());
    *ac = std::min(found, *ac);
    std::copy_n(atoms.begin(), *ac, *av);
    const long stored = found > needed ? found : *ac;
    if (stored != needed) {
        object_error(object, "%d atoms allocated but %d atoms stored by the pattrstorage", static_cast<int>(needed),
                     static_cast<int>(stored));
    }
    return MAX_ERR_NONE;
}

t_max_err velmomax_setvalueof(void* x, long ac, t_atom* av) noexcept {
    if (ac < 1 || !av) return MAX_ERR_NONE;
    auto* object = static_cast<t_object*>(x);
    const std::vector<t_symbol*> names = GetStateAttributes(x);
    const long needed = numberOfAtoms(x, names);
    if (ac != needed) {
        object_error(object, "setvalueof error (received %d atoms. %d atoms were expected)", static_cast<int>(ac),
                     static_cast<int>(needed));
        return MAX_ERR_NONE;
    }
    long position = 0;
    for (t_symbol* name : names) {
        // Counted anew: setting one attribute may change how many values another one has.
        const long count = MaxAttribute::GetNumberOfAtomsNeededToStoreAttribute(x, name);
        if (count == 0) continue;
        if (count > ac - position) {
            object_error(object, "error reading atoms in velmomax_setvalueof");
            break;
        }
        setAttribute(x, name, count, av + position);
        position += count;
    }
    return MAX_ERR_NONE;
}

void velmomax_preset(void* x) noexcept {
    Atoms line = presetLine(x);
    if (line.empty()) {
        object_error(static_cast<t_object*>(x), "error in velmomax_preset");
        return;
    }
    void* binbuf = gensym("_preset")->s_thing;
    if (binbuf) binbuf_insert(binbuf, nullptr, static_cast<short>(line.size()), line.data());
}

t_max_err velmomax_recallpreset(void* x, t_symbol*, long argc, t_atom* argv) noexcept {
    return velmomax_setvalueof(x, argc, argv);
}

}  // namespace velmomax
