#pragma once

#include <list>
#include <unordered_map>

#include "ext.h"

namespace velmohost {

/// What a dictionary holds: its entries in the order in which they were added, and the way to each by its key.
struct DictionaryState {
    struct Entry {
        t_symbol* key;
        t_atom value;
    };
    std::list<Entry> entries;
    std::unordered_map<const t_symbol*, std::list<Entry>::iterator> byKey;
    t_symbol* registeredName = nullptr;  // null unless registered
    long retainCount = 0;                // references given out by name
    bool freeAtRelease = false;          // freed by its owner while references were out
};

struct DictionaryRecord {
    t_dictionary d;
    DictionaryState* state;
};

/// The state of a living dictionary, null for anything else.
DictionaryState* StateOf(const void* dictionary);

/// Takes a dictionary's registered name away, if it has one.
void UnregisterDictionary(DictionaryState& state);

}  // namespace velmohost
