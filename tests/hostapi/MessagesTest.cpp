#include "core/Messages.h"

#include "ApiObjects.h"
#include "core/Classes.h"
#include "platform/VelmoDspFloatingPointControl.h"

namespace velmotest {
namespace {

std::string lastCall;

std::string Show(t_atom_long value) { return std::to_string(value); }
std::string Show(t_symbol* value) { return value->s_name; }
std::string Show(double value) {
    t_atom atom;
    atom_setfloat(&atom, value);
    return AtomsToText(1, &atom);
}

template <class... Args>
void Take(void*, Args... args) {
    lastCall = ((Show(args) + ";") + ... + "");
}

void TakeAtoms(t_object*, t_symbol* s, long ac, t_atom* av) {
    lastCall = std::string(s->s_name) + ": " + AtomsToText(ac, av);
}

t_max_err GiveBack(t_object*, t_symbol*, long ac, t_atom*, t_atom* result) {
    atom_setlong(result, 10 * ac);
    return MAX_ERR_NONE;
}

void* Untyped(t_object*, t_ptr_int a, char* text, t_ptr_int b) {
    text[0] = 'X';
    lastCall = std::to_string(a) + " " + std::to_string(b);
    return gensym("answer");
}

class Messages : public testing::Test {
protected:
    Messages() {
        using Int = t_atom_long;
        using Sym = t_symbol*;
        class_addmethod(c, AsMethod(Take<>), "bang", 0);
        class_addmethod(c, AsMethod(Take<double>), "float", A_FLOAT, 0);
        class_addmethod(c, AsMethod(Take<Int>), "count", A_LONG, 0);
        class_addmethod(c, AsMethod(Take<Sym, Sym>), "pair", A_SYM, A_SYM, 0);
        // Integers and doubles in turn, more of each than one kind of call would put in the right registers.
        class_addmethod(c, AsMethod(Take<double, Int, double, Sym, double, Int, double>), "mix", A_FLOAT, A_LONG,
                        A_FLOAT, A_SYM, A_FLOAT, A_LONG, A_FLOAT, 0);
        class_addmethod(c, AsMethod(Take<Int, double, Sym>), "defaults", A_DEFLONG, A_DEFFLOAT, A_DEFSYM, 0);
        class_addmethod(c, AsMethod(TakeAtoms), "gimme", A_GIMME, 0);
        class_addmethod(c, AsMethod(GiveBack), "giveback", A_GIMMEBACK, 0);
        class_addmethod(c, AsMethod(Untyped), "untyped", A_CANT, 0);
        lastCall = "none";
    }

