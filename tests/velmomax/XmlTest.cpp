#include <sstream>

#include "Keeper.h"

#include "support/FileBytes.h"
#include "support/ScopedVariable.h"
#include "support/TempFolder.h"

namespace velmomax {
namespace {

/// An object of a new class that tells of itself only what a test adds.
struct Documented {
    explicit Documented(bool hasDescription = true) {
        static int count = 0;
        name = "documented" + std::to_string(++count);
        InitCommonSymbols();
        c = class_new(name.c_str(), nullptr, nullptr, static_cast<long>(sizeof(keeper_t)), nullptr, 0);
        if (hasDescription) Add("classdescription", name + " is one, and " + name + name + " are two");
        class_register(gensym("nobox"), c);  // and stays, as classes do
        x = static_cast<t_object*>(object_alloc(c));
    }
    ~Documented() { object_free(x); }

    void Add(const char* attribute, const std::string& text) {
        AddDocumentationAttribute(c, attribute, calcoffset(keeper_t, texts), text.c_str());
    }

    /// Keeps the words under a name on the attribute "classdescription".
    void AddArray(const char* key, const char* words) {
        std::vector<t_atom> atoms = velmohost::ParseAtoms(words);
        auto* const attribute = static_cast<t_object*>(class_attr_get(c, gensym("classdescription")));
        object_addattr_format(attribute, key, gensym("object"), 0, "o",
                              atomarray_new(static_cast<long>(atoms.size()), atoms.data()));
    }

