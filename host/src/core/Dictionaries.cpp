#include <algorithm>
#include <vector>

#include "core/AtomOutput.h"
#include "core/DictionaryRecord.h"
#include "core/HostClasses.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "core/StringObjects.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

void FreeDictionary(DictionaryRecord* x) {
    if (x->state == nullptr) return;
    UnregisterDictionary(*x->state);
    dictionary_clear(&x->d);
    delete x->state;
}

t_atom* FindValue(const t_dictionary* d, const t_symbol* key) {
    DictionaryState* const state = StateOf(d);
    if (state == nullptr) return nullptr;
    const auto found = state->byKey.find(key);
    return found != state->byKey.end() ? &found->second->value : nullptr;
}

/// Puts a value under a key, at the end or in the place of the one that was there, which is freed.
t_max_err Put(t_dictionary* d, t_symbol* key, const t_atom& value) try {
    DictionaryState* const state = StateOf(d);
    if (state == nullptr || key == nullptr) return MAX_ERR_INVALID_PTR;
    if (t_atom* const earlier = FindValue(d, key)) {
        void* const replaced = atom_getobj(earlier);
        *earlier = value;
        if (replaced != atom_getobj(&value)) object_free(replaced);
        return MAX_ERR_NONE;
    }
    state->entries.push_back({key, value});
    try {
        state->byKey.emplace(key, std::prev(state->entries.end()));
    } catch (...) {
        state->entries.pop_back();
        throw;
    }
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err PutObject(t_dictionary* d, t_symbol* key, t_object* object) {
    if (NOGOOD(object)) return MAX_ERR_INVALID_PTR;
    t_atom atom;
    atom_setobj(&atom, object);
    return Put(d, key, atom);
}

/// The same with an object made for the dictionary, which is freed when that does not take it.
t_max_err PutNewObject(t_dictionary* d, t_symbol* key, void* object) {
    OwnedRecord<t_object> owned(static_cast<t_object*>(object));
    const t_max_err result = PutObject(d, key, owned.get());
    if (result == MAX_ERR_NONE) static_cast<void>(owned.release());
    return object != nullptr ? result : static_cast<t_max_err>(MAX_ERR_OUT_OF_MEM);
}

/// @returns what the entry held, no longer owned by the dictionary; null for anything but an object
t_max_err Remove(t_dictionary* d, t_symbol* key, void*& held) {
    DictionaryState* const state = StateOf(d);
    if (state == nullptr) return MAX_ERR_INVALID_PTR;
    const auto found = state->byKey.find(key);
    if (found == state->byKey.end()) return MAX_ERR_GENERIC;
    held = atom_getobj(&found->second->value);
    state->entries.erase(found->second);
    state->byKey.erase(found);
    return MAX_ERR_NONE;
}

bool HoldsInstanceOf(t_class* c, const t_atom* value) {
    return value != nullptr && object_class(atom_getobj(value)) == c;
}

/// An object entry of a class, or of any class when that is null.
t_max_err GetObject(const t_dictionary* d, t_symbol* key, t_class* c, t_object** value) {
    t_atom* const found = FindValue(d, key);
    if (value == nullptr || found == nullptr || found->a_type != A_OBJ) return MAX_ERR_GENERIC;
    if (c != nullptr && !HoldsInstanceOf(c, found)) return MAX_ERR_GENERIC;
    *value = found->a_w.w_obj;
    return MAX_ERR_NONE;
}

bool IsNumber(const t_atom* value) { return value != nullptr && (value->a_type == A_LONG || value->a_type == A_FLOAT); }

/// The atoms of an entry in place: those of an array, or the single one.
bool FindAtoms(const t_dictionary* d, t_symbol* key, long& argc, t_atom*& argv) {
    t_atom* const value = FindValue(d, key);
    if (value == nullptr) return false;
    if (HoldsInstanceOf(AtomArrayClass(), value)) {
        atomarray_getatoms(static_cast<t_atomarray*>(atom_getobj(value)), &argc, &argv);
    } else {
        argc = 1;
        argv = value;
    }
    return true;
}

void CopyEntry(t_dictionary* target, const DictionaryState::Entry& entry) {
    void* const object = atom_getobj(&entry.value);
    if (entry.value.a_type != A_OBJ) {
        Put(target, entry.key, entry.value);
    } else if (HoldsInstanceOf(AtomArrayClass(), &entry.value)) {
        PutNewObject(target, entry.key, atomarray_duplicate(static_cast<t_atomarray*>(object)));
    } else if (HoldsInstanceOf(DictionaryClass(), &entry.value)) {
        PutNewObject(target, entry.key, dictionary_clone(static_cast<t_dictionary*>(object)));
    } else if (const char* const text = TextOf(object)) {
        dictionary_appendstring(target, entry.key, text);
    }
    // Other objects can not be copied, and two owners would both free them.
}

}  // namespace

