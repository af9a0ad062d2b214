#include <nlohmann/json.hpp>

#include "PluginFixture.h"
#include "core/AtomText.h"
#include "core/Objects.h"

#include "support/FileBytes.h"
#include "support/TempFolder.h"

namespace {

using FixNaNState = PluginFixture;
using nlohmann::json;

std::string Text(const std::optional<std::vector<t_atom>>& value) {
    return value ? velmohost::AtomsToText(static_cast<long>(value->size()), value->data()) : "none";
}

TEST_F(FixNaNState, GoesAsADictionaryToAnotherObject) {
    const auto sender = Create("@numchannels 2 @mode givenvalue @replaceby -0.25");
    const auto receiver = Create("@numchannels 2");
    velmohost::SetOutletListener(
        [&](t_object* owner, t_outlet*, unsigned, t_symbol* selector, long ac, const t_atom* av) {
            ASSERT_EQ(owner, sender->Object());
            receiver->Send(std::string(selector->s_name) + " " + velmohost::AtomsToText(ac, av));
        });
    EXPECT_EQ(Send(*sender, "dumpdict"), Rows{});
    EXPECT_EQ(Text(receiver->GetValueOf()), "givenvalue 2 -0.25");

    // A part of the state leaves the rest alone.
    sender->Send("mode lastvalue");
    sender->Send("replaceby 3.");
    EXPECT_EQ(Send(*sender, "dumpdict replaceby"), Rows{});
    EXPECT_EQ(Text(receiver->GetValueOf()), "givenvalue 2 3.");

    // What cannot change is said, and the rest is taken.
    const auto wider = Create("@numchannels 4");
    receiver->Send("mode other");
    velmohost::SetOutletListener([&](t_object*, t_outlet*, unsigned, t_symbol*, long ac, const t_atom* av) {
        wider->Send("dictionary " + velmohost::AtomsToText(ac, av));
    });
    EXPECT_EQ(Send(*receiver, "dumpdict"),
              Rows{"[error] tesk.fixnan~: could not dynamically change number of channels"});
    EXPECT_EQ(Text(wider->GetValueOf()), "other 4 3.");
    velmohost::SetOutletListener({});
}

TEST_F(FixNaNState, GoesIntoAJsonFile) {
    const TempFolder folder;
    const auto box = Create("@numchannels 250 @mode \"say \\\"x\\\\y\\\"\" @replaceby 0.5");
    EXPECT_EQ(Send(*box, "exportdict \"" + folder / "state.json" + "\""), Rows{});
    EXPECT_EQ(json::parse(ReadBytes(folder / "state.json")),
              (json{{"mode", "say \"x\\y\""}, {"numchannels", 250}, {"replaceby", 0.5}}));
    EXPECT_EQ(Send(*box, "exportdict \"" + folder / "no/state.json" + "\""), Rows{});
}

TEST_F(FixNaNState, IsStoredInAPresetChangedAndRecalled) {
    const auto box = Create("@numchannels 2 @mode givenvalue @replaceby 0.1");
    const auto preset = box->StorePreset();
    ASSERT_TRUE(preset);
    box->Send("mode lastvalue");
    box->Send("replaceby 7.");
    EXPECT_TRUE(box->RecallPreset(*preset));
    const auto value = box->GetValueOf();
    EXPECT_EQ(Text(value), "givenvalue 2 " + velmohost::AtomsToText(1, &value->back()));
    EXPECT_EQ(atom_getfloat(&value->back()), static_cast<double>(0.1f));
    EXPECT_EQ(window.Take(), Rows{});
}

TEST_F(FixNaNState, ChangesNothingWhenTheNumberOfValuesIsWrong) {
    const auto box = Create("@mode givenvalue @replaceby 0.5");
    const std::string error = "[error] tesk.fixnan~: setvalueof error (received ";
    for (const auto& [values, count] : {std::pair{"lastvalue 1", "2"}, std::pair{"lastvalue 1 2. 3.", "4"}}) {
        const std::string row = error + count + " atoms. 3 atoms were expected)";
        EXPECT_EQ(Send(*box, std::string("recallpreset ") + values), Rows{row});
        box->SetValueOf(velmohost::ParseAtoms(values));
        EXPECT_EQ(window.Take(), Rows{row});
        EXPECT_EQ(Text(box->GetValueOf()), "givenvalue 1 0.5");
    }
}

}  // namespace
