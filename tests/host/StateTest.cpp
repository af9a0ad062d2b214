// The host's side of presets, pattr and dictionaries, with an object that breaks every protocol.

#include <gmock/gmock.h>

#include "box/Box.h"
#include "box/Host.h"
#include "commands/ShownDictionary.h"
#include "core/AtomText.h"
#include "core/Objects.h"
#include "ext_dictobj.h"
#include "host/SignalObjects.h"
#include "hostapi/ApiObjects.h"
#include "support/CapturedWindow.h"

namespace {

using testing::ElementsAre;
using velmohost::Box;
using velmotest::AsMethod;

t_class* keeperClass;

void* NewKeeper() { return object_alloc(keeperClass); }

t_max_err GetValueOf(t_object*, long* ac, t_atom** av) {
    EXPECT_EQ(*ac, 0);
    EXPECT_EQ(*av, nullptr);
    return MAX_ERR_GENERIC;
}

/// Puts one good line into a preset, and two that are not its own.
void Store(t_object* x) {
    for (const char* text : {"x keeper recall 1 2.5", "x other recall 1 2.5", "7"}) {
        std::vector<t_atom> line = velmohost::ParseAtoms(text);
        if (text[0] == 'x') atom_setobj(line.data(), x);
        binbuf_insert(gensym("_preset")->s_thing, nullptr, static_cast<short>(line.size()), line.data());
    }
}

void RegisterKeeper() {
    if (keeperClass != nullptr) return;
    keeperClass = class_new("keeper", AsMethod(NewKeeper), nullptr, sizeof(t_object), nullptr, 0);
    class_addmethod(keeperClass, AsMethod(GetValueOf), "getvalueof", A_CANT, 0);
    class_addmethod(keeperClass, AsMethod(Store), "preset", A_CANT, 0);
    class_register(CLASS_BOX, keeperClass);
}

TEST(State, FaultsOfTheObjectAreTold) {
    RegisterKeeper();
    velmotest::CapturedWindow window;
    velmohost::Host host;
    const auto keeper = Box::Create(host, "keeper");
    EXPECT_FALSE(keeper->GetValueOf());
    EXPECT_THAT(window.Take(), ElementsAre("[error] keeper: gives no value"));

    const auto preset = keeper->StorePreset();
    ASSERT_TRUE(preset && preset->size() == 1);
    EXPECT_EQ(gensym("_preset")->s_thing, nullptr) << "only while a preset is stored";
    EXPECT_EQ(velmohost::FormatPresetLine(preset->front()), "keeper recall 1 2.5");
    EXPECT_THAT(window.Take(), ElementsAre("[error] keeper: can not be recalled: <keeper> other recall 1 2.5",
                                           "[error] keeper: can not be recalled: 7"));
    EXPECT_FALSE(keeper->RecallPreset({{gensym("other"), gensym("recall"), {}}}));
    EXPECT_THAT(window.Take(), ElementsAre("[error] keeper: the preset is for other recall"));
    EXPECT_FALSE(keeper->RecallPreset({}));
}

TEST(State, ObjectsThatTakeNoPartSaySo) {
    RegisterSignalObjects();
    velmotest::CapturedWindow window;
    velmohost::Host host;
    const auto silent = Box::Create(host, "level~");
    EXPECT_FALSE(silent->StorePreset());
    EXPECT_FALSE(silent->GetValueOf());
    EXPECT_FALSE(silent->SetValueOf({}));
    EXPECT_THAT(window.Take(), ElementsAre("[error] level~: doesn't understand \"preset\"",
                                           "[error] level~: doesn't understand \"getvalueof\"",
                                           "[error] level~: doesn't understand \"setvalueof\""));
}

TEST(State, ShownDictionariesListEveryEntry) {
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
    object_free(d);
}

}  // namespace
