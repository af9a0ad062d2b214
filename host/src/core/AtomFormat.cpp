#include "core/AtomFormat.h"

#include <string_view>

#include "core/AtomOutput.h"
#include "core/AtomText.h"
#include "core/Messages.h"
#include "core/OutOfMemory.h"
#include "core/Owned.h"
#include "ext_obex.h"
#include "ext_obex_util.h"

namespace velmohost {
namespace {

t_atom MakeAtom(t_atom_long value) {
    t_atom atom;
    atom_setlong(&atom, value);
    return atom;
}

t_atom MakeAtom(double value) {
    t_atom atom;
    atom_setfloat(&atom, value);
    return atom;
}

t_atom MakeAtom(t_symbol* value) {
    t_atom atom;
    atom_setsym(&atom, value);
    return atom;
}

t_atom MakeAtom(t_object* value) {
    t_atom atom;
    atom_setobj(&atom, value);
    return atom;
}

t_atom MakeAtom(const t_atom& value) { return value; }

/// Appends `count` items, each as the kind of atom that `Item` stands for.
template <class Item, class Element>
void AppendArray(std::vector<t_atom>& atoms, long count, const Element* items) {
    for (long i = 0; items != nullptr && i < count; ++i) atoms.push_back(MakeAtom(static_cast<Item>(items[i])));
}

void AppendResult(std::vector<t_atom>& atoms, long ac, t_atom* av) {
    const OwnedMemory<t_atom> owner(av);
    AppendArray<const t_atom&>(atoms, ac, av);
}

void AppendObjectValue(std::vector<t_atom>& atoms, t_object* object) {
    long ac = 0;
    t_atom* av = nullptr;
    if (CallMethod(object, gensym("getvalueof"), &ac, &av)) AppendResult(atoms, ac, av);
}

void AppendAttribute(std::vector<t_atom>& atoms, t_object* object, t_symbol* name) {
    long ac = 0;
    t_atom* av = nullptr;
    if (object_attr_getvalueof(object, name, &ac, &av) == MAX_ERR_NONE) AppendResult(atoms, ac, av);
}

void AppendText(std::vector<t_atom>& atoms, const char* text) {
    const std::vector<t_atom> parsed = ParseAtoms(text != nullptr ? text : "");
    atoms.insert(atoms.end(), parsed.begin(), parsed.end());
}

void AppendBinbuf(std::vector<t_atom>& atoms, t_binbuf* binbuf) {
    long unused = 0;
    long position = 0;
    t_atom atom;
    while (binbuf != nullptr && binbuf_getatom(binbuf, &unused, &position, &atom) == 0) atoms.push_back(atom);
}

/// Walks through the values behind a format.
class ValueReader {
public:
    ValueReader(std::va_list source, std::vector<t_atom>& result) : atoms(result) { va_copy(values, source); }
    ~ValueReader() { va_end(values); }
    ValueReader(const ValueReader&) = delete;
    ValueReader& operator=(const ValueReader&) = delete;

    /// @returns whether the letter is known
    bool Append(char letter) {
        return letter == ' ' || AppendValue(letter) || AppendSource(letter) || AppendMany(letter);
    }

private:
    bool AppendValue(char letter) {
        switch (letter) {
            case 'c':
                atoms.push_back(MakeAtom(static_cast<t_atom_long>(va_arg(values, int))));
                return true;
            case 'l':
                atoms.push_back(MakeAtom(va_arg(values, t_atom_long)));
                return true;
            case 'f':
            case 'd':
                atoms.push_back(MakeAtom(va_arg(values, double)));
                return true;
            case 's':
                atoms.push_back(MakeAtom(va_arg(values, t_symbol*)));
                return true;
            case 'o':
                atoms.push_back(MakeAtom(va_arg(values, t_object*)));
                return true;
            case 'a':
                AppendArray<const t_atom&>(atoms, 1, va_arg(values, t_atom*));
                return true;
            default:
                return false;
        }
    }

    bool AppendSource(char letter) {
        switch (letter) {
            case 'v':
                AppendObjectValue(atoms, va_arg(values, t_object*));
                return true;
            case 'b':
                AppendBinbuf(atoms, va_arg(values, t_binbuf*));
                return true;
            case 'p':
                AppendText(atoms, va_arg(values, const char*));
                return true;
            case '@': {
                t_object* const object = va_arg(values, t_object*);
                AppendAttribute(atoms, object, va_arg(values, t_symbol*));
                return true;
            }
            default:
                return false;
        }
    }

    bool AppendMany(char letter) {
        if (std::string_view("CLFDSOA").find(letter) == std::string_view::npos) return false;
        // A count may have been passed as an int, whose upper half is undefined where a long has 8 bytes.
        const long count = static_cast<int>(va_arg(values, long));
        switch (letter) {
            case 'C':
                AppendArray<t_atom_long>(atoms, count, va_arg(values, const char*));
                return true;
            case 'L':
                AppendArray<t_atom_long>(atoms, count, va_arg(values, const t_atom_long*));
                return true;
            case 'F':
                AppendArray<double>(atoms, count, va_arg(values, const float*));
                return true;
            case 'D':
                AppendArray<double>(atoms, count, va_arg(values, const double*));
                return true;
            case 'S':
                AppendArray<t_symbol*>(atoms, count, va_arg(values, t_symbol* const*));
                return true;
            case 'O':
                AppendArray<t_object*>(atoms, count, va_arg(values, t_object* const*));
                return true;
            default:
                AppendArray<const t_atom&>(atoms, count, va_arg(values, const t_atom*));
                return true;
        }
    }

    std::va_list values;
    std::vector<t_atom>& atoms;
};

}  // namespace

t_max_err FormatAtoms(const char* format, std::va_list values, std::vector<t_atom>& atoms) {
    if (format == nullptr) return MAX_ERR_INVALID_PTR;
    ValueReader reader(values, atoms);
    for (const char* letter = format; *letter != '\0'; ++letter) {
        if (!reader.Append(*letter)) return MAX_ERR_GENERIC;
    }
    return MAX_ERR_NONE;
}

}  // namespace velmohost

extern "C" t_max_err atom_setformat(long* ac, t_atom** av, const char* fmt, ...) try {
    std::vector<t_atom> atoms;
    std::va_list values;
    va_start(values, fmt);
    const t_max_err result = velmohost::FormatAtoms(fmt, values, atoms);
    va_end(values);
    return result == MAX_ERR_NONE ? velmohost::GiveAtoms(atoms, ac, av) : result;
} catch (const std::bad_alloc&) {
    return velmohost::OutOfMemory();
}
