#include <cstring>
#include <vector>

#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "ext.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

struct Binbuf {
    t_object ob;
    std::vector<t_atom>* atoms;
};

void FreeBinbuf(Binbuf* x) { delete x->atoms; }

t_class* BinbufClass() {
    static t_class* const c =
        Required(class_new("binbuf", nullptr, reinterpret_cast<method>(FreeBinbuf), sizeof(Binbuf), nullptr, 0));
    return c;
}

std::vector<t_atom>* AtomsOf(t_binbuf* x) {
    return object_class(x) == BinbufClass() ? static_cast<Binbuf*>(x)->atoms : nullptr;
}

/// Within a stored message "#1" to "#9" are places that the patcher fills in, written "$1" to "$9".
t_atom StoredForm(const t_atom& atom) {
    const char* const text = atom.a_type == A_SYM ? atom_getsym(&atom)->s_name : "";
    const bool isPlace = text[0] == '#' && text[1] >= '1' && text[1] <= '9' && text[2] == '\0';
    if (!isPlace) return atom;
    const char stored[] = {'$', text[1], '\0'};
    t_atom place;
    atom_setsym(&place, gensym(stored));
    return place;
}

void Append(std::vector<t_atom>& atoms, t_symbol* s, short argc, const t_atom* argv) {
    if (s != nullptr) {
        t_atom selector;
        atom_setsym(&selector, s);
        atoms.push_back(selector);
    }
    if (argc > 0 && argv != nullptr) atoms.insert(atoms.end(), argv, argv + argc);
}

}  // namespace
}  // namespace velmohost

using namespace velmohost;

extern "C" {

void* binbuf_new(void) try {
    OwnedRecord<Binbuf> x(NewRecord<Binbuf>(BinbufClass()));
    x->atoms = new std::vector<t_atom>;
    return x.release();
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void binbuf_insert(t_binbuf* x, t_symbol* s, short argc, t_atom* argv) try {
    std::vector<t_atom>* const atoms = AtomsOf(x);
    if (atoms == nullptr) return;
    std::vector<t_atom> message;
    Append(message, s, argc, argv);
    for (t_atom& atom : message) atom = StoredForm(atom);
    t_atom end{};
    end.a_type = A_SEMI;
    message.push_back(end);
    atoms->insert(atoms->end(), message.begin(), message.end());  // all or nothing
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

void binbuf_set(t_binbuf* x, t_symbol* s, short argc, t_atom* argv) try {
    if (std::vector<t_atom>* const atoms = AtomsOf(x)) {
        atoms->clear();
        Append(*atoms, s, argc, argv);
    }
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

void binbuf_append(t_binbuf* x, t_symbol* s, short argc, t_atom* argv) try {
    if (std::vector<t_atom>* const atoms = AtomsOf(x)) Append(*atoms, s, argc, argv);
} catch (const std::bad_alloc&) {
    OutOfMemory{};
}

short binbuf_getatom(t_binbuf* x, long*, long* p2, t_atom* ap) {
    const std::vector<t_atom>* const atoms = AtomsOf(x);
    if (atoms == nullptr || p2 == nullptr || ap == nullptr) return 1;
    if (*p2 < 0 || static_cast<std::size_t>(*p2) >= atoms->size()) return 1;
    *ap = (*atoms)[static_cast<std::size_t>((*p2)++)];
    return 0;
}

}  // extern "C"
