#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "Keeper.h"
#include "core/AtomText.h"
#include "core/Dialogs.h"
#include "core/Objects.h"
#include "ext_dictobj.h"

#include "support/FileBytes.h"
#include "support/TempFolder.h"

namespace velmomax {
namespace {

/// What leaves dump outlets while it lives, and what the dictionaries that they name hold at that moment.
class DumpedDictionaries {
public:
    DumpedDictionaries() {
        velmohost::SetOutletListener(
            [this](t_object*, t_outlet*, unsigned, t_symbol* selector, long ac, const t_atom* av) {
                EXPECT_EQ(selector, gensym("dictionary"));
                ASSERT_EQ(ac, 1);
                name = atom_getsym(av);
                t_dictionary* dict = dictobj_findregistered_retain(name);
                text = Text(dict);
                if (receive) receive(name);
                dictobj_release(dict);
            });
    }
    ~DumpedDictionaries() { velmohost::SetOutletListener({}); }

    static std::string Text(t_dictionary* dict) {
        long count = 0;
        t_symbol** keys = nullptr;
        dictionary_getkeys_ordered(dict, &count, &keys);
        std::string text;
        for (long i = 0; i < count; ++i) {
            long ac = 0;
            t_atom* av = nullptr;
            dictionary_getatoms(dict, keys[i], &ac, &av);
            text += std::string(keys[i]->s_name) + ": " + velmohost::AtomsToText(ac, av) + "; ";
        }
        dictionary_freekeys(dict, count, keys);
        return text;
    }

    std::function<void(t_symbol*)> receive;  // what the object at the other end does
    t_symbol* name = nullptr;
    std::string text;
};

TEST(Dictionary, CarriesTheStateToAnotherObject) {
    Keeper other, keeper;
    keeper.Change();
    DumpedDictionaries dumped;
    dumped.receive = [&](t_symbol* name) { readdict(other.x, name); };
    EXPECT_EQ(keeper.Send("dumpdict"), Rows{});
    EXPECT_EQ(dumped.text, "count: 3; level: 0.5; list: 1. -2.5; name: \"two words\"; ");
    EXPECT_EQ(other.State(), keeper.State());
    t_dictionary* const left = dictobj_findregistered_retain(dumped.name);
    EXPECT_EQ(dictionary_getentrycount(left), 0) << "emptied once it is delivered";
    dictobj_release(left);

    t_symbol* const firstName = dumped.name;
    EXPECT_EQ(keeper.Send("dumpdict name nosuch level"), Rows{"[error] keeper: no attribute nosuch"});
    EXPECT_EQ(dumped.text, "name: \"two words\"; level: 0.5; ");
    EXPECT_NE(dumped.name, firstName);
}

TEST(Dictionary, IsNotSentWhenSomethingIsWrong) {
    Keeper keeper;
    DumpedDictionaries dumped;
    EXPECT_EQ(keeper.Send("dumpdict level 3 name"), Rows{"[error] keeper: invalid message : dumpdict level 3 name "});
    dump_dictionary(keeper.x, nullptr);
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: couldnt create dictionary"});
    Keeper bare(false);
    EXPECT_EQ(bare.Send("dumpdict"), Rows{"[error] keeper: no dump outlet"});
    EXPECT_EQ(dumped.name, nullptr);
}

TEST(Dictionary, TakesWhatCanBeRead) {
    Keeper keeper;
    t_dictionary* const dict = dictionary_new();
    OddAnswer object{MAX_ERR_NONE, std::vector<t_atom>(1), 0};
    atom_setobj(&object.atoms[0], keeper.x);
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
    std::vector<t_atom> list = velmohost::ParseAtoms("3. 4."), one = velmohost::ParseAtoms("9");
    t_symbol* name = gensym("state of a keeper");
    t_dictionary* const dict = dictobj_register(dictionary_new(), &name);
    dictionary_appenddictionary(dict, gensym("level"), &dictionary_new()->d_obj);
    dictionary_appendlong(dict, gensym("nosuch"), 1);
    dictionary_appendatoms(dict, gensym("list"), 2, list.data());
    dictionary_appendatomarray(dict, gensym("count"), &atomarray_new(1, one.data())->ob);
    dictionary_appendstring(dict, gensym("name"), "as a string object");
    dictionary_appendatomarray(dict, gensym("odd"), &atomarray_new(0, nullptr)->ob);
    EXPECT_EQ(keeper.Send("dictionary \"state of a keeper\""), Rows{"[error] keeper: entry level is not atom ? "});
    EXPECT_EQ(keeper.State(), "9 0. 3. 4. \"as a string object\"");
    object_free(dict);

    EXPECT_EQ(keeper.Send("dictionary nowhere"), Rows{"[error] keeper: unable to reference dictionary named nowhere"});
    EXPECT_FALSE(parse_dictionary(keeper.x, nullptr));
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: couldnt get dict key : MAX_ERR_INVALID_PTR"});
}

TEST(Json, HoldsTheStateOneEntryALine) {
    const TempFolder folder;
    const std::string path = folder / "state.json";
    WriteBytes(path, std::string(1000, '?'));  // an older and longer file
    Keeper keeper;
    keeper.Change();
    EXPECT_EQ(keeper.Send("exportdict \"" + path + "\""), Rows{});
    EXPECT_EQ(ReadBytes(path),
              "{\n"
              "    \"count\" : 3, \n"
              "    \"level\" : 0.500000, \n"
              "    \"list\" : [ 1.000000, -2.500000 ], \n"
              "    \"name\" : \"two words\"\n"
              "}\n");
    EXPECT_EQ(nlohmann::json::parse(ReadBytes(path)),
              (nlohmann::json{{"count", 3}, {"level", 0.5}, {"list", {1.0, -2.5}}, {"name", "two words"}}));
}

TEST(Json, ReadsBackInAnotherParserWhateverTheValues) {
    const std::string nasty = "q\" b\\ \n\t\r\x01\x1f\x7f \xC3\xA9 </x>";
    std::vector<t_atom> atoms = velmohost::ParseAtoms("-9223372036854775807 0.1 1e300 one");
    atom_setsym(&atoms[3], gensym(nasty.c_str()));
    std::string json;
    atomarray2json(4, atoms.data(), json);
    EXPECT_EQ(nlohmann::json::parse(json), (nlohmann::json{-9223372036854775807, 0.1, nullptr, nasty}));
    EXPECT_TRUE(json.starts_with("[ -9223372036854775807, 0.100000, null, \"q\\\" b\\\\ \\n")) << json;
    EXPECT_TRUE(json.ends_with(" \xC3\xA9 </x>\"]")) << "no blank after a symbol at the end: " << json;
    const std::pair<const char*, const char*> values[] = {
        {"1", "1"}, {"2.", "2.000000"}, {"a", "\"a\""}, {"1 2", "[ 1, 2 ]"}, {"a 2.5", "[ \"a\", 2.500000 ]"},
        {"", ""}};
    for (const auto& [text, value] : values) {
        std::vector<t_atom> plain = velmohost::ParseAtoms(text);
        atomarray2json(static_cast<long>(plain.size()), plain.data(), json);
        EXPECT_EQ(json, value);
    }
}

/// A process whose numbers have decimal commas, as a host may set it.
struct DecimalCommas : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Json, IsWrittenWithoutTheUsersLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new DecimalCommas));
    std::vector<t_atom> atoms = velmohost::ParseAtoms("123456 1234.5");
    std::string json, text;
    atomarray2json(2, atoms.data(), json);
    atomarray2string(2, atoms.data(), text);
    std::locale::global(before);
    EXPECT_EQ(json, "[ 123456, 1234.500000 ]");
    EXPECT_EQ(text, "123456 1234.5 ");
}

