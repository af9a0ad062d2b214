#include "core/Messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ApiObjects.h"
#include "core/Classes.h"
#include "core/Objects.h"
#include "platform/VelmoDspFloatingPointControl.h"
#include "support/CapturedWindow.h"

using testing::ElementsAre;
using testing::IsEmpty;
using velmohost::AtomsToText;
using velmohost::ParseAtoms;
using velmotest::AsMethod;
using velmotest::CapturedWindow;
using velmotest::NewClass;
using velmotest::NewObject;
using velmotest::Owned;

namespace {

std::string lastCall;

std::string Number(double value) {
    t_atom atom;
    atom_setfloat(&atom, value);
    return AtomsToText(1, &atom);
}

void TakeNothing(t_object*) { lastCall = "nothing"; }
void TakeInt(t_object*, t_atom_long n) { lastCall = "int " + std::to_string(n); }
void TakeFloat(void*, double f) { lastCall = "float " + Number(f); }
void TakeSymbols(t_object*, t_symbol* a, t_symbol* b) { lastCall = std::string(a->s_name) + "," + b->s_name; }

/// Integers and doubles in turn, more of each than one kind of call would put in the right registers.
void TakeMixture(t_object*, double a, t_atom_long b, double c, t_symbol* d, double e, t_atom_long f, double g) {
    lastCall = Number(a) + " " + std::to_string(b) + " " + Number(c) + " " + d->s_name + " " + Number(e) + " " +
               std::to_string(f) + " " + Number(g);
}

void TakeSevenLongs(t_object*, t_atom_long a, t_atom_long b, t_atom_long c, t_atom_long d, t_atom_long e, t_atom_long f,
                    t_atom_long g) {
    lastCall.clear();
    for (const t_atom_long value : {a, b, c, d, e, f, g}) lastCall += std::to_string(value);
}

void TakeDefaults(t_object*, t_atom_long a, double b, t_symbol* c) {
    lastCall = std::to_string(a) + " " + Number(b) + " '" + c->s_name + "'";
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

t_class* TalkerClass() {
    static t_class* const c = [] {
        t_class* const talker = NewClass<t_object>("talker");
        class_addmethod(talker, AsMethod(TakeNothing), "bang", 0);
        class_addmethod(talker, AsMethod(TakeFloat), "float", A_FLOAT, 0);
        class_addmethod(talker, AsMethod(TakeInt), "count", A_LONG, 0);
        class_addmethod(talker, AsMethod(TakeSymbols), "pair", A_SYM, A_SYM, 0);
        class_addmethod(talker, AsMethod(TakeMixture), "mix", A_FLOAT, A_LONG, A_FLOAT, A_SYM, A_FLOAT, A_LONG, A_FLOAT,
                        0);
        class_addmethod(talker, AsMethod(TakeSevenLongs), "seven", A_LONG, A_LONG, A_LONG, A_LONG, A_LONG, A_LONG,
                        A_LONG, 0);
        class_addmethod(talker, AsMethod(TakeDefaults), "defaults", A_DEFLONG, A_DEFFLOAT, A_DEFSYM, 0);
        class_addmethod(talker, AsMethod(TakeAtoms), "gimme", A_GIMME, 0);
        class_addmethod(talker, AsMethod(GiveBack), "giveback", A_GIMMEBACK, 0);
        class_addmethod(talker, AsMethod(Untyped), "untyped", A_CANT, 0);
        return talker;
    }();
    return c;
}

bool Send(void* x, const std::string& selector, const std::string& arguments, unsigned inlet = 0) {
    std::vector<t_atom> atoms = ParseAtoms(arguments);
    lastCall = "none";
    return velmohost::SendMessage(static_cast<t_object*>(x), inlet, gensym(selector.c_str()),
                                  static_cast<long>(atoms.size()), atoms.data());
}

TEST(Messages, ArriveConvertedByTheirTypes) {
    struct Row {
        const char* selector;
        const char* arguments;
        const char* call;
    };
    const Row rows[] = {
        {"bang", "", "nothing"},
        {"float", "2.5", "float 2.5"},
        {"float", "2", "float 2."},
        {"int", "3", "float 3."},  // only "float" exists
        {"list", "4", "float 4."},
        {"count", "7.9", "int 7"},
        {"count", "-9000000000000000000", "int -9000000000000000000"},
        {"pair", "a \"b c\"", "a,b c"},
        {"mix", "0.5 1 1.5 s 2.5 2 3", "0.5 1 1.5 s 2.5 2 3."},
        {"seven", "1 2 3 4 5 6 7", "1234567"},
        {"defaults", "", "0 0. ''"},
        {"defaults", "1.9 2", "1 2. ''"},
        {"defaults", "1 2 x", "1 2. 'x'"},
        {"gimme", "", "gimme: "},
        {"gimme", "1 b", "gimme: 1 b"},
    };
    CapturedWindow window;
    const auto x = NewObject<t_object>(TalkerClass());
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.selector) + " " + row.arguments);
        EXPECT_TRUE(Send(x.get(), row.selector, row.arguments));
        EXPECT_EQ(lastCall, row.call);
    }
    EXPECT_THAT(window.Take(), IsEmpty());
}

