#include <set>

#include "Probe.h"

namespace velmomax {
namespace {

TEST(Text, AtomsEndInOneBlankEachAndWholeFloatsKeepTheirPoint) {
    const std::pair<const char*, const char*> texts[] = {
        {"1 2 3", "1 2 3 "},
        {"1. 2.5 10. -0.25", "1. 2.5 10. -0.25 "},
        {"0.1 1e20 1e300", "0.1 100000002004087734272. inf "},  // as 32-bit floats
        {"up \"two words\" 7", "up two words 7 "},
    };
    for (const auto& [message, expected] : texts) {
        std::vector<t_atom> atoms = velmohost::ParseAtoms(message);
        atom_setobj(&atoms.emplace_back(), nullptr);  // atoms of other types add nothing
        std::string text = "left over";
        atomarray2string(static_cast<long>(atoms.size()), atoms.data(), text);
        EXPECT_EQ(text, expected);
    }
}

TEST(CommonSymbols, EverySlotHoldsTheSymbolOfItsName) {
    InitCommonSymbols();
    const std::set<t_symbol*> distinct(velmomax_common_symbols, velmomax_common_symbols + 404);
    EXPECT_EQ(distinct.size(), 404u);
    const std::pair<unsigned int, const char*> slots[] = {{0, "active"},  {46, ","},    {76, "dsp_add64"},  {81, ""},
                                                          {148, "label"}, {343, "z++"}, {403, "roomactive"}};
    for (const auto& [slot, name] : slots) EXPECT_EQ(CommonSymbol(slot), gensym(name)) << "slot " << slot;
}

}  // namespace
}  // namespace velmomax
