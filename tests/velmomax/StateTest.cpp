#include <gtest/gtest.h>

#include "Keeper.h"
#include "core/AtomText.h"
#include "core/Messages.h"

namespace velmomax {
namespace {

const std::string changed = "3 0.5 1. -2.5 \"two words\"";

OddAnswer Holds(std::size_t numAtoms) { return {MAX_ERR_NONE, std::vector<t_atom>(numAtoms, Atom("7")), 0}; }

OddAnswer HoldsAnObject() {
    OddAnswer answer = Holds(1);
    atom_setobj(&answer.atoms[0], nullptr);
    return answer;
}

OddAnswer Fails(t_max_err error) { return {error, {}, 0}; }

void Restore(Keeper& keeper, const std::string& values) {
    std::vector<t_atom> atoms = velmohost::ParseAtoms(values);
    velmohost::CallMethodForResult(&keeper.x->ob, gensym("setvalueof"), t_max_err{-1}, static_cast<long>(atoms.size()),
                                   atoms.data());
}

TEST(State, TravelsThroughPattrToAnotherObject) {
    Keeper keeper, other;
    keeper.Change();
    long ac = 0;
    t_atom* av = nullptr;
    EXPECT_EQ(velmohost::CallMethodForResult(&keeper.x->ob, gensym("getvalueof"), t_max_err{-1}, &ac, &av), 0);
    EXPECT_EQ(velmohost::AtomsToText(ac, av), changed) << "alphabetical: count, level, list, name";
    EXPECT_EQ(velmohost::CallMethodForResult(&other.x->ob, gensym("setvalueof"), t_max_err{-1}, ac, av), 0);
    EXPECT_EQ(other.State(), changed);
    EXPECT_EQ(other.x->list[1], -2.5);
    sysmem_freeptr(av);

    keeper.x->list[0] = 0.1;  // keeps 64 bits, the state 32
    Restore(other, keeper.State());
    EXPECT_EQ(other.x->list[0], static_cast<double>(0.1f));
    EXPECT_EQ(other.window.Take(), Rows{});
}

TEST(State, IsRefusedAsAWholeWhenItsLengthIsWrong) {
    Keeper keeper;
    keeper.Change();
    const std::string error = "[error] keeper: setvalueof error (received ";
    const std::pair<const char*, Rows> lists[] = {
        {"1 2. 3. 4. a 5", {error + "6 atoms. 5 atoms were expected)"}},
        {"1 2. 3. 4.", {error + "4 atoms. 5 atoms were expected)"}},
        {"1", {error + "1 atoms. 5 atoms were expected)"}},
        {"", {}},
    };
    for (const auto& [values, rows] : lists) {
        Restore(keeper, values);
        EXPECT_EQ(keeper.window.Take(), rows);
        EXPECT_EQ(keeper.State(), changed);
    }
    velmomax_setvalueof(keeper.x, 5, nullptr);
    EXPECT_EQ(keeper.window.Take(), Rows{});
}

TEST(State, GoesIntoMemoryPassedInAsFarAsItFits) {
    Keeper keeper;
    keeper.Change();
    const std::string warning = "[warning] keeper: velmomax_getvalueof : memory passed in";
    const std::string error = "[error] keeper: 5 atoms allocated but 2 atoms stored by the pattrstorage";
    const std::pair<long, Rows> rooms[] = {{2, {warning, error}}, {5, {warning}}, {8, {warning}}};
    for (const auto& [room, rows] : rooms) {
        std::vector<t_atom> memory(static_cast<std::size_t>(room));
        t_atom* av = memory.data();
        long ac = room;
        velmomax_getvalueof(keeper.x, &ac, &av);
        EXPECT_EQ(av, memory.data());
        EXPECT_EQ(velmohost::AtomsToText(ac, av), room < 5 ? "3 0.5" : changed);
        EXPECT_EQ(keeper.window.Take(), rows);
    }
    long ac = 0;
    t_atom* av = nullptr;
    velmomax_getvalueof(nullptr, &ac, &av);
    velmomax_getvalueof(keeper.x, nullptr, &av);
    velmomax_getvalueof(keeper.x, &ac, nullptr);
    const std::string bug = "velmomax_getvalueof : there is a problem";
    EXPECT_EQ(keeper.window.Take(), (Rows{"[bug] " + bug, "[bug] keeper: " + bug, "[bug] keeper: " + bug}));
}

TEST(State, ReportsAttributesThatCannotBeRead) {
    Keeper keeper;
    keeper.Change();
    const std::string bug = "[bug] keeper: ", stored = "[error] keeper: 6 atoms allocated but ";
    const OddAnswer one = Holds(1), negative{MAX_ERR_NONE, {}, -2};
    struct {
        std::deque<OddAnswer> readings;  // when the state is listed, when it is counted, when it is copied
        std::string state;
        Rows rows;
    } const cases[] = {
        {{one, one, one}, changed + " 7", {}},
        {{Fails(MAX_ERR_GENERIC)},
         changed,
         {bug + "GetNumberOfAtomsNeededToStoreAttribute : MAX_ERR_GENERIC in object_attr_getvalueof (odd)"}},
        {{negative},
         changed,
         {bug + "GetNumberOfAtomsNeededToStoreAttribute : error in object_attr_getvalueof odd (ac=-2)"}},
        {{one, one, Fails(MAX_ERR_OUT_OF_MEM)},
         changed,
         {bug + "velmomax_getvalueof : MAX_ERR_OUT_OF_MEM in object_attr_getvalueof (odd)",
          stored + "5 atoms stored by the pattrstorage"}},
        {{one, one, negative},
         changed,
         {bug + "velmomax_getvalueof : error in object_attr_getvalueof odd (tmpac=-2)",
          stored + "5 atoms stored by the pattrstorage"}},
        {{one, one, HoldsAnObject()},
         changed,
         {bug + "velmomax_getvalueof : unknown atom type", stored + "5 atoms stored by the pattrstorage"}},
        {{one, one, Holds(3)}, changed + " 7", {stored + "8 atoms stored by the pattrstorage"}},
    };
    for (const auto& [readings, state, rows] : cases) {
        Keeper::odd = readings;
        EXPECT_EQ(keeper.State(), state);
        EXPECT_EQ(keeper.window.Take(), rows);
    }
}

TEST(State, IsRestoredUpToTheAttributeThatFails) {
    Keeper keeper;
    const OddAnswer one = Holds(1);
    std::vector<t_atom> values = velmohost::ParseAtoms(changed + " 7");
    Keeper::oddSetting = MAX_ERR_GENERIC;
    Keeper::odd = {one, one, one};
    velmomax_setvalueof(keeper.x, 6, values.data());
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: MAX_ERR_GENERIC in object_attr_setvalueof odd"});
    EXPECT_EQ(keeper.State(), changed);

    Keeper::odd = {one, one, Holds(2)};  // grows while the others are set
    velmomax_setvalueof(keeper.x, 6, values.data());
    EXPECT_EQ(keeper.window.Take(), Rows{"[error] keeper: error reading atoms in velmomax_setvalueof"});

    atom_setobj(&values[0], keeper.x);
    velmomax_setvalueof(keeper.x, 5, values.data());
    EXPECT_EQ(keeper.window.Take(), Rows{"[warning] keeper: unknown atom type in velmomax_setvalueof"});
}

/// The binbuf that the host holds ready while it stores a preset.
class StoringPreset {
public:
    StoringPreset() { gensym("_preset")->s_thing = static_cast<t_object*>(binbuf); }
    ~StoringPreset() {
        gensym("_preset")->s_thing = nullptr;
        object_free(binbuf);
    }
    std::vector<t_atom> Atoms() const {
        std::vector<t_atom> atoms;
        long byte = 0, index = 0;
        for (t_atom atom; binbuf_getatom(binbuf, &byte, &index, &atom) == 0;) atoms.push_back(atom);
        return atoms;
    }

private:
    void* const binbuf = binbuf_new();
};

TEST(Preset, IsStoredAndRecalled) {
    Keeper keeper;
    keeper.Change();
    EXPECT_EQ(keeper.Send("preset"), Rows{}) << "nobody is storing";
    std::vector<t_atom> line;
    {
        const StoringPreset preset;
        EXPECT_EQ(keeper.Send("preset"), Rows{});
        line = preset.Atoms();
    }
    ASSERT_EQ(line.size(), 9u);
    EXPECT_EQ(atom_getobj(&line[0]), keeper.x);
    EXPECT_EQ(velmohost::AtomsToText(7, &line[1]), "keeper recallpreset " + changed);

    EXPECT_EQ(keeper.Send("recallpreset 0 0. 0. 0. nothing"), Rows{});
    EXPECT_EQ(keeper.State(), "0 0. 0. 0. nothing");
    velmohost::SendMessage(&keeper.x->ob, 0, atom_getsym(&line[2]), 5, &line[3]);  // as the host does with the line
    EXPECT_EQ(keeper.State(), changed);
    EXPECT_EQ(keeper.Send("recallpreset 1"),
              Rows{"[error] keeper: setvalueof error (received 1 atoms. 5 atoms were expected)"});
}

TEST(Preset, IsNotStoredWhenTheStateCannotBeRead) {
    Keeper keeper;
    const StoringPreset preset;
    const OddAnswer one = Holds(1);
    Keeper::odd = {one, one, one, one, Fails(MAX_ERR_GENERIC)};
    EXPECT_EQ(keeper.Send("preset").back(), "[error] keeper: error in velmomax_preset");
    const std::size_t tooMany = 40000;  // for the host's 16-bit count
    Keeper::odd = {Holds(tooMany), Holds(tooMany), Holds(tooMany), Holds(tooMany), Holds(tooMany)};
    EXPECT_EQ(keeper.Send("preset"), Rows{"[error] keeper: error in velmomax_preset"});
    EXPECT_TRUE(preset.Atoms().empty());
}

}  // namespace
}  // namespace velmomax
