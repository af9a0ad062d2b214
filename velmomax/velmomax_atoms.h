/// What the host hands out and takes back: values of attributes, entries and keys of dictionaries.
#pragma once

#include <memory>

#include "velmomax_api.h"

namespace velmomax {

/// Frees an object of the host at the end of its scope, unless it was released to somebody else. Main thread.
struct ObjectFreer {
    void operator()(void* object) const noexcept { object_free(object); }
};
template <typename Object>
using OwnedObject = std::unique_ptr<Object, ObjectFreer>;

/// Memory of the host, given back at the end of its scope.
struct MemoryFreer {
    void operator()(void* memory) const noexcept { sysmem_freeptr(memory); }
};
template <typename Element>
using OwnedMemory = std::unique_ptr<Element, MemoryFreer>;

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

/// The value of a dictionary's entry as atoms: one that the dictionary keeps plainly, several that it keeps as an
/// array, or a text that it keeps as a string object. Valid until the dictionary changes. Main thread.
///
///     const DictionaryValue value(dict, key);
///     if (value.IsAtoms()) use(value.Count(), value.Atoms());
class DictionaryValue {
public:
    DictionaryValue(t_dictionary* dict, t_symbol* key) noexcept {
        if (dictionary_entryisatomarray(dict, key)) {
            isAtoms = dictionary_getatoms(dict, key, &ac, &av) == MAX_ERR_NONE;
        } else if (dictionary_entryisstring(dict, key)) {
            t_symbol* text = nullptr;
            isAtoms = dictionary_getsym(dict, key, &text) == MAX_ERR_NONE && atom_setsym(&single, text) == MAX_ERR_NONE;
        } else {
            isAtoms = dictionary_getatom(dict, key, &single) == MAX_ERR_NONE && single.a_type != A_OBJ;
        }
    }
    DictionaryValue(const DictionaryValue&) = delete;
    DictionaryValue& operator=(const DictionaryValue&) = delete;

    /// False for an entry that is missing or an object of another kind, such as a dictionary.
    bool IsAtoms() const noexcept { return isAtoms; }

    /// The atoms, `Count` of them; an array may be empty. Meaningful when `IsAtoms`.
    long Count() const noexcept { return ac; }
    t_atom* Atoms() const noexcept { return av; }

private:
    t_atom single{};
    long ac = 1;
    t_atom* av = &single;
    bool isAtoms = false;
};

/// The keys of a dictionary, freed with this object. Valid as long as the dictionary. Main thread.
///
///     const DictionaryKeys keys(dict, dictionary_getkeys_ordered);
///     for (t_symbol* key : keys) use(key);
class DictionaryKeys {
public:
    using List = t_max_err (*)(const t_dictionary* dict, long* count, t_symbol*** keys);

    /// @param list the host's function that lists them, in the order that is wanted
    DictionaryKeys(t_dictionary* listedDict, List list) noexcept : dict(listedDict), error(list(dict, &count, &keys)) {}
    ~DictionaryKeys() {
        if (keys) dictionary_freekeys(dict, count, keys);
    }
    DictionaryKeys(const DictionaryKeys&) = delete;
    DictionaryKeys& operator=(const DictionaryKeys&) = delete;

    /// The host's error code of the listing.
    t_max_err Error() const noexcept { return error; }

    /// The count as the host reports it, which is negative when the host is at fault.
    long ReportedCount() const noexcept { return count; }

    t_symbol* const* begin() const noexcept { return keys; }
    t_symbol* const* end() const noexcept { return keys && count > 0 ? keys + count : keys; }

private:
    t_dictionary* const dict;
    long count = 0;
    t_symbol** keys = nullptr;
    t_max_err error;  // after the two above, which the listing fills
};

}  // namespace velmomax
