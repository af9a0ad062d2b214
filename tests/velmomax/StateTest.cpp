#include "Keeper.h"

namespace velmomax {
namespace {

const std::string changed = "3 0.5 1. -2.5 \"two words\"";

OddAnswer Holds(std::size_t numAtoms) {
    return {MAX_ERR_NONE, std::vector<t_atom>(numAtoms, velmohost::ParseAtoms("7")[0]), 0};
}

OddAnswer HoldsAnObject() { return {MAX_ERR_NONE, std::vector<t_atom>(1), 0}; }

OddAnswer Fails(t_max_err error) { return {error, {}, 0}; }

Rows Restore(Keeper& keeper, const std::string& values) {
    std::vector<t_atom> atoms = velmohost::ParseAtoms(values);
    velmomax_setvalueof(keeper.x, static_cast<long>(atoms.size()), atoms.data());
    return keeper.window.Take();
}

TEST(State, IsAlphabeticalWithFloatsOf32BitsAndRefusedAsAWholeWhenItsLengthIsWrong) {
    Keeper keeper;
    EXPECT_EQ(Restore(keeper, "3 0.5 0.1 -2.5 \"two words\""), Rows{}) << "count, level, list, name";
    EXPECT_EQ(keeper.x->list[0], static_cast<double>(0.1f));
    keeper.x->list[0] = 1.0;
    const std::string error = "[error] keeper: setvalueof error (received ";
    EXPECT_EQ(Restore(keeper, "1 2. 3. 4. a 5"), Rows{error + "6 atoms. 5 atoms were expected)"});
    EXPECT_EQ(Restore(keeper, "1 2. 3. 4."), Rows{error + "4 atoms. 5 atoms were expected)"});
    EXPECT_EQ(Restore(keeper, ""), Rows{});
    EXPECT_EQ(keeper.State(), changed);
    keeper.x->list[0] = 0.1;  // keeps 64 bits
    Restore(keeper, keeper.State());
    EXPECT_EQ(keeper.x->list[0], static_cast<double>(0.1f));
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
        EXPECT_EQ(velmohost::AtomsToText(ac, memory.data()), room < 5 ? "3 0.5" : changed);
        EXPECT_EQ(keeper.window.Take(), rows);
    }
    t_atom* av = nullptr;
    velmomax_getvalueof(keeper.x, nullptr, &av);
    EXPECT_EQ(keeper.window.Take(), Rows{"[bug] keeper: velmomax_getvalueof : there is a problem"});
}

TEST(State, ReportsAttributesThatCannotBeRead) {
    Keeper keeper;
    keeper.Change();
    const std::string counting = "[bug] keeper: GetNumberOfAtomsNeededToStoreAttribute : ";
    const std::string bug = "[bug] keeper: velmomax_getvalueof : ", stored = " stored by the pattrstorage";
    const OddAnswer one = Holds(1), negative{MAX_ERR_NONE, {}, -2};
    struct {
        std::deque<OddAnswer> readings;  // when the state is listed, when it is counted, when it is copied
        std::string state;
        Rows rows;
    } const cases[] = {
        {{one, one, one}, changed + " 7", {}},
        {{Fails(MAX_ERR_GENERIC)}, changed, {counting + "MAX_ERR_GENERIC in object_attr_getvalueof (odd)"}},
        {{negative}, changed, {counting + "error in object_attr_getvalueof odd (ac=-2)"}},
        {{one, one, Fails(MAX_ERR_OUT_OF_MEM)},
         changed,
         {bug + "MAX_ERR_OUT_OF_MEM in object_attr_getvalueof (odd)",
          "[error] keeper: 6 atoms allocated but 5 atoms" + stored}},
        {{one, one, negative},
         changed,
         {bug + "error in object_attr_getvalueof odd (tmpac=-2)",
          "[error] keeper: 6 atoms allocated but 5 atoms" + stored}},
        {{one, one, HoldsAnObject()},
         changed,
         {bug + "unknown atom type", "[error] keeper: 6 atoms allocated but 5 atoms" + stored}},
        {{one, one, Holds(3)}, changed + " 7", {"[error] keeper: 6 atoms allocated but 8 atoms" + stored}},
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
    Keeper::oddSetting = MAX_ERR_GENERIC;
    Keeper::odd = {one, one, one};
    EXPECT_EQ(Restore(keeper, changed + " 7"), Rows{"[error] keeper: MAX_ERR_GENERIC in object_attr_setvalueof odd"});
    EXPECT_EQ(keeper.State(), changed);
    Keeper::odd = {one, one, Holds(2)};  // grows while the others are set
    EXPECT_EQ(Restore(keeper, changed + " 7"), Rows{"[error] keeper: error reading atoms in velmomax_setvalueof"});
    std::vector<t_atom> values = velmohost::ParseAtoms(changed);
    atom_setobj(&values[0], keeper.x);
    velmomax_setvalueof(keeper.x, 5, values.data());
    EXPECT_EQ(keeper.window.Take(), Rows{"[warning] keeper: unknown atom type in velmomax_setvalueof"});
}

TEST(Preset, IsNotStoredWhenTheStateCannotBeReadOrIsTooLong) {
    Keeper keeper;
    void* const binbuf = binbuf_new();
    gensym("_preset")->s_thing = static_cast<t_object*>(binbuf);
    const OddAnswer one = Holds(1), tooMany = Holds(40000);  // for the host's 16-bit count
    for (const auto& last : {std::deque{one, one, one, one, Fails(MAX_ERR_GENERIC)}, std::deque(5, tooMany)}) {
        Keeper::odd = last;
        EXPECT_EQ(keeper.Send("preset").back(), "[error] keeper: error in velmomax_preset");
    }
    gensym("_preset")->s_thing = nullptr;
    EXPECT_EQ(keeper.Send("preset"), Rows{}) << "nobody is storing";
    long byte = 0, index = 0;
    t_atom atom{};
    EXPECT_EQ(binbuf_getatom(binbuf, &byte, &index, &atom), 1) << "empty";
    object_free(binbuf);
}

}  // namespace
}  // namespace velmomax
