#include "core/AttributeType.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

#include "ext_obex.h"

namespace velmohost {
namespace {

template <class Value>
Value Load(const void* place) {
    Value value;
    std::memcpy(&value, place, sizeof value);  // NOLINT(bugprone-sizeof-expression): of a pointer itself, too
    return value;
}

template <class Value>
void Store(void* place, Value value) {
    std::memcpy(place, &value, sizeof value);  // NOLINT(bugprone-sizeof-expression): of a pointer itself, too
}

template <class Integer>
t_atom ReadInteger(const void* place) {
    t_atom atom;
    atom_setlong(&atom, static_cast<t_atom_long>(Load<Integer>(place)));
    return atom;
}

/// Values beyond the storage's range become its nearest end.
template <class Integer>
void WriteInteger(void* place, const t_atom& atom) {
    using Limits = std::numeric_limits<Integer>;
    const t_atom_long value = std::clamp<t_atom_long>(atom_getlong(&atom), Limits::min(), Limits::max());
    Store(place, static_cast<Integer>(value));
}

template <class Float>
t_atom ReadFloat(const void* place) {
    t_atom atom;
    atom_setfloat(&atom, static_cast<double>(Load<Float>(place)));
    return atom;
}

template <class Float>
void WriteFloat(void* place, const t_atom& atom) {
    Store(place, static_cast<Float>(atom_getfloat(&atom)));
}

/// A place that was never written holds no symbol: it reads as the empty one.
t_atom ReadSymbol(const void* place) {
    t_symbol* const symbol = Load<t_symbol*>(place);
    t_atom atom;
    atom_setsym(&atom, symbol != nullptr ? symbol : gensym(""));
    return atom;
}

void WriteSymbol(void* place, const t_atom& atom) { Store(place, atom_getsym(&atom)); }

t_atom ReadAtom(const void* place) { return Load<t_atom>(place); }

void WriteAtom(void* place, const t_atom& atom) { Store(place, atom); }

t_atom ReadObject(const void* place) {
    t_atom atom;
    atom_setobj(&atom, Load<void*>(place));
    return atom;
}

void WriteObject(void* place, const t_atom& atom) { Store(place, atom_getobj(&atom)); }

template <class Integer>
constexpr AttributeType IntegerType(const char* name) {
    return {name, sizeof(Integer), ReadInteger<Integer>, WriteInteger<Integer>};
}

constexpr AttributeType types[] = {
    IntegerType<signed char>("char"),
    IntegerType<long>("long"),
    IntegerType<t_atom_long>("atom_long"),
    IntegerType<t_int32>("int32"),
    IntegerType<t_filepath>("filepath"),
    {"float32", sizeof(float), ReadFloat<float>, WriteFloat<float>},
    {"float64", sizeof(double), ReadFloat<double>, WriteFloat<double>},
    {"symbol", sizeof(t_symbol*), ReadSymbol, WriteSymbol},
    {"atom", sizeof(t_atom), ReadAtom, WriteAtom},
    {"object", sizeof(void*), ReadObject, WriteObject},
    {"pointer", sizeof(void*), ReadObject, WriteObject},
};

}  // namespace

const AttributeType* FindAttributeType(const t_symbol* name) {
    if (name == nullptr) return nullptr;
    const auto* const found = std::find_if(std::begin(types), std::end(types), [name](const AttributeType& t) {
        return std::strcmp(t.name, name->s_name) == 0;
    });
    return found != std::end(types) ? found : nullptr;
}

t_atom ConvertToType(const AttributeType* type, const t_atom& atom) {
    if (type == nullptr) return atom;
    alignas(t_atom) unsigned char place[sizeof(t_atom)] = {};
    type->write(place, atom);
    return type->read(place);
}

}  // namespace velmohost
