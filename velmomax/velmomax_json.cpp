#include "velmomax_json.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <new>
#include <ostream>

#include "velmomax_atoms.h"
#include "velmomax_dictionary.h"
#include "velmomax_guard.h"
#include "velmomax_path.h"
#include "velmomax_text.h"

namespace velmomax {

namespace {

std::string escaped(unsigned char character) {
    switch (character) {
        case '"':
            return "\\\"";
        case '\\':
            return "\\\\";
        case '\n':
            return "\\n";
        case '\t':
            return "\\t";
        case '\r':
            return "\\r";
        default:
            break;
    }
    if (character >= 0x20) return std::string(1, static_cast<char>(character));
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned int>(character));
    return code.data();
}

std::string quoted(const char* text) {
    std::string json = "\"";
    for (; *text; ++text) json += escaped(static_cast<unsigned char>(*text));
    return json + "\"";
}

std::string jsonNumber(double value) { return std::isfinite(static_cast<float>(value)) ? fixedFloat(value) : "null"; }

std::string jsonValue(const t_atom& atom) {
    switch (atom.a_type) {
        case A_LONG:
            return std::to_string(atom_getlong(&atom));
        case A_FLOAT:
            return jsonNumber(atom_getfloat(&atom));
        case A_SYM:
            return quoted(atom_getsym(&atom)->s_name);
        default:
            return "null";
    }
}

std::string jsonValueOf(void* x, t_dictionary* dict, t_symbol* key) {
    const DictionaryValue value(dict, key);
    std::string json;
    if (value.IsAtoms()) {
        atomarray2json(value.Count(), value.Atoms(), json);
    } else {
        object_error(static_cast<t_object*>(x), "entry %s is not atom ? ", key->s_name);
    }
    return json;
}

void writeEntries(void* x, t_dictionary* dict, const DictionaryKeys& keys, std::ostream& stream) {
    stream << "{\n";
    for (t_symbol* const* key = keys.begin(); key != keys.end(); ++key) {
        stream << "    " << quoted((*key)->s_name) << " : " << jsonValueOf(x, dict, *key)
               << (key + 1 != keys.end() ? ", \n" : "\n");
    }
    stream << "}\n";
}

bool writeDictionary(void* x, t_dictionary* dict, const std::string& path) {
    errno = 0;
    NewTextFile file(path);
    if (!file.IsOpen()) {
        if (errno == ENOMEM) throw std::bad_alloc();
        return false;
    }
    auto* object = static_cast<t_object*>(x);
    const DictionaryKeys keys(dict, dictionary_getkeys_ordered);
    if (keys.Error() != MAX_ERR_NONE) {
        object_error(object, "couldnt get dict key : %s", GetErrorName(keys.Error()));
        return false;
    }
    writeEntries(x, dict, keys, file.Stream());
    if (file.Finish()) return true;
    object_error(object, "couldnt write %s", path.c_str());
    return false;
}

}  // namespace

void atomarray2json(long argc, const t_atom* argv, std::string& out) {
    out.clear();
    if (!argv || argc < 1) return;
    if (argc == 1) {
        out = jsonValue(*argv);
        return;
    }
    out = "[ ";
    for (long i = 0; i + 1 < argc; ++i) out += jsonValue(argv[i]) + ", ";
    const t_atom& last = argv[argc - 1];
    out += jsonValue(last) + (last.a_type == A_SYM ? "]" : " ]");
}

bool export_dictionary_json(void* x, t_dictionary* dict, const std::string& path) noexcept {
    bool isWritten = false;
    Guarded(x, [&] { isWritten = dict && writeDictionary(x, dict, path); });
    return isWritten;
}

void export_dict(void* x, t_symbol*, long argc, t_atom* argv) noexcept {
    Guarded(x, [&] {
        const OwnedObject<t_dictionary> state(AddAttributesToDictionary(x));
        if (!state) return;
        const bool isPathGiven = argc > 0 && argv && argv->a_type == A_SYM;
        const std::string path = isPathGiven ? atom_getsym(argv)->s_name : OpenSaveAsDialogForJSONFile();
        if (!path.empty()) export_dictionary_json(x, state.get(), path);
    });
}

}  // namespace velmomax
