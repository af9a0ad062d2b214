#include "core/TypedArguments.h"

#include "core/PluginCall.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

bool IsNumber(const t_atom& atom) { return atom.a_type == A_LONG || atom.a_type == A_FLOAT; }

Argument MakeWord(t_ptr_int word) { return {false, word, 0.0}; }
Argument MakePointer(void* pointer) { return {false, reinterpret_cast<t_ptr_int>(pointer), 0.0}; }
Argument MakeFloat(double number) { return {true, 0, number}; }

/// @returns whether the atom suits the type
bool Convert(char type, const t_atom& atom, Argument& argument) {
    switch (type) {
        case A_LONG:
        case A_DEFLONG:
            argument = MakeWord(atom_getlong(&atom));
            return IsNumber(atom);
        case A_FLOAT:
        case A_DEFFLOAT:
            argument = MakeFloat(atom_getfloat(&atom));
            return IsNumber(atom);
        case A_SYM:
        case A_DEFSYM:
            argument = MakePointer(atom_getsym(&atom));
            return atom.a_type == A_SYM;
        case A_OBJ:
            argument = MakePointer(atom_getobj(&atom));
            return atom.a_type == A_OBJ;
        default:
            return false;
    }
}

/// @returns whether the type may be left out
bool FillIn(char type, Argument& argument) {
    switch (type) {
        case A_DEFLONG:
            argument = MakeWord(0);
            return true;
        case A_DEFFLOAT:
            argument = MakeFloat(0.0);
            return true;
        case A_DEFSYM:
            argument = MakePointer(gensym(""));
            return true;
        default:
            return false;
    }
}

/// Integers and doubles travel in different registers, and on some systems by position: each shape of a parameter list
/// gets a call of its own signature. The recursion turns one argument after the other into a C++ parameter.
template <int numLeft, class... Args>
VELMOHOST_CALLS_BY_SHAPE void* CallByShape(method function, const Argument* next, const Argument* end, Args... args) {
    if (next == end) return CallPlugin<void*>(function, args...);
    if constexpr (numLeft > 0) {
        return next->isFloat ? CallByShape<numLeft - 1>(function, next + 1, end, args..., next->number)
                             : CallByShape<numLeft - 1>(function, next + 1, end, args..., next->word);
    } else {
        return nullptr;
    }
}

}  // namespace

TypedArguments ConvertArguments(const char* types, long ac, const t_atom* av) {
    TypedArguments result;
    long index = 0;
    for (; *types != A_NOTHING; ++types, ++index) {
        Argument argument{};
        const bool given = index < ac;
        if (given ? !Convert(*types, av[index], argument) : !FillIn(*types, argument)) {
            result.problem = given ? "bad" : "missing";
            return result;
        }
        result.values.push_back(argument);
    }
    if (index < ac) result.problem = "extra";
    return result;
}

bool TakesAtoms(const char* types) {
    switch (types[0]) {
        case A_GIMME:
        case A_DEFER:
        case A_DEFER_LOW:
        case A_USURP:
        case A_USURP_LOW:
            return true;
        default:
            return false;
    }
}

void* CallWithArguments(method function, t_object* x, const std::vector<Argument>& arguments) {
    return CallByShape<MSG_MAXARG>(function, arguments.data(), arguments.data() + arguments.size(), x);
}

void* CallWithArguments(method function, const std::vector<Argument>& arguments) {
    return CallByShape<MSG_MAXARG>(function, arguments.data(), arguments.data() + arguments.size());
}

}  // namespace velmohost
