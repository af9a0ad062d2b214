#include "core/Creation.h"

#include "ApiObjects.h"

namespace velmotest {
namespace {

struct Thing {
    t_object ob;
    long channels;
    t_symbol* mode;
    double gains[2];
    t_symbol* hidden;
};

t_class* thingClass = nullptr;
std::string constructorSaw;
t_object *patcherSeen = nullptr, *boxSeen = nullptr;

void* NewThing(t_symbol* name, long ac, t_atom* av) {
    t_dictionary* const arguments = object_dictionaryarg(ac, av);
    constructorSaw = std::string(name->s_name) + ": " + (arguments != nullptr ? DictionaryText(arguments) : "");
    patcherSeen = gensym("#P")->s_thing;
    boxSeen = gensym("#B")->s_thing;
    void* const x = object_alloc(thingClass);
    attr_dictionary_check(x, arguments);
    attr_dictionary_process(x, arguments);
    return x;
}

Owned<t_object> CreateOf(t_class* c, const char* arguments, t_object* box = nullptr, t_object* patcher = nullptr) {
    std::vector<t_atom> atoms = ParseAtoms(arguments);
    const auto ac = static_cast<long>(atoms.size());
    return Owned<t_object>(velmohost::CreateInstance(c, c->c_sym, ac, atoms.data(), box, patcher));
}

class Creation : public testing::Test {
protected:
    void SetUp() override {
        t_class* const c = class_new("thing~", AsMethod(NewThing), nullptr, sizeof(Thing), nullptr, A_GIMME, 0);
        c->c_flags |= CLASS_FLAG_NEWDICTIONARY;
        CLASS_ATTR_LONG(c, "channels", 0, Thing, channels);
        CLASS_ATTR_DEFAULT(c, "channels", 0, "1");
        CLASS_ATTR_FILTER_CLIP(c, "channels", 1, 250);
        CLASS_ATTR_SYM(c, "mode", 0, Thing, mode);
        CLASS_ATTR_DEFAULT(c, "mode", 0, "lastvalue");
        CLASS_ATTR_DOUBLE_ARRAY(c, "gains", 0, Thing, gains, 2);
        CLASS_ATTR_DEFAULT(c, "gains", 0, "0.5 2");
        CLASS_ATTR_SYM(c, "hidden", ATTR_GET_OPAQUE_USER | ATTR_SET_OPAQUE_USER, Thing, hidden);
        ASSERT_EQ(class_register(CLASS_BOX, c), MAX_ERR_NONE);
        thingClass = c;
    }

    void TearDown() override { class_free(thingClass); }

    Owned<t_object> Create(const char* arguments) { return CreateOf(thingClass, arguments); }

