#include <nlohmann/json.hpp>

#include "PluginFixture.h"
#include "core/AtomText.h"
#include "core/Objects.h"

#include "support/FileBytes.h"
#include "support/TempFolder.h"

namespace {

using FixNaNState = PluginFixture;
using nlohmann::json;

std::string State(velmohost::Box& box) {
    const auto value = box.GetValueOf();
    return value ? velmohost::AtomsToText(static_cast<long>(value->size()), value->data()) : "none";
}

TEST_F(FixNaNState, GoesAsADictionaryToAnotherObject) {
    const auto sender = Create("@numchannels 2 @mode givenvalue @replaceby -0.25");
    const auto receiver = Create("@numchannels 2"), wider = Create("@numchannels 4");
    velmohost::SetOutletListener([&](t_object*, t_outlet*, unsigned, t_symbol* s, long ac, const t_atom* av) {
        receiver->Send(std::string(s->s_name) + " " + velmohost::AtomsToText(ac, av));
        wider->Send(std::string(s->s_name) + " " + velmohost::AtomsToText(ac, av));
    });
    EXPECT_EQ(Send(*sender, "dumpdict"), Rows{"[error] tesk.fixnan~: could not dynamically change number of channels"});
    EXPECT_EQ(State(*receiver), "givenvalue 2 -0.25");
    EXPECT_EQ(State(*wider), "givenvalue 4 -0.25") << "what can change does";
    velmohost::SetOutletListener({});
}

TEST_F(FixNaNState, GoesIntoAJsonFile) {
    const TempFolder folder;
    const auto box = Create("@numchannels 250 @mode \"say \\\"x\\\\y\\\"\" @replaceby 0.5");
    EXPECT_EQ(Send(*box, "exportdict \"" + folder / "state.json" + "\""), Rows{});
    EXPECT_EQ(json::parse(ReadBytes(folder / "state.json")),
              (json{{"mode", "say \"x\\y\""}, {"numchannels", 250}, {"replaceby", 0.5}}));
}

TEST_F(FixNaNState, IsStoredInAPresetChangedAndRecalled) {
    const auto box = Create("@numchannels 2 @mode givenvalue @replaceby 0.5");
    const auto preset = box->StorePreset();
    ASSERT_TRUE(preset);
    box->Send("mode lastvalue");
    box->Send("replaceby 7.");
    EXPECT_TRUE(box->RecallPreset(*preset));
    EXPECT_EQ(State(*box), "givenvalue 2 0.5");
    EXPECT_EQ(window.Take(), Rows{});
}

TEST_F(FixNaNState, ChangesNothingWhenTheNumberOfValuesIsWrong) {
    const auto box = Create("@mode givenvalue @replaceby 0.5");
    const std::string error = "[error] tesk.fixnan~: setvalueof error (received ";
    EXPECT_EQ(Send(*box, "recallpreset lastvalue 1"), Rows{error + "2 atoms. 3 atoms were expected)"});
    box->SetValueOf(velmohost::ParseAtoms("lastvalue 1 2. 3."));
    EXPECT_EQ(window.Take(), Rows{error + "4 atoms. 3 atoms were expected)"});
    EXPECT_EQ(State(*box), "givenvalue 1 0.5");
}

}  // namespace
