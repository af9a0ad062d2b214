#include "commands/InfoCommand.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <utility>

#include "box/Box.h"
#include "box/Host.h"
#include "commands/ClassDocumentation.h"
#include "commands/TextLayout.h"
#include "commands/WindowOutput.h"
#include "core/Classes.h"
#include "core/Objects.h"
#include "ext_obex.h"
#include "window/MaxWindow.h"

namespace velmohost {
namespace {

constexpr std::size_t kIndent = 2;        // of a section's entries
constexpr std::size_t kNameColumns = 18;  // where the text beside an entry's name begins

void Print(const std::string& text) { std::fputs(text.c_str(), stdout); }

void PrintHeading(const std::string& heading) { Print("\n" + heading + "\n"); }

void PrintEntry(const std::string& name, const std::string& text) {
    Print(LayOut(std::string(kIndent, ' ') + name, kNameColumns, text));
}

/// Further text of the last entry.
void PrintMore(const std::string& text) {
    if (!text.empty()) Print(LayOut("", kNameColumns, text));
}

void ShowClass(const Box& box, t_class* c) {
    Print(box.ClassName() + "\n");
    Print(LayOut("", kIndent, GetClassProperty(c, "classdigest", "label")));
    Print(LayOut("", kIndent, GetClassProperty(c, "classdescription", "label")));
    const std::string seeAlso = GetClassProperty(c, "classseealso", "label");
    const std::string version = GetClassProperty(c, "externalversion", "label");
    if (!seeAlso.empty()) PrintEntry("see also", seeAlso);
    if (!version.empty()) PrintEntry("version", version);
}

std::string DescribeConnector(const std::string& type, const std::string& assist) {
    return type.empty() || assist.empty() ? type + assist : type + ", " + assist;
}

void ShowInletsAndOutlets(const Box& box) {
    PrintHeading("Inlets");
    const std::vector<InletInfo> inlets = GetInlets(box.Object());
    for (unsigned inlet = 0; inlet < inlets.size(); ++inlet) {
        const std::string type = inlet < box.NumSignalInlets() ? "signal" : inlets[inlet].type;
        PrintEntry(std::to_string(inlet + 1), DescribeConnector(type, box.InletAssist(inlet)));
    }
    const std::vector<OutletInfo> outlets = GetOutlets(box.Object());
    if (!outlets.empty()) PrintHeading("Outlets");
    for (unsigned outlet = 0; outlet < outlets.size(); ++outlet) {
        PrintEntry(std::to_string(outlet + 1), DescribeConnector(outlets[outlet].type, box.OutletAssist(outlet)));
    }
}

/// "1 to 250", "at least 1", "at most 250"; empty without bounds.
std::string DescribeRange(t_object* attribute) {
    const auto bound = [attribute](const char* property, const char* hostProperty) {
        const std::string text = GetProperty(attribute, property);
        return text.empty() ? GetProperty(attribute, hostProperty) : text;
    };
    const std::string minimum = bound("minvalue", "min"), maximum = bound("maxvalue", "max");
    if (minimum.empty()) return maximum.empty() ? "" : "at most " + maximum;
    return maximum.empty() ? "at least " + minimum : minimum + " to " + maximum;
}

std::string DescribeAttribute(t_object* object, t_object* attribute, t_symbol* name) {
    const auto* const type = static_cast<t_symbol*>(object_method(attribute, gensym("gettype")));
    std::string text = type != nullptr ? type->s_name : "";
    const auto add = [&text](const std::string& start, const std::string& detail) {
        if (!detail.empty()) text += ", " + start + detail;
    };
    add("default ", GetProperty(attribute, "default"));
    add("", DescribeRange(attribute));
    add("one of: ", GetProperty(attribute, "enumvals"));
    if (object_attr_usercanset(object, name) == 0) add("", "read only");
    return text;
}

bool IsShown(t_object* object, t_object* attribute, t_symbol* name) {
    const std::string invisible = GetProperty(attribute, "invisible");
    const bool hidden = !invisible.empty() && invisible != "0";
    return !hidden && (object_attr_usercanget(object, name) != 0 || object_attr_usercanset(object, name) != 0);
}

void ShowAttributes(t_object* object, t_class* c) {
    bool first = true;
    for (t_object* attribute : GetClassAttributes(c)) {
        auto* const name = static_cast<t_symbol*>(object_method(attribute, gensym("getname")));
        if (name == nullptr || !IsShown(object, attribute, name)) continue;
        if (std::exchange(first, false)) PrintHeading("Attributes");
        PrintEntry(name->s_name, DescribeAttribute(object, attribute, name));
        const std::string description = GetProperty(attribute, "description");
        PrintMore(StripMarkup(description.empty() ? GetProperty(attribute, "label") : description));
    }
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

/// Messages that the host itself adds to every signal object.
std::string DescribeHostMessage(const std::string& message) {
    return message == "enable" ? "0 switches the object's signal processing off, 1 on again." : "";
}

void ShowMessage(t_class* c, const MessageInfo& message) {
    const MessageDocumentation documentation = GetMessageDocumentation(c, message.name);
    std::string description = StripMarkup(documentation.description);
    if (description.empty()) description = DescribeHostMessage(message.name);
    const std::string types = DescribeTypes(message.types);
    PrintEntry(message.name, types.empty() ? description : types);
    if (!types.empty()) PrintMore(description);
    for (const auto& argument : documentation.arguments) {
        PrintMore("- " + argument.type + ": " + StripMarkup(argument.description));
    }
}

void ShowMessages(t_class* c) {
    bool first = true;
    for (const MessageInfo& message : GetMessages(c)) {
        if (!message.IsUsers()) continue;
        if (std::exchange(first, false)) PrintHeading("Messages");
        ShowMessage(c, message);
    }
}

}  // namespace

int ShowInfo(const InfoOptions& options) {
    const WindowOutput window([] {});
    Host host(options.paths);
    const std::unique_ptr<Box> box = Box::Create(host, options.boxText);
    if (!box) return 1;
    t_class* const c = object_class(box->Object());
    ShowClass(*box, c);
    ShowInletsAndOutlets(*box);
    ShowAttributes(box->Object(), c);
    ShowMessages(c);
    return 0;
}

}  // namespace velmohost
