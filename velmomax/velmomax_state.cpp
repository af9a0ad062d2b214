#include "velmomax_state.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "velmomax_atoms.h"
#include "velmomax_attribute.h"
#include "velmomax_guard.h"
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

std::vector<long> countAtoms(void* x, const std::vector<t_symbol*>& names) {
    std::vector<long> counts;
    counts.reserve(names.size());
    for (t_symbol* name : names) counts.push_back(MaxAttribute::GetNumberOfAtomsNeededToStoreAttribute(x, name));
    return counts;
}

long sum(const std::vector<long>& counts) { return std::accumulate(counts.begin(), counts.end(), 0L); }

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

/// What "getvalueof" gives: into the memory that the caller passes in, or into new memory.
void giveState(void* x, long& ac, t_atom*& av) {
    auto* object = static_cast<t_object*>(x);
    const std::vector<t_symbol*> names = GetStateAttributes(x);
    const long needed = sum(countAtoms(x, names));
    const bool isPassedIn = ac > 0 && av;
    if (isPassedIn) object_warn(object, "velmomax_getvalueof : memory passed in");
    Atoms atoms;
    for (t_symbol* name : names) appendValue(x, name, atoms);

    if (!isPassedIn) {
        const auto size = static_cast<t_ptr_size>(needed) * sizeof(t_atom);
        av = needed > 0 ? reinterpret_cast<t_atom*>(sysmem_newptr(size)) : nullptr;
        ac = av ? needed : 0;
    }
    const auto found = static_cast<long>(atoms.size());
    ac = std::min(found, ac);
    std::copy_n(atoms.begin(), ac, av);
    const long stored = found > needed ? found : ac;
    if (stored != needed) {
        object_error(object, "%d atoms allocated but %d atoms stored by the pattrstorage", static_cast<int>(needed),
                     static_cast<int>(stored));
    }
}

void takeState(void* x, long ac, const t_atom* av) {
    auto* object = static_cast<t_object*>(x);
    const std::vector<t_symbol*> names = GetStateAttributes(x);
    const std::vector<long> counts = countAtoms(x, names);
    const long needed = sum(counts);
    if (ac != needed) {
        object_error(object, "setvalueof error (received %d atoms. %d atoms were expected)", static_cast<int>(ac),
                     static_cast<int>(needed));
        return;
    }
    long position = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        // Counted anew: setting one attribute may change how many values another one has.
        const long count = MaxAttribute::GetNumberOfAtomsNeededToStoreAttribute(x, names[i]);
        const bool isLost = count == 0 && counts[i] != 0;  // its atoms would go to the attributes behind it
        if (isLost || count > ac - position) {
            object_error(object, "error reading atoms in velmomax_setvalueof");
            break;
        }
        if (count > 0) setAttribute(x, names[i], count, av + position);
        position += count;
    }
}

/// The message that brings the state back: the object, its class, the selector and the values. Empty on failure.
Atoms presetLine(void* x) {
    const long needed = sum(countAtoms(x, GetStateAttributes(x)));
    long count = 0;
    t_atom* values = nullptr;
    giveState(x, count, values);
    const OwnedMemory<t_atom> owner(values);
    Atoms line;
    // The host counts a message's atoms in 16 bits.
    if (values && count == needed && needed <= std::numeric_limits<short>::max() - 3) {
        line.resize(3);
        atom_setobj(&line[0], x);
        atom_setsym(&line[1], object_classname(x));
        atom_setsym(&line[2], CommonSymbol(SlotOf("recallpreset")));
        line.insert(line.end(), values, values + count);
    }
    return line;
}

void storePreset(void* x) {
    Atoms line = presetLine(x);
    if (line.empty()) {
        object_error(static_cast<t_object*>(x), "error in velmomax_preset");
        return;
    }
    void* binbuf = gensym("_preset")->s_thing;
    if (binbuf) binbuf_insert(binbuf, nullptr, static_cast<short>(line.size()), line.data());
}

}  // namespace

std::vector<t_symbol*> GetStateAttributes(void* x) {
    std::vector<t_symbol*> names;
    MaxAttribute::GetListOfAttributesName(x, names, MaxAttribute::Alphabetical);
    MaxAttribute::RemoveInvisibleAndOpaqueAttributes(x, names);
    return names;
}

t_max_err velmomax_getvalueof(void* x, long* ac, t_atom** av) noexcept {
    if (!x || !ac || !av) {
        object_bug(static_cast<t_object*>(x), "velmomax_getvalueof : there is a problem");
    } else if (!Guarded(x, [&] { giveState(x, *ac, *av); })) {
        *ac = 0;
    }
    return MAX_ERR_NONE;
}

t_max_err velmomax_setvalueof(void* x, long ac, t_atom* av) noexcept {
    if (ac > 0 && av) Guarded(x, [&] { takeState(x, ac, av); });
    return MAX_ERR_NONE;
}

void velmomax_preset(void* x) noexcept {
    Guarded(x, [&] { storePreset(x); });
}

t_max_err velmomax_recallpreset(void* x, t_symbol*, long argc, t_atom* argv) noexcept {
    return velmomax_setvalueof(x, argc, argv);
}

}  // namespace velmomax
