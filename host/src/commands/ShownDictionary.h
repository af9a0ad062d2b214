#pragma once

#include <string>
#include <vector>

#include "ext.h"
#include "ext_obex.h"

namespace velmohost {

/// A dictionary's entries in their order, a line each: the key and its atoms. The entries of a dictionary within it
/// follow as "OUTER::INNER". Main thread.
std::vector<std::string> FormatDictionary(const t_dictionary* dictionary);

/// Shows the dictionaries that an object sends, and keeps a copy of the last one registered under the name "last": the
/// sender empties its own as soon as the send returns. Main thread.
class ShownDictionary {
public:
    ShownDictionary() = default;
    ~ShownDictionary();
    ShownDictionary(const ShownDictionary&) = delete;
    ShownDictionary& operator=(const ShownDictionary&) = delete;

    /// Prints the entries of the dictionary registered under `name`, "[dictionary] KEY ATOMS…" each, to the standard
    /// output; nothing when there is none of that name.
    void Show(t_symbol* name);

private:
    void Keep(t_dictionary* shown);

    t_dictionary* kept = nullptr;
};

}  // namespace velmohost
