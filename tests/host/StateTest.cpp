// The host's side of presets, pattr and dictionaries, with small objects of every habit that it must cope with.

#include <gmock/gmock.h>

#include "box/Box.h"
#include "box/Host.h"
#include "commands/ShownDictionary.h"
#include "core/AtomText.h"
#include "core/Messages.h"
#include "core/Objects.h"
#include "ext_dictobj.h"
#include "hostapi/ApiObjects.h"
#include "support/CapturedWindow.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using velmohost::Box;
using velmotest::AsMethod;

/// Keeps two numbers, and takes part in every protocol. "keeper 1" puts lines into a preset that are not its own.
struct Keeper {
    t_object ob;
    t_atom values[2];
    t_atom_long misbehaves;
    void* dumpOutlet;
};

t_class *keeperClass, *silentClass;

void* NewSilent() { return object_alloc(silentClass); }

void* NewKeeper(t_atom_long misbehaves) {
    auto* const x = static_cast<Keeper*>(object_alloc(keeperClass));
    for (t_atom& value : x->values) atom_setlong(&value, 0);
    x->misbehaves = misbehaves;
    x->dumpOutlet = outlet_new(x, nullptr);
    return x;
}

t_max_err GetValueOf(Keeper* x, long* ac, t_atom** av) {
    if (x->misbehaves != 0) return MAX_ERR_GENERIC;
    EXPECT_EQ(*ac, 0);
    EXPECT_EQ(*av, nullptr);
    *ac = 2;
    *av = reinterpret_cast<t_atom*>(getbytes(2 * sizeof(t_atom)));
    std::copy_n(x->values, 2, *av);
    return MAX_ERR_NONE;
}

t_max_err SetValueOf(Keeper* x, long ac, t_atom* av) {
    if (ac != 2) return MAX_ERR_GENERIC;
    std::copy_n(av, 2, x->values);
    return MAX_ERR_NONE;
}

void* Recall(Keeper* x, t_symbol*, long ac, t_atom* av) {
    SetValueOf(x, ac, av);
    return nullptr;
}

void Insert(Keeper* x, const char* className) {
    t_atom line[5];
    atom_setobj(line, x);
    atom_setsym(line + 1, gensym(className));
    atom_setsym(line + 2, gensym("recall"));
    std::copy_n(x->values, 2, line + 3);
    binbuf_insert(gensym("_preset")->s_thing, nullptr, 5, line);
}

void Store(Keeper* x) {
    Insert(x, "keeper");
    if (x->misbehaves == 0) return;
    Insert(x, "other");
    t_atom number;
    atom_setlong(&number, 7);
    binbuf_insert(gensym("_preset")->s_thing, nullptr, 1, &number);
}

void Dump(Keeper* x) {
    t_dictionary* d = dictionary_new();
    dictionary_appendatoms(d, gensym("values"), 2, x->values);
    t_symbol* name = nullptr;
    d = dictobj_register(d, &name);
    t_atom atom;
    atom_setsym(&atom, name);
    outlet_anything(x->dumpOutlet, gensym("dictionary"), 1, &atom);
    object_free(d);
}

void ReadDictionary(Keeper* x, t_symbol* name) {
    t_dictionary* const d = dictobj_findregistered_retain(name);
    if (d == nullptr) return object_error(&x->ob, "no dictionary");
    long ac = 0;
    t_atom* av = nullptr;
    if (dictionary_getatoms(d, gensym("values"), &ac, &av) == MAX_ERR_NONE) SetValueOf(x, ac, av);
    dictobj_release(d);
}

void RegisterKeeper() {
    if (keeperClass != nullptr) return;
    keeperClass = class_new("keeper", AsMethod(NewKeeper), nullptr, sizeof(Keeper), nullptr, A_DEFLONG, 0);
    class_addmethod(keeperClass, AsMethod(GetValueOf), "getvalueof", A_CANT, 0);
    class_addmethod(keeperClass, AsMethod(SetValueOf), "setvalueof", A_CANT, 0);
    class_addmethod(keeperClass, AsMethod(Store), "preset", A_CANT, 0);
    class_addmethod(keeperClass, AsMethod(Recall), "recall", A_GIMME, 0);
    class_addmethod(keeperClass, AsMethod(Dump), "dump", 0);
    class_addmethod(keeperClass, AsMethod(ReadDictionary), "dictionary", A_SYM, 0);
    class_register(CLASS_BOX, keeperClass);
    silentClass = class_new("silent", AsMethod(NewSilent), nullptr, sizeof(t_object), nullptr, 0);
    class_register(CLASS_BOX, silentClass);
}

class State : public testing::Test {
protected:
    State() {
        RegisterKeeper();
        box = Box::Create(host, "keeper");
    }

    static std::string Value(Box& box) {
        const auto value = box.GetValueOf();
        return value ? velmohost::AtomsToText(static_cast<long>(value->size()), value->data()) : "none";
    }

    velmotest::CapturedWindow window;
    velmohost::Host host;
    std::unique_ptr<Box> box;
};

