#include "ApiObjects.h"

namespace velmotest {
namespace {

struct Holder {
    t_object ob;
    char charValue;
    char guard;
    long longValue;
    t_atom_long atomLong;
    t_int32 int32Value;
    t_int32 int32Guard;
    t_filepath filepath;
    float float32;
    float float32Guard;
    double float64;
    t_symbol* symbol;
    t_atom atom;
    t_object* object;
    long count;
    double array[4];
    double arrayGuard;
};

class Attributes : public testing::Test {
protected:
    Attributes() {
        CLASS_ATTR_CHAR(c, "char", 0, Holder, charValue);
        CLASS_ATTR_LONG(c, "long", 0, Holder, longValue);
        CLASS_ATTR_ATOM_LONG(c, "atom_long", 0, Holder, atomLong);
        CLASS_ATTR_INT32(c, "int32", 0, Holder, int32Value);
        CLASS_ATTR_FILEPATH(c, "filepath", 0, Holder, filepath);
        CLASS_ATTR_FLOAT(c, "float32", 0, Holder, float32);
        CLASS_ATTR_DOUBLE(c, "float64", 0, Holder, float64);
        CLASS_ATTR_SYM(c, "symbol", 0, Holder, symbol);
        CLASS_ATTR_ATOM(c, "atom", 0, Holder, atom);
        CLASS_ATTR_OBJ(c, "object", 0, Holder, object);
        CLASS_ATTR_DOUBLE_VARSIZE(c, "array", 0, Holder, array, count, 4);
    }

