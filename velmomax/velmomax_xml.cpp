#include "platform/VelmoDspEnvironment.h"
#include "platform/VelmoDspPathSyntax.h"

#include "velmomax_xml.h"

#include <ostream>

#include "velmomax_atoms.h"
#include "velmomax_guard.h"
#include "velmomax_path.h"
#include "velmomax_symbols.h"

namespace velmomax {

namespace {

constexpr char authorText[] = "the velmodsp authors";

/// The text with every occurrence of `from` replaced from left to right; what was put in is not searched again.
std::string replace(const std::string& text, const std::string& from, const std::string& to) {
    std::string replaced = text;
    if (from.empty()) return replaced;
    std::size_t position = 0;
    while ((position = replaced.find(from, position)) != std::string::npos) {
        replaced.replace(position, from.length(), to);
        position += to.length();
    }
    return replaced;
}

/// The user's home directory as the environment tells it; empty when it does not.
velmodsp::String homeDirectory() {
    using velmodsp::EnvironmentVariable;
    for (const char* variable : {"home", "HOME"}) {
        if (const auto home = EnvironmentVariable(variable)) return *home;
    }
    for (const char* variable : {"HOMESHARE", "HOMEDRIVE"}) {
        if (const auto drive = EnvironmentVariable(variable))
            return *drive + EnvironmentVariable("HOMEPATH").value_or("");
    }
    return {};
}

// ---- what the class's arrays hold

std::vector<std::string> textsIn(t_object* atomArray) {
    long count = 0;
    t_atom* atoms = nullptr;
    atomarray_getatoms(reinterpret_cast<t_atomarray*>(atomArray), &count, &atoms);
    std::vector<std::string> texts;
    for (long i = 0; i < count; ++i) texts.emplace_back(atom_getsym(&atoms[i])->s_name);
    return texts;
}

/// What the pairs of texts kept for a message mean: its description and a placeholder, then description and type of
/// each argument.
MaxXmlDocumentation::MethodDescription methodFrom(const std::string& name, const std::vector<std::string>& texts) {
    MaxXmlDocumentation::MethodDescription method;
    method.name = name;
    if (!texts.empty()) method.description = texts[0];
    const std::size_t pairs = texts.size() / 2;
    method.argumentDescriptions.resize(pairs);
    method.argumentTypes.resize(pairs);
    for (std::size_t k = 1; k < pairs; ++k) {
        method.argumentDescriptions[k] = texts[2 * k];
        method.argumentTypes[k] = texts[2 * k + 1];
    }
    return method;
}

// ---- pieces of the page

void printLine(std::ostream& stream, int tabs, const std::string& text) {
    stream << std::string(static_cast<std::size_t>(tabs), '\t') << text << '\n';
}

void printEmptyLine(std::ostream& stream) { stream << '\n'; }

/// A line that opens an element, its text, and the line that closes it.
void printElement(std::ostream& stream, int tabs, const std::string& element, const std::string& text) {
    printLine(stream, tabs, "<" + element + ">");
    printLine(stream, tabs + 1, text);
    printLine(stream, tabs, "</" + element + ">");
}

void printMetadataEntry(std::ostream& stream, const std::string& name, const std::string& text) {
    printLine(stream, 2, "<metadata name=\"" + name + "\">");
    printLine(stream, 2, text);
    printLine(stream, 2, "</metadata>");
}

/// The digest of a part of the object, which is always empty, and its description.
void printPartDescription(std::ostream& stream, const std::string& description) {
    printLine(stream, 3, "<digest>");
    printLine(stream, 3, "</digest>");
    printElement(stream, 3, "description", description);
}

/// One list of the page: its heading, the element that `printItems` fills, and the empty line after it.
template <typename PrintItems>
void printList(std::ostream& stream, const std::string& heading, const std::string& element, PrintItems printItems) {
    printLine(stream, 1, "<!--" + heading + "-->");
    printLine(stream, 1, "<" + element + ">");
    printItems();
    printLine(stream, 1, "</" + element + ">");
    printEmptyLine(stream);
}

/// Inlets or outlets, `element` being "inlet" or "outlet".
void printConnections(std::ostream& stream, const std::string& element, const std::vector<std::string>& descriptions) {
    for (std::size_t i = 0; i < descriptions.size(); ++i) {
        const std::string id = std::to_string(i);
        printLine(stream, 2, "<" + element + " id=\"" + id + "\" name=\"" + descriptions[i] + "\">");
        printPartDescription(stream, descriptions[i]);
        printLine(stream, 2, "</" + element + ">");
    }
}

void printMethod(std::ostream& stream, const MaxXmlDocumentation::MethodDescription& method) {
    printLine(stream, 2, "<method name=\"" + method.name + "\">");
    printLine(stream, 3, "<arglist>");
    for (std::size_t k = 1; k < method.argumentDescriptions.size(); ++k) {
        printLine(stream, 4,
                  "<arg name=\"" + method.argumentDescriptions[k] + "\" type=\"" + method.argumentTypes[k] +
                      "\" optional=\"0\" id=\"0\" />");
    }
    printLine(stream, 3, "</arglist>");
    printPartDescription(stream, method.description);
    printLine(stream, 2, "</method>");
}

}  // namespace

void MaxXmlDocumentation::GenerateXmlDocumentation() const {
    const std::string path = velmodsp::WithForwardSlashes(homeDirectory()).Str() + "/" + className() + ".maxref.xml";
    NewTextFile page(path);
    if (page.IsOpen()) printPage(page.Stream());
    if (page.Finish()) {
        object_post(object, "documentation generated in %s", path.c_str());
    } else {
        object_error(object, "could not create %s", path.c_str());  // the disk is full, for instance
    }
}

void MaxXmlDocumentation::printPage(std::ostream& page) const {
    printXmlHeader(page);
    printLine(page, 0, "<c74object name=\"" + className() + "\">");
    printDigestAndDescription(page);
    printMetadata(page);
    printInlets(page);
    printOutlets(page);
    printArguments(page);
    printAttributes(page);
    printMethods(page);
    printSeeAlso(page);
    printMenuItemList(page);
    printExample(page);
    printEmptyLine(page);
    printLine(page, 0, "</c74object>");
    printEmptyLine(page);
}

std::string MaxXmlDocumentation::GetObjectVersion() const {
    void* version = object_attr_get(object, gensym("externalversion"));
    if (version) {
        const AttributeValue label(version, CommonSymbol(SlotOf("label")));
        ThrowIfOutOfMemory(label.Error());
        if (label.Count() > 0 && label[0].a_type == A_SYM) return atom_getsym(&label[0])->s_name;
    }
    return "unknown version";
}

void MaxXmlDocumentation::printXmlHeader(std::ostream& stream) const {
    printLine(stream, 0, "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>");
    printEmptyLine(stream);
    printLine(stream, 0, "<?xml-stylesheet href=\"" + styleSheet + "\" type=\"text/xsl\"?>");
    printEmptyLine(stream);
}

void MaxXmlDocumentation::printDigestAndDescription(std::ostream& stream) const {
    const std::string name = className();
    printElement(stream, 1, "digest", labelOf("classdigest"));
    printElement(stream, 1, "description", replace(labelOf("classdescription"), name, "<o>" + name + "</o>"));
    printEmptyLine(stream);
}

void MaxXmlDocumentation::printMetadata(std::ostream& stream) const {
    printList(stream, "METADATA", "metadatalist", [&] {
        printMetadataEntry(stream, "author", authorText);
        printMetadataEntry(stream, "copyright", notice);
        printMetadataEntry(stream, "version", GetObjectVersion());
    });
}

void MaxXmlDocumentation::printInlets(std::ostream& stream) const {
    std::vector<std::string> descriptions;
    GetObjectListOfInletsDescription(descriptions);
    printList(stream, "INLETS", "inletlist", [&] { printConnections(stream, "inlet", descriptions); });
}

void MaxXmlDocumentation::printOutlets(std::ostream& stream) const {
    std::vector<std::string> descriptions;
    GetObjectListOfOutletsDescription(descriptions);
    printList(stream, "OUTLETS", "outletlist", [&] { printConnections(stream, "outlet", descriptions); });
}

void MaxXmlDocumentation::printArguments(std::ostream& stream) const {
    std::vector<std::string> names, descriptions, types;
    GetObjectListOfArguments(names, descriptions, types);
    printList(stream, "ARGUMENTS", "objarglist", [&] {
        for (std::size_t i = 0; i < names.size(); ++i) {
            printLine(stream, 2, "<objarg name=\"" + names[i] + "\" type=\"" + types[i] + "\" optional=\"1\"> ");
            printPartDescription(stream, descriptions[i]);
            printLine(stream, 2, "</objarg>");
        }
    });
}

void MaxXmlDocumentation::printAttributes(std::ostream& stream) const {
    std::vector<t_symbol*> names;
    MaxAttribute::GetListOfAttributesName(object, names, sortingType);
    MaxAttribute::RemoveInvisibleAndOpaqueAttributes(object, names);
    printList(stream, "ATTRIBUTES", "attributelist", [&] {
        for (t_symbol* name : names) {
            MaxAttribute(object, name).Print(stream);
            printEmptyLine(stream);
        }
    });
}

void MaxXmlDocumentation::printMethods(std::ostream& stream) const {
    std::vector<MethodDescription> methods;
    getObjectMethodsDescription(methods);
    printList(stream, "MESSAGES", "methodlist", [&] {
        for (const MethodDescription& method : methods) printMethod(stream, method);
    });
}

void MaxXmlDocumentation::printSeeAlso(std::ostream& stream) const {
    std::vector<std::string> items;
    GetObjectSeeAlsoList(items);
    printList(stream, "SEEALSO", "seealsolist", [&] {
        for (const std::string& item : items) printLine(stream, 2, "<seealso name=\"" + item + "\" />");
    });
}

void MaxXmlDocumentation::printMenuItemList(std::ostream& stream) const {
    printList(stream, "MENU ITEMS", "menuitemlist", [] {});
}

void MaxXmlDocumentation::printExample(std::ostream& stream) const {
    printList(stream, "EXAMPLE", "examplelist", [] {});
}

void MaxXmlDocumentation::GetObjectListOfInletsDescription(std::vector<std::string>& descriptions) const {
    descriptions = textsIn(storeOf("GetObjectListOfInletsDescription", "inlets"));
}

void MaxXmlDocumentation::GetObjectListOfOutletsDescription(std::vector<std::string>& descriptions) const {
    descriptions = textsIn(storeOf("GetObjectListOfOutletsDescription", "outlets"));
}

void MaxXmlDocumentation::GetObjectListOfArguments(std::vector<std::string>& names,
                                                   std::vector<std::string>& descriptions,
                                                   std::vector<std::string>& types) const {
    names.clear();
    descriptions.clear();
    types.clear();
    const std::vector<std::string> texts = textsIn(storeOf("GetObjectListOfArguments", "arguments"));
    for (std::size_t i = 0; i + 2 < texts.size(); i += 3) {
        names.push_back(texts[i]);
        descriptions.push_back(texts[i + 1]);
        types.push_back(texts[i + 2]);
    }
}

void MaxXmlDocumentation::GetObjectSeeAlsoList(std::vector<std::string>& items) const {
    items.clear();
    const std::string text = replace(labelOf("classseealso"), " ", "");
    std::size_t start = 0;
    for (std::size_t comma = text.find(','); comma != std::string::npos; comma = text.find(',', start)) {
        items.push_back(text.substr(start, comma - start));
        start = comma + 1;
    }
    items.push_back(text.substr(start));
}

void MaxXmlDocumentation::getObjectMethodsDescription(std::vector<MethodDescription>& methods) const {
    methods.clear();
    auto* store = reinterpret_cast<t_dictionary*>(storeOf("getObjectMethodsDescription", "methods"));
    if (!store) return;
    const DictionaryKeys keys(store, dictionary_getkeys_ordered);
    ThrowIfOutOfMemory(keys.Error());
    for (t_symbol* key : keys) {
        t_object* texts = nullptr;
        const bool isDocumented = dictionary_getobject(store, key, &texts) == MAX_ERR_NONE && texts;
        methods.push_back(isDocumented ? methodFrom(key->s_name, textsIn(texts)) : MethodDescription());
    }
}

std::string MaxXmlDocumentation::className() const {
    const t_symbol* name = object_classname(object);
    return name ? name->s_name : "";
}

std::string MaxXmlDocumentation::labelOf(const char* attribute) const {
    return MaxAttribute(object, gensym(attribute)).GetLabel("");
}

/// What the class keeps under `name` on its attribute "classdescription"; null when there is none.
t_object* MaxXmlDocumentation::storeOf(const char* collector, const char* name) const {
    void* attribute = class_attr_get(object_class(object), gensym("classdescription"));
    if (!attribute) {
        post("MaxXmlDocumentation::%s no %s class attribute", collector, "classdescription");
        return nullptr;
    }
    const AttributeValue store(attribute, gensym(name));
    ThrowIfOutOfMemory(store.Error());
    return store.Count() > 0 ? static_cast<t_object*>(atom_getobj(&store[0])) : nullptr;
}

void GenerateXmlDocumentation(t_object* x, const char* styleSheet, const MaxAttribute::AttrSortingType& sorting,
                              const char* notice) noexcept {
    Guarded(x, [&] {
        MaxXmlDocumentation page(x);
        page.styleSheet = styleSheet;
        page.sortingType = sorting;
        page.notice = notice;
        page.GenerateXmlDocumentation();
    });
}

}  // namespace velmomax