TEST_F(State, PattrReadsAndSetsTheValue) {
    EXPECT_TRUE(box->SetValueOf(velmohost::ParseAtoms("3 loud")));
    EXPECT_EQ(Value(*box), "3 loud");
    EXPECT_FALSE(box->SetValueOf(velmohost::ParseAtoms("1 2 3")));
    EXPECT_FALSE(box->SetValueOf({}));
    EXPECT_EQ(Value(*box), "3 loud");
    EXPECT_THAT(window.Take(), IsEmpty());
    const auto bad = Box::Create(host, "keeper 1");
    EXPECT_EQ(Value(*bad), "none");
    EXPECT_THAT(window.Take(), ElementsAre("[error] keeper: gives no value"));
}

TEST_F(State, PresetsAreStoredAndRecalledByAnyObjectOfTheClass) {
    box->SetValueOf(velmohost::ParseAtoms("1 2.5"));
    const auto preset = box->StorePreset();
    ASSERT_TRUE(preset && preset->size() == 1);
    EXPECT_EQ(gensym("_preset")->s_thing, nullptr) << "only while a preset is stored";
    EXPECT_EQ(velmohost::FormatPresetLine(preset->front()), "keeper recall 1 2.5");
    box->SetValueOf(velmohost::ParseAtoms("8 9"));
    EXPECT_TRUE(box->RecallPreset(*preset));
    EXPECT_EQ(Value(*box), "1 2.5");
    const auto second = Box::Create(host, "keeper");
    EXPECT_TRUE(second->RecallPreset(*preset));
    EXPECT_EQ(Value(*second), "1 2.5");
    EXPECT_THAT(window.Take(), IsEmpty());
    velmohost::Preset foreign = *preset;
    foreign[0].className = gensym("other");
    foreign[0].arguments.clear();
    EXPECT_FALSE(box->RecallPreset(foreign));
    EXPECT_THAT(window.Take(), ElementsAre("[error] keeper: the preset is for other recall"));
    EXPECT_FALSE(box->RecallPreset({}));
}

TEST_F(State, LinesThatCannotBeRecalledStayOutOfAPreset) {
    const auto bad = Box::Create(host, "keeper 1");
    const auto preset = bad->StorePreset();
    EXPECT_EQ(preset->size(), 1u);
    EXPECT_THAT(window.Take(), ElementsAre("[error] keeper: can not be recalled: <keeper> other recall 0 0",
                                           "[error] keeper: can not be recalled: 7"));
}

TEST_F(State, ObjectsThatTakeNoPartSaySo) {
    const auto silent = Box::Create(host, "silent");
    EXPECT_FALSE(silent->StorePreset());
    EXPECT_FALSE(silent->GetValueOf());
    EXPECT_FALSE(silent->SetValueOf({}));
    EXPECT_THAT(window.Take(), ElementsAre("[error] silent: doesn't understand \"preset\"",
                                           "[error] silent: doesn't understand \"getvalueof\"",
                                           "[error] silent: doesn't understand \"setvalueof\""));
}

TEST_F(State, AReceiverFindsTheDictionaryWhileItIsSent) {
    const auto receiver = Box::Create(host, "keeper");
    std::string name;
    velmohost::SetOutletListener([&](t_object*, t_outlet*, unsigned, t_symbol* selector, long ac, const t_atom* av) {
        name = atom_getsym(av)->s_name;
        t_atom copy = *av;
        velmohost::SendMessage(receiver->Object(), 0, selector, ac, &copy);
    });
    box->SetValueOf(velmohost::ParseAtoms("4 5"));
    box->Send("dump");
    velmohost::SetOutletListener({});
    EXPECT_EQ(Value(*receiver), "4 5");
    receiver->Send("dictionary " + name);
    EXPECT_THAT(window.Take(), ElementsAre("[error] keeper: no dictionary")) << "not afterwards";
}

TEST_F(State, ShownDictionariesListEveryEntryAndTheLastOneIsKept) {
    t_dictionary* inner = dictionary_new();
    dictionary_appendlong(inner, gensym("depth"), 2);
    t_dictionary* d = dictionary_new();
    dictionary_appendsym(d, gensym("name"), gensym("two words"));
    dictionary_appendstring(d, gensym("text"), "12");
    dictionary_appendatoms(d, gensym("none"), 0, nullptr);
    dictionary_appenddictionary(d, gensym("inner"), &inner->d_obj);
    std::vector<t_atom> list = velmohost::ParseAtoms("1 2. x");
    dictionary_appendatoms(d, gensym("values"), 2, list.data());
    EXPECT_THAT(velmohost::FormatDictionary(d),
                ElementsAre("name \"two words\"", "text \"12\"", "none", "inner::depth 2", "values 1 2."));
    t_symbol* name = nullptr;
    d = dictobj_register(d, &name);
    {
        velmohost::ShownDictionary shown;
        testing::internal::CaptureStdout();
        shown.Show(gensym("nobody's"));
        shown.Show(name);
        object_free(d);
        shown.Show(gensym("last"));
        const std::string out = testing::internal::GetCapturedStdout();
        EXPECT_THAT(out, HasSubstr("[dictionary] inner::depth 2\n[dictionary] values 1 2.\n[dictionary] name"));
        box->Send("dictionary last");
        EXPECT_EQ(Value(*box), "1 2.");
    }
    EXPECT_EQ(dictobj_findregistered_retain(gensym("last")), nullptr);
}

}  // namespace
