#include <nlohmann/json.hpp>

#include "commands/InfoText.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

using Json = nlohmann::ordered_json;

Json ToJson(const t_atom& atom) {
    switch (atom.a_type) {
        case A_LONG:
            return atom_getlong(&atom);
        case A_FLOAT:
            return atom_getfloat(&atom);
        case A_SYM:
            return atom_getsym(&atom)->s_name;
        default:
            return nullptr;
    }
}

/// One value as it is, several as an array, none as null.
Json ToJson(const std::vector<t_atom>& atoms) {
    if (atoms.empty()) return nullptr;
    if (atoms.size() == 1) return ToJson(atoms.front());
    Json array = Json::array();
    for (const t_atom& atom : atoms) array.push_back(ToJson(atom));
    return array;
}

Json ToJson(const ObjectDescription::Connector& connector) {
    return {{"type", connector.type}, {"assist", connector.assist}};
}

Json ToJson(const ObjectDescription::Attribute& attribute) {
    return {{"name", attribute.name},
            {"type", attribute.type},
            {"label", attribute.label},
            {"description", attribute.description},
            {"default", ToJson(attribute.defaultValue)},
            {"min", ToJson(attribute.minimum)},
            {"max", ToJson(attribute.maximum)},
            {"choices", attribute.choices},
            {"readable", attribute.isReadable},
            {"settable", attribute.isSettable}};
}

Json ToJson(const ObjectDescription::Argument& argument) {
    return {{"type", argument.type}, {"description", argument.description}};
}

Json ToJson(const ObjectDescription::Message& message);

template <class Item>
Json ToArray(const std::vector<Item>& items) {
    Json array = Json::array();
    for (const Item& item : items) array.push_back(ToJson(item));
    return array;
}

Json ToJson(const ObjectDescription::Message& message) {
    return {{"name", message.name},
            {"description", message.description},
            {"types", message.arguments},
            {"arguments", ToArray(message.documentedArguments)}};
}

}  // namespace

std::string FormatInfoAsJson(const ObjectDescription& object) {
    const Json json = {{"name", object.name},
                       {"digest", object.digest},
                       {"description", object.description},
                       {"seealso", object.seeAlso},
                       {"version", object.version},
                       {"inlets", ToArray(object.inlets)},
                       {"outlets", ToArray(object.outlets)},
                       {"attributes", ToArray(object.attributes)},
                       {"messages", ToArray(object.messages)}};
    // An object's texts may be in any encoding; what is no UTF-8 becomes U+FFFD.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace velmohost