TEST(Messages, ThatDoNotFitAreRefusedWithAReason) {
    struct Row {
        const char* selector;
        const char* arguments;
        const char* reason;
    };
    const Row rows[] = {
        {"count", "", "missing arguments for message \"count\""},
        {"count", "x", "bad arguments for message \"count\""},
        {"count", "1 2", "extra arguments for message \"count\""},
        {"pair", "a 1", "bad arguments for message \"pair\""},
        {"bang", "1", "extra arguments for message \"bang\""},
        {"untyped", "", "doesn't understand \"untyped\""},  // not for users
        {"nonsense", "1", "doesn't understand \"nonsense\""},
        {"list", "a b", "doesn't understand \"list\""},
    };
    CapturedWindow window;
    const auto x = NewObject<t_object>(TalkerClass());
    for (const Row& row : rows) {
        EXPECT_FALSE(Send(x.get(), row.selector, row.arguments));
        EXPECT_EQ(lastCall, "none");
        EXPECT_THAT(window.Take(), ElementsAre("[error] talker: " + std::string(row.reason)));
    }
}

TEST(Messages, WithoutAMethodGoToAnythingUnderTheirOwnName) {
    t_class* const c = NewClass<t_object>("catchall");
    class_addmethod(c, AsMethod(TakeAtoms), "anything", A_GIMME, 0);
    auto x = NewObject<t_object>(c);
    EXPECT_TRUE(Send(x.get(), "foo", "1 2"));
    EXPECT_EQ(lastCall, "foo: 1 2");
    EXPECT_TRUE(Send(x.get(), "list", "1 2"));
    EXPECT_EQ(lastCall, "list: 1 2");
    EXPECT_TRUE(Send(x.get(), "int", "5"));
    EXPECT_EQ(lastCall, "int: 5");
    x.reset();
    class_free(c);
}

TEST(Messages, ALaterMethodOfANameReplacesTheEarlierEvenForLivingObjects) {
    t_class* const c = NewClass<t_object>("growing");
    auto x = NewObject<t_object>(c);
    for (int i = 0; i < 100; ++i) class_addmethod(c, AsMethod(TakeNothing), ("m" + std::to_string(i)).c_str(), 0);
    class_addmethod(c, AsMethod(TakeInt), "m99", A_LONG, 0);
    EXPECT_TRUE(Send(x.get(), "m99", "4"));
    EXPECT_EQ(lastCall, "int 4");
    EXPECT_TRUE(Send(x.get(), "m0", ""));
    EXPECT_EQ(velmohost::GetMessages(c).size(), 100u);
    EXPECT_EQ(ob_class(x.get()), c);
    x.reset();
    class_free(c);
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
    t_class* const c = NewClass<Receiver>("receiver");
    class_addmethod(c, AsMethod(LogAnything), "int", A_GIMME, 0);
    class_addmethod(c, AsMethod(LogAnything), "in3", A_GIMME, 0);
    class_addmethod(c, AsMethod(LogAnything), "foo", A_GIMME, 0);
    std::string log;
    auto x = NewObject<Receiver>(c);
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

    Send(x.get(), "foo", "a", 1);
    Send(x.get(), "foo", "b", 2);
    Send(x.get(), "foo", "c", 0);
    Send(x.get(), "int", "5", 3);
    EXPECT_EQ(log, "1/1 foo a; 2/2 foo b; 0/0 foo c; 0/3 in3 5; ");
    EXPECT_EQ(proxy_getinlet(&x->ob), 0);

    // A list without a taker: one number per inlet from the right; what is too much is left out.
    log.clear();
    Send(x.get(), "list", "10 11 12 13 14");
    EXPECT_EQ(log, "0/3 in3 13; 2/2 int 12; 1/1 int 11; 0/0 int 10; ");

    object_free(proxy);
    EXPECT_EQ(inlet_count(&x->ob), 3);
    x.reset();
    class_free(c);
}

