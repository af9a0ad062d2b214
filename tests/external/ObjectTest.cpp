#include "PluginFixture.h"
#include "ext_obex.h"

#include "support/DeliberateLeak.h"

namespace {

using FixNaNObject = PluginFixture;

TEST_F(FixNaNObject, HasAsManyInletsAndOutletsAsItsArgumentsSayWithinTheLimits) {
    const std::pair<const char*, unsigned> boxes[] = {{"", 1},
                                                      {"@numchannels 2", 2},
                                                      {"@numchannels 250", 250},
                                                      {"@numchannels 0", 1},
                                                      {"@numchannels 300", 250},
                                                      {"@numchannels many", 1},
                                                      {"@mode givenvalue @numchannels 4. @replaceby 0.5", 4}};
    for (const auto& [arguments, channels] : boxes) {
        const auto box = Create(arguments);
        ASSERT_TRUE(box) << arguments;
        EXPECT_EQ(box->NumInlets(), channels) << arguments;
        EXPECT_EQ(box->NumSignalInlets(), channels) << arguments;
        EXPECT_EQ(box->NumSignalOutlets(), channels) << arguments;
        EXPECT_EQ(box->NumOutlets(), channels + 1) << arguments;
        EXPECT_EQ(reinterpret_cast<t_pxobject*>(box->Object())->z_misc, Z_NO_INPLACE);
        EXPECT_EQ(box->InletAssist(0), "input #1");
        EXPECT_EQ(box->OutletAssist(channels - 1), "output #" + std::to_string(channels));
        EXPECT_EQ(box->OutletAssist(channels), "dumpout");
        EXPECT_EQ(window.Take(), Rows{}) << arguments;
    }
}

TEST_F(FixNaNObject, AnswersMessagesInTheMaxWindow) {
    const auto box = Create("@numchannels 4");
    const std::string post = "[post] tesk.fixnan~: ", error = "[error] tesk.fixnan~: ";
    const std::pair<const char*, Rows> answers[] = {
        {"postattributes",
         {post + "found 3 attributes", post + "mode : lastvalue ", post + "numchannels : 4 ",
          post + "replaceby : 0. "}},
        {"numchannels 4", {}},
        {"numchannels 5", {error + "could not dynamically change number of channels"}},
        {"postattributes numchannels", {post + "numchannels : 4 "}},
        {"replaceby 1", {}},
        {"postattributes replaceby", {post + "replaceby : 1. "}},
        {"replaceby -0.25 7", {}},
        {"postattributes replaceby", {post + "replaceby : -0.25 "}},
        {"replaceby foo", {}},
        {"postattributes replaceby", {post + "replaceby : 0. "}},
        {"mode xyz", {}},
        {"postattributes mode", {post + "mode : xyz "}},
        {"postdspstatus", {post + "dsp processing is enabled", post + "dsp is off"}},
        {"clear", {}},
    };
    for (const auto& [message, rows] : answers) EXPECT_EQ(Send(*box, message), rows) << message;
}

TEST_F(FixNaNObject, PostsItsDspState) {
    const auto box = Create("@numchannels 2");
    velmohost::DspChain chain;
    chain.Start(*box, 48000.0, 64, {false, true}, {false, true});
    const std::string post = "[post] tesk.fixnan~: ";
    EXPECT_EQ(Send(*box, "postdspstate"),
              (Rows{post + "samplerate           : 48 kHz", post + "buffersize           : 64",
                    post + "downsampling         : false", post + "numinputs connected  : 1 / 2",
                    post + "auto-mute is disabled", post + "numoutputs connected : 1 / 2"}));
    EXPECT_EQ(Send(*box, "postdspstatus"), (Rows{post + "dsp processing is enabled", post + "dsp is on"}));
    chain.Stop();
    EXPECT_EQ(Send(*box, "postdspstatus").back(), post + "dsp is off");
}

TEST_F(FixNaNObject, IsNotCreatedWithoutItsChannelCount) {
    ASSERT_TRUE(Create(""));  // the class is loaded
    const velmotest::DeliberateLeak givenUpRecords;
    t_symbol* const className = gensym("tesk.fixnan~");
    EXPECT_EQ(object_new_typed(gensym("box"), className, 0, nullptr), nullptr);
    EXPECT_EQ(window.Take(), Rows{"[bug] tesk.fixnan~: couldnt process dictionnary"});

    t_dictionary* const arguments = dictionary_new();
    dictionary_appendsym(arguments, gensym("mode"), gensym("lastvalue"));
    t_atom atom{};
    atom_setobj(&atom, arguments);
    EXPECT_EQ(object_new_typed(gensym("box"), className, 1, &atom), nullptr);
    EXPECT_EQ(window.Take(), (Rows{"[error] tesk.fixnan~: dictionary doesnt have entry for numchannels",
                                   "[error] tesk.fixnan~: error parsing dictionary"}));
    object_free(arguments);

    EXPECT_FALSE(Create("@numchannels 2 5"));
    EXPECT_EQ(window.Take()[0], "[error] tesk.fixnan~: error getting atom value from dict for entry numchannels");

    // A host that frees what a failed constructor left behind does no harm.
    object_free(object_alloc(class_findbyname(gensym("box"), className)));
    EXPECT_EQ(window.Take(), Rows{});
}

}  // namespace
