#include "commands/InfoText.h"

#include <sstream>

#include "commands/ClassDocumentation.h"
#include "commands/TextLayout.h"

namespace velmohost {
namespace {

constexpr std::size_t kIndent = 2;        // of a section's entries
constexpr std::size_t kNameColumns = 18;  // where the text beside an entry's name begins

/// Further text of the last entry.
std::string FormatMore(const std::string& text) { return LayOutLines("", kNameColumns, text); }

std::string Join(const std::vector<std::string>& items, const char* separator) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : separator) + item;
    return text;
}

std::string FormatClass(const ObjectDescription& object) {
    std::string text = object.name + "\n";
    text += LayOutLines("", kIndent, object.digest);
    text += LayOutLines("", kIndent, object.description);
    if (!object.seeAlso.empty()) text += FormatEntry("see also", Join(object.seeAlso, ", "));
    if (!object.version.empty()) text += FormatEntry("version", object.version);
    return text;
}

std::string FormatConnectors(const char* heading, const std::vector<ObjectDescription::Connector>& connectors) {
    if (connectors.empty()) return "";
    std::string text = std::string("\n") + heading + "\n";
    for (std::size_t index = 0; index < connectors.size(); ++index) {
        const auto& [type, assist] = connectors[index];
        const bool both = !type.empty() && !assist.empty();
        text += FormatEntry(std::to_string(index + 1), type + (both ? ", " : "") + assist);
    }
    return text;
}

std::string TextOf(const std::vector<t_atom>& atoms) {
    return PlainText(static_cast<long>(atoms.size()), atoms.data());
}

/// "1 to 250", "at least 1", "at most 250"; empty without bounds.
std::string FormatRange(const ObjectDescription::Attribute& attribute) {
    const std::string minimum = TextOf(attribute.minimum), maximum = TextOf(attribute.maximum);
    if (minimum.empty()) return maximum.empty() ? "" : "at most " + maximum;
    return maximum.empty() ? "at least " + minimum : minimum + " to " + maximum;
}

std::string FormatAttribute(const ObjectDescription::Attribute& attribute) {
    std::vector<std::string> facts{attribute.type};
    const auto add = [&facts](const std::string& start, const std::string& detail) {
        if (!detail.empty()) facts.push_back(start + detail);
    };
    add("default ", TextOf(attribute.defaultValue));
    add("", FormatRange(attribute));
    add("one of: ", Join(attribute.choices, " "));
    if (!attribute.isSettable) add("", "read only");
    if (!attribute.isReadable) add("", "write only");
    const bool repeats = attribute.label == attribute.description;
    return FormatEntry(attribute.name, Join(facts, ", ")) + FormatMore(attribute.label) +
           FormatMore(repeats ? "" : attribute.description);
}

std::string FormatMessage(const ObjectDescription::Message& message) {
    std::string text = message.arguments.empty()
                           ? FormatEntry(message.name, message.description)
                           : FormatEntry(message.name, message.arguments) + FormatMore(message.description);
    for (const auto& [type, description] : message.documentedArguments) {
        text += FormatMore("- " + type + ": " + description);
    }
    return text;
}

}  // namespace

std::string FormatEntry(const std::string& name, const std::string& text) {
    return LayOutLines(std::string(kIndent, ' ') + name, kNameColumns, text);
}

std::string FormatVocabulary(const ObjectDescription& object) {
    std::string text;
    if (!object.attributes.empty()) text += "\nAttributes\n";
    for (const auto& attribute : object.attributes) text += FormatAttribute(attribute);
    if (!object.messages.empty()) text += "\nMessages\n";
    for (const auto& message : object.messages) text += FormatMessage(message);
    return text;
}

std::string FormatInfo(const ObjectDescription& object) {
    return FormatClass(object) + FormatConnectors("Inlets", object.inlets) +
           FormatConnectors("Outlets", object.outlets) + FormatVocabulary(object);
}

}  // namespace velmohost