TEST(Messages, MayFreeTheirReceiver) {
    t_class* const c = NewClass<Receiver>("suicide");
    class_addmethod(c, AsMethod(+[](t_object* x, t_atom_long) { object_free(x); }), "int", A_LONG, 0);
    auto* const x = static_cast<Receiver*>(object_alloc(c));
    proxy_new(x, 1, &x->inlet);
    EXPECT_TRUE(Send(x, "list", "1 2"));
    class_free(c);
}

TEST(ObjectMethod, TurnsEveryArgumentIntoAPointerSizedWord) {
    const auto x = NewObject<t_object>(TalkerClass());
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
    EXPECT_EQ(lastCall, "float 0.25");
}

TEST(ObjectMethod, TypedCallsConvertAndMayGiveBack) {
    const auto x = NewObject<t_object>(TalkerClass());
    std::vector<t_atom> atoms = ParseAtoms("3.7");
    t_atom result;
    EXPECT_EQ(object_method_typed(x.get(), gensym("count"), 1, atoms.data(), &result), MAX_ERR_NONE);
    EXPECT_EQ(lastCall, "int 3");
    EXPECT_EQ(result.a_type, A_NOTHING);
    EXPECT_EQ(object_method_typed(x.get(), gensym("giveback"), 1, atoms.data(), &result), MAX_ERR_NONE);
    EXPECT_EQ(atom_getlong(&result), 10);
    EXPECT_EQ(object_method_typed(x.get(), gensym("giveback"), 0, nullptr, nullptr), MAX_ERR_NONE);
    EXPECT_NE(object_method_typed(x.get(), gensym("count"), 0, nullptr, &result), MAX_ERR_NONE);
    EXPECT_NE(object_method_typed(x.get(), gensym("nonsense"), 0, nullptr, &result), MAX_ERR_NONE);
}

TEST(ObjectMethod, LookUpsComplainOrNotAsTheirNamesSay) {
    CapturedWindow window;
    const auto x = NewObject<t_object>(TalkerClass());
    EXPECT_EQ(zgetfn(x.get(), gensym("count")), AsMethod(TakeInt));
    EXPECT_EQ(zgetfn(x.get(), gensym("nonsense")), nullptr);
    EXPECT_EQ(object_getmethod(x.get(), gensym("nonsense")), AsMethod(method_false));
    EXPECT_THAT(window.Take(), IsEmpty());
    EXPECT_EQ(getfn(x.get(), gensym("nonsense")), nullptr);
    EXPECT_THAT(window.Take(), ElementsAre("[error] talker: no method for \"nonsense\""));
}

void FlushDenormals(t_object*) {
    using Control = velmodsp::FloatingPointControl;
    Control::Set(Control::Get() | Control::FlushDenormalsBits);
}

TEST(Messages, LeaveTheHostsFloatingPointSettingsAlone) {
    t_class* const c = NewClass<t_object>("flusher");
    class_addmethod(c, AsMethod(FlushDenormals), "bang", 0);
    auto x = NewObject<t_object>(c);
    const auto before = velmodsp::FloatingPointControl::Get();
    Send(x.get(), "bang", "");
    object_method(x.get(), gensym("bang"));
    velmohost::CallMethod(x.get(), gensym("bang"));
    EXPECT_EQ(velmodsp::FloatingPointControl::Get(), before);
    x.reset();
    class_free(c);
}

}  // namespace
