// The reference page of a class whose texts are hostile. Stored escaped, as the page's writer asks for, they make a
// page that an XML parser reads, and from which every one of them comes back; stored as they are, they do no harm.
//
// The first character of a line tells what the rest of it is a text of (see `Texts`).

#include <libxml/chvalid.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <map>

#include "ObjectFuzzing.h"
#include "velmomax.h"

namespace {

constexpr const char* kClassName = "hostile~";

/// The object whose page is written.
struct Record {
    t_object ob;
    t_symbol* texts[4];  // of the documentation attributes
    float level;
    t_symbol* word;
};

using Strings = std::vector<std::string>;

/// The texts by their kinds: d digest, D description, s related objects, v version, n notice, h style sheet; l label
/// and L description of an attribute, p its default, P name of a property, e choices; i inlet, o outlet, a argument
/// (three make one), m message, M its description, A argument of it.
struct Texts {
    std::map<char, Strings> all;

    const Strings& Of(char kind) const {
        static const Strings none;
        const auto found = all.find(kind);
        return found != all.end() ? found->second : none;
    }
    std::string First(char kind) const { return Of(kind).empty() ? "" : Of(kind).front(); }
};

/// A copy in which everything that no XML page can hold is a question mark: control characters, and what is no UTF-8.
std::string Clean(const std::string& text) {
    std::string clean;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int length = lead < 0x80 ? 1 : lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        const std::string rest = text.substr(i, static_cast<std::size_t>(length));
        int used = length;
        const int code = xmlGetUTF8Char(reinterpret_cast<const unsigned char*>(rest.c_str()), &used);
        const int shortest = length == 1 ? 0x20 : length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
        const bool isText = length > 0 && used == length && code >= shortest && xmlIsCharQ(static_cast<unsigned>(code));
        clean += isText ? rest : "?";
        i += isText ? rest.size() : 1;
    }
    return clean;
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        const auto* const entity = c == '&'   ? "&amp;"
                                   : c == '<' ? "&lt;"
                                   : c == '>' ? "&gt;"
                                   : c == '"' ? "&quot;"
                                              : nullptr;
        entity != nullptr ? escaped += entity : escaped += c;
    }
    return escaped;
}

/// The class, and one object of it. Its texts are new for every input.
class HostileObject {
public:
    HostileObject() {
        velmomax::InitCommonSymbols();
        c = class_new(kClassName, nullptr, nullptr, static_cast<long>(sizeof(Record)), nullptr, 0);
        Document({});
        class_register(gensym("nobox"), c);
        object = static_cast<t_object*>(object_alloc(c));
    }

    void Document(const Texts& texts) {
        const std::pair<const char*, char> attributes[] = {
            {"classdescription", 'D'}, {"classdigest", 'd'}, {"externalversion", 'v'}, {"classseealso", 's'}};
        for (long i = 0; i < 4; ++i) {
            velmomax::AddDocumentationAttribute(c, attributes[i].first, calcoffset(Record, texts) + i * 8,
                                                texts.First(attributes[i].second).c_str());
        }
        velmomax::AddAttribute(c, "level", "float32", nullptr, calcoffset(Record, level));
        velmomax::AddTextProperty(c, "level", "label", texts.First('l').c_str());
        velmomax::AddAttribute(c, "word", "symbol", nullptr, calcoffset(Record, word));
        velmomax::AddTextProperty(c, "word", "description", texts.First('L').c_str());
        velmomax::AddTextProperty(c, "word", "default", texts.First('p').c_str());
        velmomax::AddProperty(c, "word", "enumvals", "atom", texts.First('e').c_str());
        if (!texts.First('P').empty()) velmomax::AddProperty(c, "word", texts.First('P').c_str(), "long", "1");

        for (void* old : stores) object_free(old);
        stores.clear();
        Store("inlets", texts.Of('i'));
        Store("outlets", texts.Of('o'));
        Store("arguments", texts.Of('a'));
        for (std::size_t i = 0; i < texts.Of('m').size(); ++i) {
            const char* const name = texts.Of('m')[i].c_str();
            velmomax::class_doc_method(c, name, i < texts.Of('M').size() ? texts.Of('M')[i].c_str() : "");
            for (const std::string& argument : texts.Of('A')) {
                velmomax::class_doc_method_arg(c, name, argument.c_str(), argument.c_str());
            }
        }
        void* const methods = object_attr_getobj(class_attr_get(c, gensym("classdescription")), gensym("methods"));
        if (methods != nullptr) stores.push_back(methods);
    }

    std::string WritePage(const Texts& texts) const {
        velmomax::MaxXmlDocumentation page(object);
        page.notice = texts.First('n');
        page.styleSheet = texts.First('h');
        page.GenerateXmlDocumentation();
        return ReadFile(Workplace() / (std::string(kClassName) + ".maxref.xml"));
    }

private:
    void Store(const char* name, const Strings& words) {
        std::vector<t_atom> atoms(words.size());
        for (std::size_t i = 0; i < words.size(); ++i) atom_setsym(&atoms[i], gensym(words[i].c_str()));
        t_atomarray* const array = atomarray_new(static_cast<long>(atoms.size()), atoms.data());
        auto* const owner = static_cast<t_object*>(class_attr_get(c, gensym("classdescription")));
        object_addattr_format(owner, name, gensym("object"), 0, "o", array);
        stores.push_back(array);
    }