    const TestClass<t_object> c{"talker"};
    const Owned<t_object> x = c.New();
    CapturedWindow window;
};

TEST_F(Messages, ArriveConvertedByTheirTypes) {
    const std::pair<const char*, const char*> rows[] = {
        {"bang", ""},
        {"float 2.5", "2.5;"},
        {"float 2", "2.;"},
        {"int 3", "3.;"},  // only "float" exists
        {"list 4", "4.;"},
        {"count 7.9", "7;"},
        {"count -9000000000000000000", "-9000000000000000000;"},
        {"pair a \"b c\"", "a;b c;"},
        {"mix 0.5 1 1.5 s 2.5 2 3", "0.5;1;1.5;s;2.5;2;3.;"},
        {"defaults", "0;0.;;"},
        {"defaults 1.9 2", "1;2.;;"},
        {"gimme 1 b", "gimme: 1 b"},
    };
    for (const auto& [message, call] : rows) {
        EXPECT_TRUE(Send(x.get(), message)) << message;
        EXPECT_EQ(lastCall, call) << message;
    }
    EXPECT_THAT(window.Take(), IsEmpty());
}

TEST_F(Messages, ThatDoNotFitAreRefusedWithAReason) {
    const std::pair<const char*, const char*> rows[] = {
        {"count", "missing arguments for message \"count\""},   {"count x", "bad arguments for message \"count\""},
        {"count 1 2", "extra arguments for message \"count\""}, {"pair a 1", "bad arguments for message \"pair\""},
        {"bang 1", "extra arguments for message \"bang\""},     {"untyped", "doesn't understand \"untyped\""},
        {"nonsense 1", "doesn't understand \"nonsense\""},      {"list a b", "doesn't understand \"list\""}};
    for (const auto& [message, reason] : rows) {
        EXPECT_FALSE(Send(x.get(), message));
        EXPECT_THAT(window.Take(), ElementsAre(std::string("[error] talker: ") + reason));
    }
    EXPECT_EQ(lastCall, "none");
}

TEST_F(Messages, WithoutAMethodGoToAnythingUnderTheirOwnName) {
    class_addmethod(c, AsMethod(TakeAtoms), "anything", A_GIMME, 0);
    for (const char* message : {"foo 1 2", "list 1 b"}) {
        EXPECT_TRUE(Send(x.get(), message));
        EXPECT_EQ(lastCall, std::string(message).insert(std::string(message).find(' '), ":"));
    }
    const TestClass<t_object> withoutFloat("catchall");
    class_addmethod(withoutFloat, AsMethod(TakeAtoms), "anything", A_GIMME, 0);
    EXPECT_TRUE(Send(withoutFloat.New().get(), "int 5"));
    EXPECT_EQ(lastCall, "int: 5");
}

TEST_F(Messages, ALaterMethodOfANameReplacesTheEarlierEvenForLivingObjects) {
    const std::size_t before = velmohost::GetMessages(c).size();
    for (int i = 0; i < 100; ++i) class_addmethod(c, AsMethod(Take<>), ("m" + std::to_string(i)).c_str(), 0);
    class_addmethod(c, AsMethod(Take<t_atom_long>), "m99", A_LONG, 0);
    EXPECT_TRUE(Send(x.get(), "m99 4"));
    EXPECT_EQ(lastCall, "4;");
    EXPECT_TRUE(Send(x.get(), "m0"));
    EXPECT_EQ(velmohost::GetMessages(c).size(), before + 100);
}

struct Receiver {
    t_object ob;
    long inlet;
    std::string* log;
};

void LogAnything(Receiver* x, t_symbol* s, long ac, t_atom* av) {
    *x->log += std::to_string(x->inlet) + "/" + std::to_string(proxy_getinlet(&x->ob)) + " " + s->s_name + " " +
               AtomsToText(ac, av) + "; ";
}

TEST(Inlets, TellWhichOfThemAMessageCameThrough) {
    const TestClass<Receiver> c("receiver");
    class_addmethod(c, AsMethod(LogAnything), "int", A_GIMME, 0);
    class_addmethod(c, AsMethod(LogAnything), "in3", A_GIMME, 0);
    class_addmethod(c, AsMethod(LogAnything), "foo", A_GIMME, 0);
    std::string log;
    const auto x = c.New();
    x->log = &log;
    // From right to left: inlet 3 takes ints, inlets 2 and 1 are proxies.
    intin(x.get(), 3);
    proxy_new(x.get(), 2, &x->inlet);
    void* const proxy = proxy_new(x.get(), 1, &x->inlet);
    const auto inlets = velmohost::GetInlets(&x->ob);
    ASSERT_EQ(inlets.size(), 4u);
    EXPECT_EQ(inlets[3].type, "int");
    EXPECT_EQ(inlet_nth(&x->ob, 1), proxy);
    EXPECT_EQ(inlet_count(&x->ob), 4);

    Send(x.get(), "foo a", 1);
    Send(x.get(), "foo b", 2);
    Send(x.get(), "foo c", 0);
    Send(x.get(), "int 5", 3);
    EXPECT_EQ(log, "1/1 foo a; 2/2 foo b; 0/0 foo c; 0/3 in3 5; ");
    EXPECT_EQ(proxy_getinlet(&x->ob), 0);

    // A list without a taker: one number per inlet from the right; what is too much is left out.
    log.clear();
    Send(x.get(), "list 10 11 12 13 14");
    EXPECT_EQ(log, "0/3 in3 13; 2/2 int 12; 1/1 int 11; 0/0 int 10; ");

    object_free(proxy);
    EXPECT_EQ(inlet_count(&x->ob), 3);
}

TEST(Inlets, MayBeFreedWithTheirObjectByAMessage) {
    const TestClass<Receiver> c("suicide");
    class_addmethod(c, AsMethod(+[](t_object* x, t_atom_long) { object_free(x); }), "int", A_LONG, 0);
    Receiver* const x = c.New().release();
    proxy_new(x, 1, &x->inlet);
    EXPECT_TRUE(Send(x, "list 1 2"));
}

TEST_F(Messages, FromCodeTurnEveryArgumentIntoAPointerSizedWord) {
    char text[] = "abc";
    const short small = -3;
    EXPECT_EQ(object_method(x.get(), gensym("untyped"), small, text, 7.9), gensym("answer"));
    EXPECT_STREQ(text, "Xbc");
    EXPECT_EQ(lastCall, "-3 7");

    std::vector<t_atom> atoms = ParseAtoms("1 2");
    object_method(x.get(), gensym("gimme"), gensym("s"), atoms.size(), atoms.data());
    EXPECT_EQ(lastCall, "s: 1 2");
    EXPECT_EQ(object_method(x.get(), gensym("nonsense"), 1, 2), nullptr);
    EXPECT_EQ(object_method(nullptr, gensym("untyped")), nullptr);

    object_method_direct(void, (void*, double), x.get(), gensym("float"), 0.25);
    EXPECT_EQ(lastCall, "0.25;");
}

TEST_F(Messages, FromCodeWithTypesAreConvertedAndMayGiveBack) {
    std::vector<t_atom> atoms = ParseAtoms("3.7");
    t_atom result;
    EXPECT_EQ(object_method_typed(x.get(), gensym("count"), 1, atoms.data(), &result), MAX_ERR_NONE);
    EXPECT_EQ(lastCall, "3;");
    EXPECT_EQ(result.a_type, A_NOTHING);
    EXPECT_EQ(object_method_typed(x.get(), gensym("giveback"), 1, atoms.data(), &result), MAX_ERR_NONE);
    EXPECT_EQ(atom_getlong(&result), 10);
    EXPECT_EQ(object_method_typed(x.get(), gensym("giveback"), 0, nullptr, nullptr), MAX_ERR_NONE);
    EXPECT_NE(object_method_typed(x.get(), gensym("count"), 0, nullptr, &result), MAX_ERR_NONE);
    EXPECT_NE(object_method_typed(x.get(), gensym("nonsense"), 0, nullptr, &result), MAX_ERR_NONE);
}

TEST_F(Messages, LookUpsComplainOrNotAsTheirNamesSay) {
    EXPECT_EQ(zgetfn(x.get(), gensym("count")), AsMethod(Take<t_atom_long>));
    EXPECT_EQ(zgetfn(x.get(), gensym("nonsense")), nullptr);
    EXPECT_EQ(object_getmethod(x.get(), gensym("nonsense")), AsMethod(method_false));
    EXPECT_THAT(window.Take(), IsEmpty());
    EXPECT_EQ(getfn(x.get(), gensym("nonsense")), nullptr);
    EXPECT_THAT(window.Take(), ElementsAre("[error] talker: no method for \"nonsense\""));
}

TEST_F(Messages, LeaveTheHostsFloatingPointSettingsAlone) {
    using Control = velmodsp::FloatingPointControl;
    const auto flushDenormals = +[](t_object*) { Control::Set(Control::Get() | Control::FlushDenormalsBits); };
    class_addmethod(c, AsMethod(flushDenormals), "bang", 0);
    const auto before = Control::Get();
    Send(x.get(), "bang");
    object_method(x.get(), gensym("bang"));
    velmohost::CallMethod(x.get(), gensym("bang"));
    EXPECT_EQ(Control::Get(), before);
}

}  // namespace
}  // namespace velmotest