TEST(Json, ReportsEntriesThatAreNoAtomsAndFilesThatCannotBeWritten) {
    const TempFolder folder;
    Keeper keeper;
    t_dictionary* const dict = dictionary_new();
    dictionary_appenddictionary(dict, gensym("inner"), &dictionary_new()->d_obj);
    dictionary_appendatomarray(dict, gensym("empty"), &atomarray_new(0, nullptr)->ob);
    EXPECT_TRUE(export_dictionary_json(keeper.x, dict, folder / "a.json"));
    EXPECT_EQ(ReadBytes(folder / "a.json"), "{\n    \"inner\" : , \n    \"empty\" : \n}\n");
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: entry inner is not atom ? "});

    EXPECT_FALSE(export_dictionary_json(keeper.x, nullptr, folder / "b.json"));
    EXPECT_FALSE(export_dictionary_json(keeper.x, dict, folder / "no/such/folder.json"));
    EXPECT_EQ(keeper.window.Take(), Rows{});
    auto* const noDictionary = reinterpret_cast<t_dictionary*>(keeper.x);
    EXPECT_FALSE(export_dictionary_json(keeper.x, noDictionary, folder / "b.json"));
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: couldnt get dict key : MAX_ERR_INVALID_PTR"});
    dictionary_clear(dict);
    EXPECT_FALSE(export_dictionary_json(keeper.x, dict, "/dev/full"));
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: couldnt write /dev/full"});
    object_free(dict);
}

TEST(Json, GoesWhereTheSaveDialogSays) {
    const TempFolder folder;
    const std::string path = folder / "\xC3\xA9tat.json";
    Keeper keeper;
    EXPECT_EQ(keeper.Send("exportdict"), Rows{}) << "cancelled";
    velmohost::SetSaveAsAnswer(path);
    EXPECT_EQ(keeper.Send("exportdict 3"), Rows{});
    velmohost::SetSaveAsAnswer("");
    EXPECT_EQ(nlohmann::json::parse(ReadBytes(path)).size(), 4u);
}

TEST(Path, BecomesThatOfTheFileSystem) {
    const std::pair<const char*, const char*> paths[] = {
        {"Data:/x/y.json", "/Volumes/Data/x/y.json"},
        {"/a:b/c.json", "/a:b/c.json"},
        {"Data:/x:y", "/Volumes/Data/x:y"},
        {"a.json", "/Volumes/a.jsona.json"},
        {"", "/Volumes/"},
        // Mac OS Roman: A umlaut, u umlaut, no-break space, Omega, euro, the maker's logo, caron
        {"/\x80\x9F\xCA\xBD\xDB\xF0\xFF", "/\xC3\x84\xC3\xBC\xC2\xA0\xCE\xA9\xE2\x82\xAC\xEF\xA3\xBF\xCB\x87"},
        {"Mus\x8E"
         "e:/\xA5",
         "/Volumes/Mus\xC3\xA9"
         "e/\xE2\x80\xA2"},
    };
    for (const auto& [path, translated] : paths) EXPECT_EQ(TranslateAbsolutePath(path), translated);
}

}  // namespace
}  // namespace velmomax