    t_class* c;
    t_object* object;
    std::vector<void*> stores;  // what the attribute of the last input holds
};

/// A page that an XML parser has read.
class ParsedPage {
public:
    explicit ParsedPage(const std::string& page)
        : document(xmlReadMemory(page.data(), static_cast<int>(page.size()), nullptr, nullptr,
                                 XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING)),
          context(document != nullptr ? xmlXPathNewContext(document) : nullptr) {}
    ~ParsedPage() {
        xmlXPathFreeContext(context);
        xmlFreeDoc(document);
    }
    ParsedPage(const ParsedPage&) = delete;
    ParsedPage& operator=(const ParsedPage&) = delete;

    bool IsWellFormed() const { return document != nullptr; }

    Strings TextsAt(const char* path) const {
        Strings texts;
        xmlXPathObject* const found = xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(path), context);
        for (int i = 0; i < xmlXPathNodeSetGetLength(found->nodesetval); ++i) {
            xmlChar* const text = xmlNodeGetContent(found->nodesetval->nodeTab[i]);
            texts.emplace_back(reinterpret_cast<const char*>(text));
            xmlFree(text);
        }
        xmlXPathFreeObject(found);
        return texts;
    }

private:
    xmlDoc* const document;
    xmlXPathContext* const context;
};

std::string Indented(const std::string& text, int tabs) {
    return "\n" + std::string(static_cast<std::size_t>(tabs) + 1, '\t') + text + "\n" +
           std::string(static_cast<std::size_t>(tabs), '\t');
}

Strings EachThird(const Strings& words, std::size_t first) {
    Strings chosen;
    for (std::size_t i = 0; i + 2 < words.size(); i += 3) chosen.push_back(words[i + first]);
    return chosen;
}

Strings Distinct(const Strings& words) {
    Strings distinct;
    for (const std::string& word : words) {
        if (std::find(distinct.begin(), distinct.end(), word) == distinct.end()) distinct.push_back(word);
    }
    return distinct;
}

/// The related objects: blanks do not count, commas separate.
Strings Related(const std::string& text) {
    Strings items{""};
    for (const char c : text) {
        if (c == ',') {
            items.emplace_back();
        } else if (c != ' ') {
            items.back() += c;
        }
    }
    return items;
}

std::string WithoutTrailingBlanks(std::string text) { return text.erase(text.find_last_not_of(' ') + 1); }

void CheckPage(const ParsedPage& page, const Texts& texts) {
    const auto require = [&page](const char* path, const Strings& expected) {
        Require(page.TextsAt(path) == expected, path);
    };
    require("/c74object/@name", {kClassName});
    require("/c74object/digest", {Indented(texts.First('d'), 1)});
    require("/c74object/description", {Indented(texts.First('D'), 1)});
    require("//metadata[@name='copyright']", {Indented(texts.First('n'), 1) + "\t"});
    require("//metadata[@name='version']", {Indented(texts.First('v'), 1) + "\t"});
    require("//inletlist/inlet/@name", texts.Of('i'));
    require("//outletlist/outlet/@name", texts.Of('o'));
    require("//objarglist/objarg/@name", EachThird(texts.Of('a'), 0));
    require("//objarglist/objarg/@type", EachThird(texts.Of('a'), 2));
    require("//methodlist/method/@name", Distinct(texts.Of('m')));
    require("//seealsolist/seealso/@name", Related(texts.First('s')));
    require("//attributelist/attribute[@name='level']/digest", {texts.First('l')});
    if (!texts.First('P').empty()) return;  // may be a property that hides the attribute or stands for another
    require("//attributelist/attribute[@name='word']/description", {texts.First('L')});
    require("//attribute[@name='default']/@value", {WithoutTrailingBlanks(texts.First('p'))});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TheHost();
    static HostileObject object;
    FuzzedDataProvider input(data, size);
    Texts asTheyAre, clean, escaped;
    for (const std::string& line : TakeLines(input)) {
        if (line.empty()) continue;
        const std::string text = line.substr(1).c_str();
        asTheyAre.all[line[0]].push_back(text);
        clean.all[line[0]].push_back(Clean(text));
        escaped.all[line[0]].push_back(Escaped(Clean(text)));
    }
    object.Document(escaped);
    const ParsedPage page(object.WritePage(escaped));
    Require(page.IsWellFormed(), "texts that are stored escaped make a well-formed page");
    CheckPage(page, clean);

    object.Document(asTheyAre);
    const std::string raw = object.WritePage(asTheyAre);
    Require(raw.ends_with("\n</c74object>\n\n"), "every page is written to its end");
    TheHost().TakeRows();
    return 0;
}
