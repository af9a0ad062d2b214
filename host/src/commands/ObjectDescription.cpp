#include "commands/ObjectDescription.h"

#include <map>
#include <sstream>

#include "box/Box.h"
#include "commands/ClassDocumentation.h"
#include "commands/TextLayout.h"
#include "core/AtomText.h"
#include "core/Classes.h"
#include "core/Objects.h"
#include "ext_obex.h"

namespace velmohost {
namespace {

std::vector<std::string> SplitList(const std::string& text) {
    std::vector<std::string> items;
    std::istringstream stream(text);
    stream.exceptions(std::ios::badbit);  // or a lack of memory would pass for the end
    for (std::string item; std::getline(stream >> std::ws, item, ',');) items.push_back(item);
    return items;
}

std::vector<ObjectDescription::Connector> DescribeInlets(const Box& box) {
    std::vector<ObjectDescription::Connector> inlets;
    for (const InletInfo& inlet : GetInlets(box.Object())) {
        const auto index = static_cast<unsigned>(inlets.size());
        inlets.push_back({index < box.NumSignalInlets() ? "signal" : inlet.type, box.InletAssist(index)});
    }
    return inlets;
}

std::vector<ObjectDescription::Connector> DescribeOutlets(const Box& box) {
    std::vector<ObjectDescription::Connector> outlets;
    for (const OutletInfo& outlet : GetOutlets(box.Object())) {
        outlets.push_back({outlet.type, box.OutletAssist(static_cast<unsigned>(outlets.size()))});
    }
    return outlets;
}

/// A property that the suite's objects have, or else the host's own of the same meaning.
std::vector<t_atom> GetBound(t_object* attribute, const char* property, const char* hostProperty) {
    std::vector<t_atom> bound = GetPropertyAtoms(attribute, property);
    return bound.empty() ? GetPropertyAtoms(attribute, hostProperty) : bound;
}

std::vector<std::string> GetChoices(t_object* attribute) {
    std::vector<std::string> choices;
    for (const t_atom& choice : GetPropertyAtoms(attribute, "enumvals")) choices.push_back(PlainText(1, &choice));
    return choices;
}

bool IsShown(t_object* attribute, const ObjectDescription::Attribute& description) {
    const std::string invisible = GetProperty(attribute, "invisible");
    const bool hidden = !invisible.empty() && invisible != "0";
    return !hidden && (description.isReadable || description.isSettable);
}

ObjectDescription::Attribute DescribeAttribute(t_object* object, t_object* attribute, t_symbol* name) {
    const auto* const type = static_cast<t_symbol*>(object_method(attribute, gensym("gettype")));
    ObjectDescription::Attribute description;
    description.name = name->s_name;
    description.type = type != nullptr ? type->s_name : "";
    description.label = StripMarkup(GetProperty(attribute, "label"));
    description.description = StripMarkup(GetProperty(attribute, "description"));
    description.defaultValue = GetPropertyAtoms(attribute, "default");
    description.minimum = GetBound(attribute, "minvalue", "min");
    description.maximum = GetBound(attribute, "maxvalue", "max");
    description.choices = GetChoices(attribute);
    description.isReadable = object_attr_usercanget(object, name) != 0;
    description.isSettable = object_attr_usercanset(object, name) != 0;
    return description;
}

std::vector<ObjectDescription::Attribute> DescribeAttributes(t_object* object) {
    std::vector<ObjectDescription::Attribute> attributes;
    for (t_object* attribute : GetClassAttributes(object_class(object))) {
        auto* const name = static_cast<t_symbol*>(object_method(attribute, gensym("getname")));
        if (name == nullptr) continue;
        ObjectDescription::Attribute description = DescribeAttribute(object, attribute, name);
        if (IsShown(attribute, description)) attributes.push_back(std::move(description));
    }
    return attributes;
}

/// An argument as a type list gives it; those that may be left out are in brackets.
std::string DescribeType(short type) {
    switch (type) {
        case A_LONG:
            return "int";
        case A_FLOAT:
            return "float";
        case A_SYM:
            return "symbol";
        case A_DEFLONG:
            return "[int]";
        case A_DEFFLOAT:
            return "[float]";
        case A_DEFSYM:
            return "[symbol]";
        case A_GIMME:
        case A_GIMMEBACK:
            return "[any...]";
        default:
            return "";
    }
}

std::string DescribeTypes(const std::vector<short>& types) {
    std::string text;
    for (const short type : types) {
        const std::string word = DescribeType(type);
        if (!word.empty()) text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// Messages that the host itself adds to every signal object, or whose meaning it fixes for every object.
std::string DescribeHostMessage(const std::string& message) {
    static const std::map<std::string, std::string> descriptions = {
        {"enable", "0 switches the object's signal processing off, 1 on again."},
        {"dictionary", "takes in the dictionary that is registered under the name."},
        {"preset", "puts the current state into the preset that the host is storing."},
    };
    const auto found = descriptions.find(message);
    return found != descriptions.end() ? found->second : "";
}

ObjectDescription::Message DescribeMessage(t_class* c, const MessageInfo& message) {
    const MessageDocumentation documentation = GetMessageDocumentation(c, message.name);
    std::string description = StripMarkup(documentation.description);
    if (description.empty()) description = DescribeHostMessage(message.name);
    ObjectDescription::Message result{message.name, description, DescribeTypes(message.types), {}};
    for (const auto& argument : documentation.arguments) {
        result.documentedArguments.push_back({argument.type, StripMarkup(argument.description)});
    }
    return result;
}

std::vector<ObjectDescription::Message> DescribeMessages(t_class* c) {
    std::vector<ObjectDescription::Message> messages;
    for (const MessageInfo& message : GetMessages(c)) {
        if (message.IsUsers()) messages.push_back(DescribeMessage(c, message));
    }
    return messages;
}

}  // namespace

ObjectDescription Describe(const Box& box) {
    t_class* const c = object_class(box.Object());
    const auto text = [c](const char* attribute) { return StripMarkup(GetClassProperty(c, attribute, "label")); };
    ObjectDescription description;
    description.name = box.ClassName();
    description.digest = text("classdigest");
    description.description = text("classdescription");
    description.version = text("externalversion");
    description.seeAlso = SplitList(text("classseealso"));
    description.inlets = DescribeInlets(box);
    description.outlets = DescribeOutlets(box);
    description.attributes = DescribeAttributes(box.Object());
    description.messages = DescribeMessages(c);
    return description;
}

}  // namespace velmohost
