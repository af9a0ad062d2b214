#include "velmomax_json.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>

#include "velmomax_atoms.h"
#include "velmomax_dictionary.h"
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

void writeEntries(void* x, t_dictionary* dict, long numKeys, t_symbol* const* keys, std::ostream& stream) {
    stream << "{\n";
    for (long i = 0; i < numKeys; ++i) {
        stream << "    " << quoted(keys[i]->s_name) << " : " << jsonValueOf(x, dict, keys[i])
               << (i + 1 < numKeys ? ", \n" : "\n");
    }
    stream << "}\n";
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
    if (!dict) return false;
    std::ofstream file = OpenTextFile(path);
    if (!file) return false;
    auto* object = static_cast<t_object*>(x);
    long numKeys = 0;
    t_symbol** keys = nullptr;
    const t_max_err error = dictionary_getkeys_ordered(dict, &numKeys, &keys);
    if (error != MAX_ERR_NONE) {
        object_error(object, "couldnt get dict key : %s", GetErrorName(error));
        return false;
    }
    writeEntries(x, dict, numKeys, keys, file);
    dictionary_freekeys(dict, numKeys, keys);
    file.close();
    if (!file) object_error(object, "couldnt write %s", path.c_str());
    return static_cast<bool>(file);
}

void export_dict(void* x, t_symbol*, long argc, t_atom* argv) noexcept {
    t_dictionary* state = AddAttributesToDictionary(x);
    if (!state) return;
    const bool isPathGiven = argc > 0 && argv && argv->a_type == A_SYM;
    const std::string path = isPathGiven ? atom_getsym(argv)->s_name : OpenSaveAsDialogForJSONFile();
    if (!path.empty()) export_dictionary_json(x, state, path);
    object_free(state);
}

}  // namespace velmomax