    const TestClass<Holder> c{"holder"};
    Owned<Holder> x = c.New();
};

TEST_F(Attributes, OfEveryTypeLieInTheObjectsRecord) {
    const struct {
        const char *name, *set, *got;
    } rows[] = {{"char", "-5", "-5"},
                {"char", "300", "127"},
                {"long", "3.9", "3"},
                {"long", "\"12\"", "12"},
                {"atom_long", "9000000000000000000", "9000000000000000000"},
                {"int32", "-4000000000", "-2147483648"},
                {"filepath", "-7", "-7"},
                {"float32", "0.1", "0.1"},
                {"float64", "3", "3."},
                {"symbol", "\"two words\"", "\"two words\""},
                {"atom", "3", "3"},
                {"atom", "foo", "foo"},
                {"array", "1 2.5", "1. 2.5"},
                {"array", "1 2 3 4 5 6", "1. 2. 3. 4."}};
    x->guard = 'g';
    x->int32Guard = 77;
    x->float32Guard = 77.0f;
    x->arrayGuard = 77.0;
    for (const auto& row : rows) {
        EXPECT_EQ(SetFromText(x.get(), row.name, row.set), MAX_ERR_NONE) << row.name << " " << row.set;
        EXPECT_EQ(ValueText(x.get(), row.name), row.got) << row.name << " " << row.set;
    }
    EXPECT_EQ(x->longValue, 12);
    EXPECT_EQ(x->float32, 0.1f);
    EXPECT_EQ(x->symbol, gensym("two words"));
    EXPECT_EQ(x->count, 4);
    EXPECT_TRUE(x->guard == 'g' && x->int32Guard == 77 && x->float32Guard == 77.0f && x->arrayGuard == 77.0);

    object_attr_setobj(x.get(), gensym("object"), &x->ob);
    EXPECT_EQ(x->object, &x->ob);
    EXPECT_EQ(object_attr_getobj(x.get(), gensym("object")), &x->ob);
}

TEST_F(Attributes, AreReadIntoTheCallersMemoryWhenItIsGiven) {
    t_atom own[2];
    t_atom* av = own;
    long ac = 2;
    ASSERT_EQ(object_attr_getvalueof(x.get(), gensym("symbol"), &ac, &av), MAX_ERR_NONE);
    EXPECT_EQ(own[0].a_w.w_sym, gensym(""));  // never set: plug-ins read the member, so it must not be null
    EXPECT_EQ(ValueText(x.get(), "array"), "");
    SetFromText(x.get(), "array", "1 2 3");
    ac = 2;
    EXPECT_EQ(object_attr_getvalueof(x.get(), gensym("array"), &ac, &av), MAX_ERR_NONE);
    EXPECT_EQ(av, own);
    EXPECT_EQ(AtomsToText(ac, av), "1. 2.");
}

TEST_F(Attributes, ThatAreMissingAnswerNeutrally) {
    t_symbol* const name = gensym("nonsense");
    long ac = 0;
    t_atom* av = nullptr;
    EXPECT_NE(object_attr_getvalueof(x.get(), name, &ac, &av), MAX_ERR_NONE);
    EXPECT_EQ(av, nullptr);
    EXPECT_NE(object_attr_setlong(x.get(), name, 1), MAX_ERR_NONE);
    EXPECT_EQ(object_attr_get(x.get(), name), nullptr);
    EXPECT_EQ(object_attr_getsym(x.get(), name), gensym(""));
}

std::string setterSaw;

t_max_err SetLoudly(Holder* x, void* attribute, long ac, t_atom* av) {
    const auto* const name = static_cast<t_symbol*>(object_method(attribute, gensym("getname")));
    setterSaw = std::string(name->s_name) + " " + AtomsToText(ac, av);
    if (ac > 0) x->longValue = static_cast<long>(atom_getlong(av));
    return MAX_ERR_NONE;
}

TEST_F(Attributes, PassTheFilterBeforeAnySetterWhichWorksOnACopy) {
    attr_addfilter_clip(class_attr_get(c, gensym("long")), 1.0, 250.0, 1, 1);
    attr_addfilterset_clip(class_attr_get(c, gensym("float64")), 0.0, -0.5, 0, 1);
    CLASS_ATTR_ACCESSORS(c, "long", nullptr, SetLoudly);
    std::vector<t_atom> atoms = ParseAtoms("300 -4 7 0.25 1000.5 abc");
    const std::string before = AtomsToText(6, atoms.data());
    EXPECT_EQ(object_attr_setvalueof(x.get(), gensym("long"), 6, atoms.data()), MAX_ERR_NONE);
    EXPECT_EQ(setterSaw, "long 250 1 7 1. 250. abc");
    EXPECT_EQ(AtomsToText(6, atoms.data()), before);

    // One bound only, and into the attribute only.
    SetFromText(x.get(), "float64", "2");
    EXPECT_EQ(x->float64, -0.5);
    SetFromText(x.get(), "float64", "-100");
    EXPECT_EQ(x->float64, -100.0);
    x->float64 = 5.0;
    EXPECT_EQ(ValueText(x.get(), "float64"), "5.");
    // Both ways.
    x->longValue = 9999;
    EXPECT_EQ(ValueText(x.get(), "long"), "250");
    // A second filter replaces the first.
    attr_addfilter_clip(class_attr_get(c, gensym("long")), 0.0, 20000.0, 1, 1);
    EXPECT_EQ(ValueText(x.get(), "long"), "9999");

    setterSaw.clear();
    CLASS_ATTR_ACCESSORS(c, "long", NULL, NULL);
    SetFromText(x.get(), "long", "5");
    EXPECT_EQ(x->longValue, 5);
    EXPECT_EQ(setterSaw, "") << "the default accessors are back";
}

TEST_F(Attributes, AnswerMessagesAboutThemselves) {
    void* const attribute = object_attr_get(x.get(), gensym("float32"));
    object_method(attribute, gensym("setflags"), ATTR_SET_OPAQUE_USER);
    EXPECT_EQ(reinterpret_cast<t_ptr_int>(object_method(attribute, gensym("getflags"))), 0x200);
    EXPECT_EQ(object_method(attribute, gensym("usercanset")), nullptr);
    EXPECT_NE(object_method(attribute, gensym("usercanget")), nullptr);
    object_method(attribute, gensym("setname"), gensym("gain"));
    EXPECT_EQ(object_attr_get(x.get(), gensym("gain")), attribute);
}

TEST_F(Attributes, HaveAttributesOfADeclaredType) {
    const struct {
        const char *property, *type, *text, *got;
    } rows[] = {{"default", "float32", "0", "0."},
                {"default", "atom", "0", "0"},
                {"enumvals", "atom", "lastvalue givenvalue", "lastvalue givenvalue"},
                {"label", "symbol", "one two", "one two"},
                {"label", "symbol", "\"one two\"", "\"one two\""}};
    void* const attribute = class_attr_get(c, gensym("long"));
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.property) + " " + row.text);
        EXPECT_EQ(class_attr_addattr_parse(c, "long", row.property, gensym(row.type), 0, row.text), MAX_ERR_NONE);
        EXPECT_EQ(ValueText(attribute, row.property), row.got);
        EXPECT_EQ(object_method(object_attr_get(attribute, gensym(row.property)), gensym("gettype")), gensym(row.type));
    }
    t_symbol* const label = gensym("@odd, \"label\" with blanks");
    EXPECT_EQ(class_attr_addattr_format(c, "long", "label", gensym("symbol"), 0, "s", label), MAX_ERR_NONE);
    EXPECT_EQ(object_attr_getsym(attribute, gensym("label")), label);
    long count = 0;
    t_symbol** names = nullptr;
    ASSERT_EQ(object_attr_getnames(attribute, &count, &names), MAX_ERR_NONE);
    EXPECT_EQ(count, 3);  // same name again replaces
    sysmem_freeptr(names);

    CapturedWindow window;
    EXPECT_NE(class_attr_addattr_parse(c, "nonsense", "label", gensym("symbol"), 0, "x"), MAX_ERR_NONE);
    EXPECT_THAT(window.Take(), ElementsAre("[error] holder: the class has no attribute \"nonsense\""));
}

