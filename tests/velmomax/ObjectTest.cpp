#include "Probe.h"

namespace velmomax {
namespace {

TEST(ServiceMessages, VersionIsTheLabelOfItsAttribute) {
    Probe probe;
    EXPECT_EQ(probe.Send("version"), Rows{"[post] probe~: Version 1.2.3 (Build now)"});
    // An attribute of the object itself hides its class's: first without a label, then with a number for one.
    object_addattr(probe.x, attribute_new("externalversion", gensym("symbol"), 0, nullptr, nullptr));
    EXPECT_EQ(probe.Send("version"), Rows{"[post] probe~: unknown version"});
    auto* version = static_cast<t_object*>(object_attr_get(probe.x, gensym("externalversion")));
    object_addattr_parse(version, "label", gensym("long"), 0, "3");
    EXPECT_EQ(probe.Send("version"), Rows{"[post] probe~: unknown version"});
}

TEST(ServiceMessages, PostAttributesPostsOne) {
    Probe probe;
    probe.x->values[1] = 2.5;
    const std::pair<const char*, const char*> answers[] = {
        {"postattributes values", "[post] probe~: values : 0. 2.5 0. "},
        {"postattributes nosuch", "[error] probe~: no attribute nosuch"},
        {"postattributes 3", "[error] probe~: invalid message : postattributes 3 "},
        {"postattributes a 2.", "[error] probe~: invalid message : postattributes a 2. "},
        {"postattributes broken",
         "[bug] probe~: PostValueOfAttribute : MAX_ERR_OUT_OF_MEM in object_attr_getvalueof (broken)"}};
    for (const auto& [message, answer] : answers) EXPECT_EQ(probe.Send(message), Rows{answer});
}

TEST(ServiceMessages, DspStatusTellsMutedBeforeBypassed) {
    Probe probe;
    struct {
        long mute, bypass, disabled;
        const char* state;
    } const rows[] = {
        {0, 0, 0, "enabled"}, {0, 1, 0, "bypassed"}, {1, 1, 0, "muted"}, {0, 1, 2, "muted"}, {2, 2, 0, "enabled"}};
    for (const auto& row : rows) {
        probe.x->ob.mute.Store(row.mute);
        probe.x->ob.bypass.Store(row.bypass);
        probe.x->ob.ob.z_disabled = row.disabled;
        EXPECT_EQ(probe.Send("postdspstatus"),
                  (Rows{std::string("[post] probe~: dsp processing is ") + row.state, "[post] probe~: dsp is off"}));
    }
}

TEST(Instance, SharesBuffersUnlessAskedNotTo) {
    auto* x = static_cast<probe_t*>(ObjectAlloc(Probe::Class()));
    CreateDspInletsAndOutlets(&x->ob, 2, 0, false);
    EXPECT_EQ(x->ob.ob.z_misc, 0);
    object_free(x);
}

TEST(CreationArguments, AreTriedByEveryNameAskedFor) {
    Probe probe;
    t_dictionary* const dictionary = dictionary_new();
    dictionary_appendlong(dictionary, gensym("amount"), 5);
    dictionary_appendsym(dictionary, gensym("word"), gensym("down"));
    t_atom argument{};
    atom_setobj(&argument, dictionary);
    EXPECT_FALSE(dictionary_process_partial(probe.x, 1, &argument, 3, "gain", "word", "values"));
    EXPECT_EQ(probe.x->word, gensym("down")) << "every name is tried";
    EXPECT_EQ(probe.x->amount, 0) << "nobody asked for it";
    EXPECT_EQ(probe.window.Take(), (Rows{"[error] probe~: dictionary doesnt have entry for gain",
                                         "[error] probe~: dictionary doesnt have entry for values",
                                         "[error] probe~: error parsing dictionary"}));
    object_free(dictionary);
}

}  // namespace
}  // namespace velmomax