    CapturedWindow window;
};

TEST_F(Creation, HandsOverEveryDefaultUnlessASettingOverridesIt) {
    auto x = Create("");
    EXPECT_EQ(constructorSaw, "thing~: channels 1; mode lastvalue; gains 0.5 2.; ");
    EXPECT_EQ(ValueText(x.get(), "gains"), "0.5 2.");
    x = Create("@mode givenvalue @channels 4 @gains 1 1 @channels 300");
    EXPECT_EQ(constructorSaw, "thing~: channels 300; mode givenvalue; gains 1 1; ");
    EXPECT_EQ(ValueText(x.get(), "channels"), "250");
    EXPECT_THAT(window.Take(), IsEmpty());
}

TEST_F(Creation, SaysWhatItCanNotUse) {
    const auto x = Create("3 foo @nonsense 1 @hidden x @channels");
    ASSERT_NE(x, nullptr);
    EXPECT_EQ(constructorSaw, "thing~: channels 1; mode lastvalue; gains 0.5 2.; nonsense 1; ");
    EXPECT_THAT(window.Take(), ElementsAre("[warning] thing~: extra arguments are ignored: 3 foo",
                                           "[error] thing~: attribute \"hidden\" can not be set",
                                           "[warning] thing~: no value for attribute \"channels\"",
                                           "[error] thing~: \"nonsense\" is not an attribute"));
}

TEST_F(Creation, LeadsToBoxAndPatcherThroughSymbolsThenThroughTheObex) {
    const Owned<t_dictionary> box(dictionary_new()), patcher(dictionary_new());
    const auto x = CreateOf(thingClass, "", &box->d_obj, &patcher->d_obj);
    EXPECT_EQ(boxSeen, &box->d_obj);
    EXPECT_EQ(patcherSeen, &patcher->d_obj);
    EXPECT_EQ(gensym("#B")->s_thing, nullptr);
    EXPECT_EQ(gensym("#P")->s_thing, nullptr);
    t_object* found = nullptr;
    EXPECT_EQ(object_obex_lookup(x.get(), gensym("#B"), &found), MAX_ERR_NONE);
    EXPECT_EQ(found, &box->d_obj);
    EXPECT_EQ(object_obex_lookup(x.get(), gensym("#P"), &found), MAX_ERR_NONE);
    EXPECT_EQ(found, &patcher->d_obj);
}

TEST_F(Creation, RegistersAClassOnce) {
    EXPECT_EQ(class_register(CLASS_BOX, thingClass), MAX_ERR_DUPLICATE);
    const TestClass<Thing> other("thing~");
    EXPECT_EQ(class_register(CLASS_BOX, other), MAX_ERR_DUPLICATE);
    EXPECT_EQ(class_findbyname(CLASS_BOX, gensym("thing~")), thingClass);
    EXPECT_EQ(class_findbyname(CLASS_NOBOX, gensym("thing~")), nullptr);
    EXPECT_EQ(class_register(CLASS_NOBOX, other), MAX_ERR_NONE);
    class_alias(thingClass, gensym("t~"));
    const Owned<void> x(newinstance(gensym("t~"), 0, nullptr));
    EXPECT_EQ(object_classname(x.get()), gensym("thing~"));
    EXPECT_EQ(constructorSaw.substr(0, 4), "t~: ");
}

TEST(ConstructorTypes, AreServedAsDeclared) {
    static t_class* c = nullptr;
    static std::string saw;
    struct Typed {
        t_object ob;
        long level;
    };
    const auto construct = +[](t_atom_long a, double b, t_symbol* s) -> void* {
        saw = std::to_string(a) + " " + std::to_string(b) + " " + s->s_name;
        return a >= 0 ? object_alloc(c) : nullptr;
    };
    c = class_new("typed", AsMethod(construct), nullptr, sizeof(Typed), nullptr, A_LONG, A_DEFFLOAT, A_DEFSYM, 0);
    CLASS_ATTR_LONG(c, "level", 0, Typed, level);
    CapturedWindow window;
    const auto create = [](const char* text) { return CreateOf(c, text); };
    EXPECT_EQ(ValueText(create("3 0.5 x @level 9").get(), "level"), "9");
    EXPECT_EQ(saw, "3 0.500000 x");
    create("2.9");
    EXPECT_EQ(saw, "2 0.000000 ");
    EXPECT_THAT(window.Take(), IsEmpty());

    EXPECT_EQ(create(""), nullptr);
    EXPECT_THAT(window.Take(), ElementsAre("[error] typed: missing arguments for the object",
                                           "[error] typed: the object could not be created"));
    EXPECT_EQ(create("-1"), nullptr);
    EXPECT_THAT(window.Take(), ElementsAre("[error] typed: the object could not be created"));
    EXPECT_NE(create("1 2 s 4"), nullptr);
    EXPECT_THAT(window.Take(), ElementsAre("[warning] typed: extra arguments for the object"));
    class_free(c);
}

std::vector<std::string> lifeLog;

TEST(ObjectLife, FreesWhatTheObexHoldsAfterTheFreeFunction) {
    const auto freeOwner = +[](t_object* x) {
        t_object* found = nullptr;
        object_obex_lookup(x, gensym("owned"), &found);
        lifeLog.push_back(found != nullptr ? "owner, part still there" : "owner");
    };
    const TestClass<t_object> ownerClass("owner", AsMethod(freeOwner));
    const TestClass<t_object> partClass("part", AsMethod(+[](t_object*) { lifeLog.push_back("part"); }));
    lifeLog.clear();
    auto owner = ownerClass.New();
    const auto borrowed = partClass.New();
    object_obex_store(owner.get(), gensym("owned"), static_cast<t_object*>(object_alloc(partClass)));
    object_obex_storeflags(owner.get(), gensym("borrowed"), borrowed.get(), OBJ_FLAG_REF);
    t_object* found = nullptr;
    EXPECT_NE(object_obex_lookup(owner.get(), gensym("nonsense"), &found), MAX_ERR_NONE);
    EXPECT_EQ(found, nullptr);
    owner.reset();
    EXPECT_THAT(lifeLog, ElementsAre("owner, part still there", "part"));
    EXPECT_EQ(object_isnogood(borrowed.get()), 0);
    EXPECT_EQ(object_free(nullptr), MAX_ERR_NONE);
    t_object stranger{};
    EXPECT_NE(object_free(&stranger), MAX_ERR_NONE);
}

TEST(ObjectLife, ReadsTheClassFlagsWhereverTheyWereWritten) {
    const TestClass<t_object> c("flagged");
    // Plug-ins compiled elsewhere write this word: byte 64 of the class.
    *reinterpret_cast<long*>(reinterpret_cast<char*>(static_cast<t_class*>(c)) + 64) |= CLASS_FLAG_UIOBJECT;
    EXPECT_TRUE(class_is_ui(c));
}

TEST(Outlets, StandFromRightToLeftInTheOrderOfTheirCreation) {
    const TestClass<t_object> c("sender");
    const auto x = c.New();
    OutletLog left;
    void* const right = outlet_new(x.get(), nullptr);
    void* const middle = floatout(x.get());
    void* const leftmost = outlet_new(x.get(), "signal");
    const auto outlets = velmohost::GetOutlets(x.get());
    ASSERT_EQ(outlets.size(), 3u);
    EXPECT_EQ(outlets[0].type, "signal");
    EXPECT_EQ(outlets[2].type, "");
    EXPECT_EQ(x->o_outlet, leftmost);
    EXPECT_EQ(outlet_nth(x.get(), 1), middle);

    std::vector<t_atom> atoms = ParseAtoms("1 b");
    outlet_bang(leftmost);
    outlet_int(right, 5);
    outlet_float(middle, 0.5);
    outlet_list(right, nullptr, 2, atoms.data());
    EXPECT_NE(outlet_anything(right, gensym("foo"), 1, atoms.data()), nullptr);
    EXPECT_EQ(outlet_anything(nullptr, gensym("foo"), 0, nullptr), nullptr);
    EXPECT_EQ(left.text, "0 bang; 2 int 5; 1 float 0.5; 2 list 1 b; 2 foo 1; ");
    outlet_delete(leftmost);
    EXPECT_EQ(x->o_outlet, middle);
}

}  // namespace
}  // namespace velmotest