TEST_F(Attributes, HoldObjectsWithoutOwningThem) {
    const Owned<t_dictionary> d(dictionary_new());
    t_object* const attribute = static_cast<t_object*>(class_attr_get(c, gensym("symbol")));
    EXPECT_EQ(object_addattr_format(attribute, "methods", gensym("object"), 0, "o", d.get()), MAX_ERR_NONE);
    EXPECT_EQ(object_attr_getobj(attribute, gensym("methods")), &d->d_obj);
    object_deleteattr(attribute, gensym("methods"));
    EXPECT_EQ(object_attr_getobj(attribute, gensym("methods")), nullptr);
    EXPECT_EQ(object_isnogood(&d->d_obj), 0);
}

TEST_F(Attributes, AreSetAndReadByMessages) {
    CapturedWindow window;
    OutletLog left;
    object_obex_store(x.get(), gensym("dumpout"), static_cast<t_object*>(outlet_new(x.get(), nullptr)));
    outlet_new(x.get(), "signal");
    EXPECT_TRUE(Send(x.get(), "array 1 2 3"));
    EXPECT_TRUE(Send(x.get(), "getarray"));
    EXPECT_EQ(left.text, "1 array 1. 2. 3.; ");
    EXPECT_THAT(window.Take(), IsEmpty());

    const auto setFlags = [this](t_ptr_int flags) {
        object_method(object_attr_get(x.get(), gensym("array")), gensym("setflags"), flags);
    };
    left.text.clear();
    setFlags(ATTR_GET_OPAQUE_USER | ATTR_SET_OPAQUE_USER);
    EXPECT_FALSE(Send(x.get(), "array 4"));
    EXPECT_FALSE(Send(x.get(), "getarray"));
    EXPECT_THAT(window.Take(), ElementsAre("[error] holder: attribute \"array\" can not be set",
                                           "[error] holder: attribute \"array\" can not be read"));
    EXPECT_EQ(left.text, "");
    EXPECT_EQ(ValueText(x.get(), "array"), "1. 2. 3.");  // code still reads it
    setFlags(ATTR_GET_OPAQUE | ATTR_SET_OPAQUE);
    EXPECT_EQ(ValueText(x.get(), "array"), "error");
    EXPECT_NE(SetFromText(x.get(), "array", "4"), MAX_ERR_NONE);
}

struct Client {
    t_object ob;
    std::string* log;
};

void LogNotice(Client* x, t_symbol*, t_symbol* message, void*, void* data) {
    const auto* const name =
        data != nullptr ? static_cast<t_symbol*>(object_method(data, gensym("getname"))) : gensym("");
    *x->log += std::string(message->s_name) + " " + name->s_name + "; ";
}

TEST_F(Attributes, TellAttachedClientsOfChanges) {
    const TestClass<Client> clientClass("client");
    class_addmethod(clientClass, AsMethod(LogNotice), "notify", A_CANT, 0);
    std::string log;
    auto client = clientClass.New();
    client->log = &log;
    object_attach_byptr(client.get(), x.get());
    SetFromText(x.get(), "long", "1");
    SetFromText(x.get(), "nonsense", "1");
    object_attr_touch(&x->ob, gensym("symbol"));
    EXPECT_EQ(log, "attr_modified long; attr_modified symbol; ");
    object_detach_byptr(client.get(), x.get());
    SetFromText(x.get(), "long", "2");
    EXPECT_EQ(log, "attr_modified long; attr_modified symbol; ");

    // Whichever of the two is freed first.
    object_attach_byptr(client.get(), x.get());
    auto other = clientClass.New();
    other->log = &log;
    object_attach_byptr(other.get(), x.get());
    other.reset();
    log.clear();
    x.reset();
    EXPECT_EQ(log, "free ; ");
}

TEST_F(Attributes, ComeFromRunsOfArguments) {
    CapturedWindow window;
    std::vector<t_atom> atoms = ParseAtoms("1 foo @long 7 @array 1 2 @nonsense 3 @symbol s");
    const short ac = static_cast<short>(atoms.size());
    EXPECT_EQ(attr_args_offset(ac, atoms.data()), 2);
    EXPECT_EQ(attr_args_offset(2, atoms.data()), 2);
    attr_args_process(x.get(), ac, atoms.data());
    EXPECT_EQ(ValueText(x.get(), "long"), "7");
    EXPECT_EQ(ValueText(x.get(), "array"), "1. 2.");
    EXPECT_EQ(ValueText(x.get(), "symbol"), "s");
    EXPECT_THAT(window.Take(), ElementsAre("[error] holder: can not set the attribute \"nonsense\""));
}

}  // namespace
}  // namespace velmotest