t_class* DictionaryClass() {
    static t_class* const c =
        Required(class_new("dictionary", reinterpret_cast<method>(dictionary_new),
                           reinterpret_cast<method>(FreeDictionary), sizeof(DictionaryRecord), nullptr, A_CANT, 0));
    return c;
}

DictionaryState* StateOf(const void* dictionary) {
    void* const x = const_cast<void*>(dictionary);
    return object_class(x) == DictionaryClass() ? static_cast<DictionaryRecord*>(x)->state : nullptr;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_dictionary* dictionary_new(void) try {
    OwnedRecord<DictionaryRecord> x(NewRecord<DictionaryRecord>(DictionaryClass()));
    x->state = new DictionaryState;
    return &x.release()->d;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err dictionary_appendlong(t_dictionary* d, t_symbol* key, t_atom_long value) {
    t_atom atom;
    atom_setlong(&atom, value);
    return Put(d, key, atom);
}

t_max_err dictionary_appendfloat(t_dictionary* d, t_symbol* key, double value) {
    t_atom atom;
    atom_setfloat(&atom, value);
    return Put(d, key, atom);
}

t_max_err dictionary_appendsym(t_dictionary* d, t_symbol* key, t_symbol* value) {
    t_atom atom;
    atom_setsym(&atom, value != nullptr ? value : gensym(""));
    return Put(d, key, atom);
}

t_max_err dictionary_appendatom(t_dictionary* d, t_symbol* key, t_atom* value) {
    return value != nullptr ? Put(d, key, *value) : static_cast<t_max_err>(MAX_ERR_INVALID_PTR);
}

t_max_err dictionary_appendstring(t_dictionary* d, t_symbol* key, const char* value) {
    if (StateOf(d) == nullptr || key == nullptr || value == nullptr) return MAX_ERR_INVALID_PTR;
    return PutNewObject(d, key, NewString(value));
}

// One atom is kept as it is, several as an array.
t_max_err dictionary_appendatoms(t_dictionary* d, t_symbol* key, long argc, t_atom* argv) {
    if (StateOf(d) == nullptr || key == nullptr || argc < 0 || (argc > 0 && argv == nullptr))
        return MAX_ERR_INVALID_PTR;
    if (argc == 1) return Put(d, key, *argv);
    return PutNewObject(d, key, atomarray_new(argc, argv));
}

t_max_err dictionary_appendatomarray(t_dictionary* d, t_symbol* key, t_object* value) {
    return PutObject(d, key, value);
}

t_max_err dictionary_appenddictionary(t_dictionary* d, t_symbol* key, t_object* value) {
    return PutObject(d, key, value);
}

t_max_err dictionary_appendobject(t_dictionary* d, t_symbol* key, t_object* value) { return PutObject(d, key, value); }

t_max_err dictionary_getlong(const t_dictionary* d, t_symbol* key, t_atom_long* value) {
    const t_atom* const found = FindValue(d, key);
    if (value == nullptr || !IsNumber(found)) return MAX_ERR_GENERIC;
    *value = atom_getlong(found);
    return MAX_ERR_NONE;
}

t_max_err dictionary_getfloat(const t_dictionary* d, t_symbol* key, double* value) {
    const t_atom* const found = FindValue(d, key);
    if (value == nullptr || !IsNumber(found)) return MAX_ERR_GENERIC;
    *value = atom_getfloat(found);
    return MAX_ERR_NONE;
}

t_max_err dictionary_getsym(const t_dictionary* d, t_symbol* key, t_symbol** value) {
    const t_atom* const found = FindValue(d, key);
    const char* const text = found != nullptr ? TextOf(atom_getobj(found)) : nullptr;
    if (value == nullptr || found == nullptr || (found->a_type != A_SYM && text == nullptr)) return MAX_ERR_GENERIC;
    *value = text != nullptr ? gensym(text) : atom_getsym(found);
    return MAX_ERR_NONE;
}

t_max_err dictionary_getatom(const t_dictionary* d, t_symbol* key, t_atom* value) {
    const t_atom* const found = FindValue(d, key);
    if (value == nullptr || found == nullptr) return MAX_ERR_GENERIC;
    *value = *found;
    return MAX_ERR_NONE;
}

t_max_err dictionary_getstring(const t_dictionary* d, t_symbol* key, const char** value) {
    t_atom* const found = FindValue(d, key);
    const char* text = found != nullptr ? TextOf(atom_getobj(found)) : nullptr;
    if (found != nullptr && found->a_type == A_SYM) text = atom_getsym(found)->s_name;
    if (value == nullptr || text == nullptr) return MAX_ERR_GENERIC;
    *value = text;
    return MAX_ERR_NONE;
}

t_max_err dictionary_getatoms(const t_dictionary* d, t_symbol* key, long* argc, t_atom** argv) {
    if (argc == nullptr || argv == nullptr) return MAX_ERR_INVALID_PTR;
    return FindAtoms(d, key, *argc, *argv) ? MAX_ERR_NONE : MAX_ERR_GENERIC;
}

t_max_err dictionary_copyatoms(const t_dictionary* d, t_symbol* key, long* argc, t_atom** argv) try {
    long count = 0;
    t_atom* atoms = nullptr;
    return FindAtoms(d, key, count, atoms) ? GiveAtoms({atoms, atoms + count}, argc, argv)
                                           : static_cast<t_max_err>(MAX_ERR_GENERIC);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err dictionary_getatomarray(const t_dictionary* d, t_symbol* key, t_object** value) {
    return GetObject(d, key, AtomArrayClass(), value);
}

t_max_err dictionary_getdictionary(const t_dictionary* d, t_symbol* key, t_object** value) {
    return GetObject(d, key, DictionaryClass(), value);
}

t_max_err dictionary_getobject(const t_dictionary* d, t_symbol* key, t_object** value) {
    return GetObject(d, key, nullptr, value);
}

long dictionary_entryisatomarray(const t_dictionary* d, t_symbol* key) {
    return HoldsInstanceOf(AtomArrayClass(), FindValue(d, key));
}

long dictionary_entryisdictionary(const t_dictionary* d, t_symbol* key) {
    return HoldsInstanceOf(DictionaryClass(), FindValue(d, key));
}

long dictionary_entryisstring(const t_dictionary* d, t_symbol* key) {
    return HoldsInstanceOf(StringClass(), FindValue(d, key));
}

long dictionary_hasentry(const t_dictionary* d, t_symbol* key) { return FindValue(d, key) != nullptr; }

t_atom_long dictionary_getentrycount(const t_dictionary* d) {
    const DictionaryState* const state = StateOf(d);
    return state != nullptr ? static_cast<t_atom_long>(state->entries.size()) : 0;
}

t_max_err dictionary_getkeys(const t_dictionary* d, long* numkeys, t_symbol*** keys) {
    return dictionary_getkeys_ordered(d, numkeys, keys);
}

t_max_err dictionary_getkeys_ordered(const t_dictionary* d, long* numkeys, t_symbol*** keys) try {
    const DictionaryState* const state = StateOf(d);
    if (state == nullptr || numkeys == nullptr || keys == nullptr) return MAX_ERR_INVALID_PTR;
    const std::size_t count = state->entries.size();
    *keys = count > 0 ? reinterpret_cast<t_symbol**>(sysmem_newptr(count * sizeof(t_symbol*))) : nullptr;
    if (*keys == nullptr && count > 0) throw std::bad_alloc();
    *numkeys = static_cast<long>(count);
    std::transform(state->entries.begin(), state->entries.end(), *keys, [](const auto& entry) { return entry.key; });
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

void dictionary_freekeys(t_dictionary*, long, t_symbol** keys) { sysmem_freeptr(keys); }

t_max_err dictionary_deleteentry(t_dictionary* d, t_symbol* key) {
    void* held = nullptr;
    const t_max_err result = Remove(d, key, held);
    object_free(held);
    return result;
}

t_max_err dictionary_chuckentry(t_dictionary* d, t_symbol* key) {
    void* held = nullptr;
    return Remove(d, key, held);
}

t_max_err dictionary_clear(t_dictionary* d) {
    DictionaryState* const state = StateOf(d);
    if (state == nullptr) return MAX_ERR_INVALID_PTR;
    while (!state->entries.empty()) dictionary_deleteentry(d, state->entries.front().key);
    return MAX_ERR_NONE;
}

t_dictionary* dictionary_clone(t_dictionary* d) {
    if (StateOf(d) == nullptr) return nullptr;
    t_dictionary* const copy = dictionary_new();
    if (copy != nullptr) dictionary_clone_to_existing(d, copy);
    return copy;
}

t_max_err dictionary_clone_to_existing(const t_dictionary* d, t_dictionary* dst) {
    const DictionaryState* const source = StateOf(d);
    if (source == nullptr || StateOf(dst) == nullptr) return MAX_ERR_INVALID_PTR;
    if (d == dst) return MAX_ERR_NONE;
    dictionary_clear(dst);
    for (const DictionaryState::Entry& entry : source->entries) CopyEntry(dst, entry);
    return MAX_ERR_NONE;
}

}  // extern "C"
