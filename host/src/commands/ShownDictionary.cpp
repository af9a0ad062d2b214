#include "commands/ShownDictionary.h"

#include "core/AtomText.h"
#include "ext_dictobj.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

void AppendEntries(const t_dictionary* dictionary, const std::string& keyStart, std::vector<std::string>& lines);

void AppendEntry(const t_dictionary* dictionary, t_symbol* key, const std::string& keyStart,
                 std::vector<std::string>& lines) {
    t_object* inner = nullptr;
    if (dictionary_getdictionary(dictionary, key, &inner) == MAX_ERR_NONE) {
        return AppendEntries(reinterpret_cast<t_dictionary*>(inner), keyStart + key->s_name + "::", lines);
    }
    const char* text = nullptr;
    long ac = 0;
    t_atom* av = nullptr;
    std::string value;
    if (dictionary_getstring(dictionary, key, &text) == MAX_ERR_NONE) {
        t_atom symbol;
        atom_setsym(&symbol, gensym(text));
        value = AtomsToText(1, &symbol);
    } else if (dictionary_getatoms(dictionary, key, &ac, &av) == MAX_ERR_NONE) {
        value = AtomsToText(ac, av);
    }
    lines.push_back(keyStart + key->s_name + (value.empty() ? "" : " ") + value);
}

void AppendEntries(const t_dictionary* dictionary, const std::string& keyStart, std::vector<std::string>& lines) {
    long count = 0;
    t_symbol** keys = nullptr;
    if (dictionary_getkeys_ordered(dictionary, &count, &keys) != MAX_ERR_NONE) return;
    for (long index = 0; index < count; ++index) AppendEntry(dictionary, keys[index], keyStart, lines);
    dictionary_freekeys(const_cast<t_dictionary*>(dictionary), count, keys);
}

}  // namespace

std::vector<std::string> FormatDictionary(const t_dictionary* dictionary) {
    std::vector<std::string> lines;
    AppendEntries(dictionary, "", lines);
    return lines;
}

ShownDictionary::~ShownDictionary() {
    if (kept != nullptr) object_free(kept);
}

void ShownDictionary::Show(t_symbol* name) {
    t_dictionary* const shown = dictobj_findregistered_retain(name);
    if (shown == nullptr) return;
    for (const std::string& line : FormatDictionary(shown)) PrintWindowLine("[dictionary] " + line);
    if (shown != kept) Keep(shown);
    dictobj_release(shown);
}

void ShownDictionary::Keep(t_dictionary* shown) {
    if (kept != nullptr) object_free(kept);
    t_dictionary* const copy = dictionary_clone(shown);
    t_symbol* name = gensym("last");
    // A dictionary that somebody else registered under the name stays what it is.
    t_dictionary* const holder = dictobj_register(copy, &name);
    kept = holder == copy ? copy : nullptr;
}

}  // namespace velmohost
