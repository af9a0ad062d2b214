#include <nlohmann/json.hpp>

#include "Keeper.h"
#include "core/Dialogs.h"
#include "ext_dictobj.h"

#include "support/FileBytes.h"
#include "support/TempFolder.h"

namespace velmomax {
namespace {

/// Keeps the message that leaves a dump outlet, and has `receiver` read its dictionary while it is there.
class Dump {
public:
    explicit Dump(Keeper& receiver) {
        velmohost::SetOutletListener([&](t_object*, t_outlet*, unsigned, t_symbol* s, long ac, const t_atom* av) {
            message = std::string(s->s_name) + " " + velmohost::AtomsToText(ac, av);
            receiver.Send(message);
        });
    }
    ~Dump() { velmohost::SetOutletListener({}); }

    std::string message;
};

TEST(Dictionary, CarriesTheStateOrAPartOfItToAnotherObject) {
    Keeper receiver, keeper;
    keeper.Change();
    Dump dump(receiver);
    EXPECT_EQ(keeper.Send("dumpdict level nosuch list"), Rows{"[error] keeper: no attribute nosuch"});
    EXPECT_EQ(receiver.State(), "0 0.5 1. -2.5 \"\"");
    const std::string first = dump.message;
    EXPECT_EQ(keeper.Send("dumpdict"), Rows{});
    EXPECT_EQ(receiver.State(), "3 0.5 1. -2.5 \"two words\"");
    EXPECT_NE(dump.message, first);
    receiver.x->count = 9;
    EXPECT_EQ(receiver.Send(dump.message), Rows{});
    EXPECT_EQ(receiver.x->count, 9) << "emptied once it is delivered";
}

TEST(Dictionary, IsNotSentWhenSomethingIsWrong) {
    Keeper keeper;
    const Dump dump(keeper);
    EXPECT_EQ(keeper.Send("dumpdict level 3 name"), Rows{"[error] keeper: invalid message : dumpdict level 3 name "});
    dump_dictionary(keeper.x, nullptr);
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: couldnt create dictionary"});
    Keeper bare(false);
    EXPECT_EQ(bare.Send("dumpdict"), Rows{"[error] keeper: no dump outlet"});
    EXPECT_EQ(dump.message, "");
}

TEST(Dictionary, TakesWhatCanBeRead) {
    Keeper keeper;
    t_dictionary* const dict = dictionary_new();
    OddAnswer object{MAX_ERR_NONE, std::vector<t_atom>(1), 0};
    Keeper::odd = {object, {MAX_ERR_INVALID_PTR, {}, 0}, {MAX_ERR_NONE, {}, 0}};
    for (int i = 0; i < 3; ++i) AppendAttributeToDictionary(keeper.x, dict, gensym("odd"));
    AppendAttributeToDictionary(keeper.x, nullptr, gensym("nosuch"));
    EXPECT_EQ(
        keeper.window.Take(),
        (Rows{"[warning] keeper: unknown atom type in AppendAttributeToDictionary",
              "[bug] keeper: AppendAttributeToDictionary : MAX_ERR_INVALID_PTR in object_attr_getvalueof (odd)"}));
    EXPECT_EQ(dictionary_getentrycount(dict), 0);
    object_free(dict);
}

TEST(Dictionary, SetsTheAttributesThatItHasValuesFor) {
    Keeper keeper;
    std::vector<t_atom> list = velmohost::ParseAtoms("3. 4.");
    t_symbol* name = gensym("state");
    t_dictionary* const dict = dictobj_register(dictionary_new(), &name);
    dictionary_appenddictionary(dict, gensym("level"), &dictionary_new()->d_obj);
    dictionary_appendlong(dict, gensym("nosuch"), 1);
    dictionary_appendatomarray(dict, gensym("count"), &atomarray_new(0, nullptr)->ob);
    dictionary_appendatoms(dict, gensym("list"), 2, list.data());
    dictionary_appendstring(dict, gensym("name"), "as a string object");
    EXPECT_EQ(keeper.Send("dictionary state"), Rows{"[error] keeper: entry level is not atom ? "});
    EXPECT_EQ(keeper.State(), "0 0. 3. 4. \"as a string object\"");
    object_free(dict);

    EXPECT_EQ(keeper.Send("dictionary state"), Rows{"[error] keeper: unable to reference dictionary named state"});
    EXPECT_FALSE(parse_dictionary(keeper.x, nullptr));
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: couldnt get dict key : MAX_ERR_INVALID_PTR"});
}

/// A process whose numbers have decimal commas, as a host may set it.
struct DecimalCommas : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(Json, HoldsTheStateOneEntryALineInAnyLocale) {
    const TempFolder folder;
    const std::string path = folder / "\xC3\xA9tat.json";
    WriteBytes(path, std::string(1000, '?'));  // an older and longer file
    Keeper keeper;
    keeper.Change();
    velmohost::SetSaveAsAnswer(path);
    const std::locale before = std::locale::global(std::locale(std::locale(), new DecimalCommas));
    EXPECT_EQ(keeper.Send("exportdict 3"), Rows{});
    std::locale::global(before);
    velmohost::SetSaveAsAnswer("");
    EXPECT_EQ(ReadText(path),
              "{\n"
              "    \"count\" : 3, \n"
              "    \"level\" : 0.500000, \n"
              "    \"list\" : [ 1.000000, -2.500000 ], \n"
              "    \"name\" : \"two words\"\n"
              "}\n");
}

TEST(Json, ReadsBackInAnotherParserWhateverTheValues) {
    const std::string nasty = "q\" b\\ \n\t\r\x01\x1f\x7f \xC3\xA9 </x>";
    std::vector<t_atom> atoms = velmohost::ParseAtoms("-9223372036854775807 0.1 1e300 one");
    atom_setsym(&atoms[3], gensym(nasty.c_str()));
    std::string json;
    atomarray2json(4, atoms.data(), json);
    EXPECT_EQ(nlohmann::json::parse(json), (nlohmann::json{-9223372036854775807, 0.1, nullptr, nasty}));
    EXPECT_TRUE(json.ends_with("\x7f \xC3\xA9 </x>\"]")) << "no blank after a symbol at the end: " << json;
    atomarray2json(0, atoms.data(), json);
    EXPECT_EQ(json, "");
}

TEST(Json, ReportsEntriesThatAreNoAtoms) {
    const TempFolder folder;
    Keeper keeper;
    t_dictionary* const dict = dictionary_new();
    dictionary_appenddictionary(dict, gensym("inner"), &dictionary_new()->d_obj);
    dictionary_appendatomarray(dict, gensym("empty"), &atomarray_new(0, nullptr)->ob);
    EXPECT_TRUE(export_dictionary_json(keeper.x, dict, folder / "a.json"));
    EXPECT_EQ(ReadText(folder / "a.json"), "{\n    \"inner\" : , \n    \"empty\" : \n}\n");
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: entry inner is not atom ? "});

    EXPECT_FALSE(export_dictionary_json(keeper.x, reinterpret_cast<t_dictionary*>(keeper.x), folder / "b.json"));
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: couldnt get dict key : MAX_ERR_INVALID_PTR"});
    object_free(dict);
}

TEST(Path, BecomesThatOfTheFileSystem) {
    const std::pair<const char*, const char*> paths[] = {
        {"Data:/x/y.json", "/Volumes/Data/x/y.json"},
        {"/a:b/c.json", "/a:b/c.json"},
        {"a.json", "/Volumes/a.jsona.json"},
        // Mac OS Roman: A umlaut, u umlaut, no-break space, Omega, euro, the maker's logo, caron
        {"/\x80\x9F\xCA\xBD\xDB\xF0\xFF", "/\xC3\x84\xC3\xBC\xC2\xA0\xCE\xA9\xE2\x82\xAC\xEF\xA3\xBF\xCB\x87"},
    };
    for (const auto& [path, translated] : paths) EXPECT_EQ(TranslateAbsolutePath(path), translated);
}

}  // namespace
}  // namespace velmomax