    velmotest::CapturedWindow window;
    std::string name;
    t_class* c;
    t_object* x;
};

std::string Digest(const std::string& description) {
    return "\t\t\t<digest>\n\t\t\t</digest>\n\t\t\t<description>\n\t\t\t\t" + description + "\n\t\t\t</description>\n";
}

TEST(Xml, ListsInletsOutletsArgumentsAndMessagesInTheOrderOfDocumenting) {
    Documented documented;
    documented.AddArray("inlets", "\"left & <m> first </m>\" right");
    documented.AddArray("outlets", "out");
    documented.AddArray("arguments", "size \"how many\" int title text symbol incomplete last");
    class_doc_method(documented.c, "set", "sets <br/> it");
    class_doc_method_arg(documented.c, "set", "where", "symbol");
    class_doc_method_arg(documented.c, "set", "what", "float");
    class_doc_method_arg(documented.c, "undocumented", "lost", "symbol");
    void* const attribute = class_attr_get(documented.c, gensym("classdescription"));
    dictionary_appendlong(reinterpret_cast<t_dictionary*>(object_attr_getobj(attribute, gensym("methods"))),
                          gensym("undescribed"), 1);
    const MaxXmlDocumentation page(documented.x);
    std::ostringstream stream;
    page.printInlets(stream);
    page.printOutlets(stream);
    page.printArguments(stream);
    page.printMethods(stream);
    EXPECT_EQ(stream.str(),
              "\t<!--INLETS-->\n\t<inletlist>\n\t\t<inlet id=\"0\" name=\"left & <m> first </m>\">\n" +
                  Digest("left & <m> first </m>") + "\t\t</inlet>\n\t\t<inlet id=\"1\" name=\"right\">\n" +
                  Digest("right") + "\t\t</inlet>\n\t</inletlist>\n\n" +
                  "\t<!--OUTLETS-->\n\t<outletlist>\n\t\t<outlet id=\"0\" name=\"out\">\n" + Digest("out") +
                  "\t\t</outlet>\n\t</outletlist>\n\n" +
                  "\t<!--ARGUMENTS-->\n\t<objarglist>\n\t\t<objarg name=\"size\" type=\"int\" optional=\"1\"> \n" +
                  Digest("how many") + "\t\t</objarg>\n\t\t<objarg name=\"title\" type=\"symbol\" optional=\"1\"> \n" +
                  Digest("text") + "\t\t</objarg>\n\t</objarglist>\n\n" +
                  "\t<!--MESSAGES-->\n\t<methodlist>\n\t\t<method name=\"set\">\n\t\t\t<arglist>\n" +
                  "\t\t\t\t<arg name=\"where\" type=\"symbol\" optional=\"0\" id=\"0\" />\n" +
                  "\t\t\t\t<arg name=\"what\" type=\"float\" optional=\"0\" id=\"0\" />\n\t\t\t</arglist>\n" +
                  Digest("sets <br/> it") +
                  "\t\t</method>\n\t\t<method name=\"\">\n\t\t\t<arglist>\n\t\t\t</arglist>\n" + Digest("") +
                  "\t\t</method>\n\t</methodlist>\n\n");
}

TEST(Xml, WrapsTheObjectsNameInItsDescriptionAlone) {
    Documented documented;
    const std::string name = documented.name, wrapped = "<o>" + name + "</o>";
    documented.Add("classdigest", name + " & more");
    std::ostringstream stream;
    MaxXmlDocumentation(documented.x).printDigestAndDescription(stream);
    EXPECT_EQ(stream.str(), "\t<digest>\n\t\t" + name + " & more\n\t</digest>\n\t<description>\n\t\t" + wrapped +
                                " is one, and " + wrapped + wrapped + " are two\n\t</description>\n\n");
}

TEST(Xml, SplitsTheListOfRelatedObjectsAtItsCommas) {
    Documented documented;
    documented.Add("classseealso", "a, b,,c");
    Rows items{"left over"};
    MaxXmlDocumentation(documented.x).GetObjectSeeAlsoList(items);
    EXPECT_EQ(items, (Rows{"a", "b", "", "c"}));
}

TEST(Xml, TellsOfClassesThatHoldNoDocumentation) {
    Documented documented(false);
    const TempFolder home;
    const ScopedVariable lower("home", home.Path().string());
    GenerateXmlDocumentation(documented.x, "style.xsl", MaxAttribute::ByOrder, " notice");
    const std::string path = home / documented.name + ".maxref.xml";
    const std::string start = "[post] MaxXmlDocumentation::", end = " no classdescription class attribute";
    EXPECT_EQ(documented.window.Take(),
              (Rows{start + "GetObjectListOfInletsDescription" + end, start + "GetObjectListOfOutletsDescription" + end,
                    start + "GetObjectListOfArguments" + end, start + "getObjectMethodsDescription" + end,
                    "[post] " + documented.name + ": documentation generated in " + path}));
    const std::string page = ReadText(path);
    for (const char* line : {"<?xml-stylesheet href=\"style.xsl\" type=\"text/xsl\"?>\n",
                             "\t\t<metadata name=\"copyright\">\n\t\t notice\n", "\t\tunknown version\n"}) {
        EXPECT_NE(page.find(line), page.npos) << line;
    }
}

TEST(Xml, GoesIntoTheHomeDirectoryOfTheEnvironment) {
    const TempFolder folder;
    using Value = std::optional<std::string>;
    const Value none, no = folder / "no", one = folder / "one", two = folder / "two";
    for (const char* name : {"one", "two", "two/rest"}) std::filesystem::create_directory(folder.Path() / name);
    struct {
        Value lower, upper, share, drive, path;
        bool isWritten;
        std::string expected;
    } const cases[] = {
        {one, two, no, no, "/rest", true, *one}, {none, one, no, no, "/rest", true, *one},
        {none, none, one, no, none, true, *one}, {none, none, none, two, "/rest", true, *two + "/rest"},
        {no, one, none, none, none, false, *no},
    };
    Keeper keeper;
    WriteBytes(*one + "/keeper.maxref.xml", std::string(100000, '?'));  // an older and longer page
    for (const auto& row : cases) {
#ifdef _WIN32  // upper and lower case are one variable there
        const ScopedVariable home("HOME", row.lower ? row.lower : row.upper);
#else
        const ScopedVariable lower("home", row.lower), upper("HOME", row.upper);
#endif
        const ScopedVariable share("HOMESHARE", row.share), drive("HOMEDRIVE", row.drive), path("HOMEPATH", row.path);
        const std::string file = row.expected + "/keeper.maxref.xml";
        EXPECT_EQ(keeper.Send("generatexml"), Rows{(row.isWritten ? "[post] keeper: documentation generated in "
                                                                  : "[error] keeper: could not create ") +
                                                   file});
        EXPECT_TRUE(!row.isWritten || ReadText(file).ends_with("\n\n</c74object>\n\n"));
    }
}

}  // namespace
}  // namespace velmomax
