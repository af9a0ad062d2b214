#include "core/Construction.h"

#include <string>

#include "core/PluginCall.h"
#include "core/TypedArguments.h"
#include "window/MaxWindow.h"

namespace velmohost {

t_object* Construct(t_class* c, t_symbol* name, long ac, t_atom* av) {
    const t_messlist& constructor = *c->c_newmess;
    if (constructor.m_fun == nullptr) return nullptr;
    if (TakesAtoms(constructor.m_type)) return CallPlugin<t_object*>(constructor.m_fun, name, ac, av);
    // An untyped constructor serves code; its form is known to its author only, and this is the usual one.
    if (constructor.m_type[0] == A_CANT) return CallPlugin<t_object*>(constructor.m_fun, ac, av);

    const TypedArguments arguments = ConvertArguments(constructor.m_type, ac, av);
    if (arguments.problem != nullptr) {
        const bool isExtra = arguments.values.size() == std::string(constructor.m_type).size();
        const std::string text = std::string(arguments.problem) + " arguments for the object";
        PostRow(isExtra ? RowKind::Warning : RowKind::Error, name->s_name, text.c_str());
        if (!isExtra) return nullptr;
    }
    return static_cast<t_object*>(CallWithArguments(constructor.m_fun, arguments.values));
}

}  // namespace velmohost
