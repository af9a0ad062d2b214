#include "core/AtomText.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

#include "core/AtomOutput.h"
#include "core/Numbers.h"
#include "core/OutOfMemory.h"
#include "ext_obex.h"
#include "ext_obex_util.h"

namespace velmohost {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// A word of a text; `isSymbol` when quotes or backslashes keep it from being a number.
struct Word {
    std::string text;
    bool isSymbol = false;
};

class WordReader {
public:
    explicit WordReader(const std::string& source) : text(source) {}

    std::optional<Word> Next() {
        while (position < text.size() && IsBlank(text[position])) ++position;
        if (position == text.size()) return std::nullopt;
        Word word;
        bool quoted = false;
        for (; position < text.size() && (quoted || !IsBlank(text[position])); ++position) {
            if (text[position] == '"') {
                quoted = !quoted;
                word.isSymbol = true;
            } else {
                if (text[position] == '\\' && position + 1 < text.size()) {
                    ++position;
                    word.isSymbol = true;
                }
                word.text += text[position];
            }
        }
        return word;
    }

private:
    const std::string& text;
    std::size_t position = 0;
};

/// The shortest text, of 6 significant digits at least, that reads back as the same `Number`.
template <class Number>
std::string ShortestText(Number value) {
    char text[64];
    for (int digits = 6; digits <= 17; ++digits) {
        std::snprintf(text, sizeof(text), "%.*g", digits, static_cast<double>(value));
        if (static_cast<Number>(std::strtod(text, nullptr)) == value) break;
    }
    return text;
}

std::string FloatToText(double value, long flags) {
    if ((flags & OBEX_UTIL_ATOM_GETTEXT_FORCE_ZEROS) != 0) {
        char text[400];
        std::snprintf(text, sizeof(text), "%f", value);
        return text;
    }
    if (!std::isfinite(value)) return std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf";
    // A value that came from 32 bits is shown with the digits of 32 bits: 0.1, not 0.10000000149011612.
    const float narrow = static_cast<float>(value);
    std::string text = static_cast<double>(narrow) == value ? ShortestText(narrow) : ShortestText(value);
    if (text.find_first_of(".e") == std::string::npos) text += '.';
    return text;
}

bool NeedsQuotes(const std::string& text) {
    t_atom number;
    return text.empty() || text.find_first_of(" \t\n\r\"\\") != std::string::npos || ReadNumber(text, number);
}

std::string SymbolToText(const std::string& text, long flags) {
    const bool force = (flags & OBEX_UTIL_ATOM_GETTEXT_SYM_FORCE_QUOTE) != 0;
    const bool never = (flags & OBEX_UTIL_ATOM_GETTEXT_SYM_NO_QUOTE) != 0;
    if (!force && (never || !NeedsQuotes(text))) return text;
    std::string quoted = "\"";
    for (const char c : text) {
        if ((c == '"' || c == '\\') && (flags & OBEX_UTIL_ATOM_GETTEXT_NOESCAPE) == 0) quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

std::string AtomToText(const t_atom& atom, long flags) {
    switch (atom.a_type) {
        case A_LONG:
            return std::to_string(atom.a_w.w_long);
        case A_FLOAT:
            return FloatToText(atom.a_w.w_float, flags);
        case A_SYM:
            return SymbolToText(atom_getsym(&atom)->s_name, flags);
        case A_OBJ: {
            const t_symbol* const name = object_classname(atom.a_w.w_obj);
            return std::string("<") + (name != nullptr ? name->s_name : "object") + ">";
        }
        case A_SEMI:
            return ";";
        case A_COMMA:
            return ",";
        case A_DOLLAR:
            return "$" + std::to_string(atom.a_w.w_long);
        default:
            return "";
    }
}

}  // namespace

std::vector<t_atom> ParseAtoms(const std::string& text) {
    std::vector<t_atom> atoms;
    WordReader reader(text);
    while (const std::optional<Word> word = reader.Next()) {
        t_atom atom{};
        if (word->isSymbol || !ReadNumber(word->text, atom)) atom_setsym(&atom, gensym(word->text.c_str()));
        atoms.push_back(atom);
    }
    return atoms;
}

std::string AtomsToText(long ac, const t_atom* av, long flags) {
    const char* const delimiter = (flags & OBEX_UTIL_ATOM_GETTEXT_COMMA_DELIM) != 0 ? ", " : " ";
    std::string text;
    for (long i = 0; i < ac; ++i) {
        if (i > 0) text += delimiter;
        text += AtomToText(av[i], flags);
    }
    return text;
}

}  // namespace velmohost

using namespace velmohost;

extern "C" {

t_max_err atom_setparse(long* ac, t_atom** av, const char* parsestr) try {
    return parsestr != nullptr ? GiveAtoms(ParseAtoms(parsestr), ac, av) : static_cast<t_max_err>(MAX_ERR_INVALID_PTR);
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

t_max_err atom_gettext(long ac, t_atom* av, long* textsize, char** text, long flags) try {
    if (textsize == nullptr || text == nullptr || (ac > 0 && av == nullptr)) return MAX_ERR_INVALID_PTR;
    const std::string written = AtomsToText(ac, av, flags);
    if (*text == nullptr || *textsize <= 0) {
        *textsize = static_cast<long>(written.size()) + 1;
        *text = sysmem_newptr(written.size() + 1);
        if (*text == nullptr) return MAX_ERR_OUT_OF_MEM;
    }
    strncpy_zero(*text, written.c_str(), *textsize);
    return MAX_ERR_NONE;
} catch (const std::bad_alloc&) {
    return OutOfMemory();
}

}  // extern "C"
