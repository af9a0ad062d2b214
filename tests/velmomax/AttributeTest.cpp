#include <set>

#include "Probe.h"

namespace velmomax {
namespace {

Rows ListOfNames(Probe& probe, MaxAttribute::AttrSortingType sortingType, bool onlyState = false) {
    std::vector<t_symbol*> symbols;
    MaxAttribute::GetListOfAttributesName(probe.x, symbols, sortingType);
    if (onlyState) MaxAttribute::RemoveInvisibleAndOpaqueAttributes(probe.x, symbols);
    Rows names;
    for (const t_symbol* symbol : symbols) names.emplace_back(symbol->s_name);
    return names;
}

TEST(MaxAttribute, ReadsAPropertysFirstValueAsText) {
    Probe probe;
    struct {
        const char *attribute, *property, *expected;
    } const rows[] = {
        {"amount", "label", "how much"}, {"amount", "maxvalue", "250"},
        {"amount", "limits", "7"},   // a list reads as its first value
        {"amount", "step", "0.13"},  // 0.125: two decimals, ties away from zero
        {"amount", "missing", "none"},   {"missing", "label", "none"},
    };
    for (const auto& [attribute, property, expected] : rows) {
        EXPECT_EQ(MaxAttribute(probe.x, gensym(attribute)).GetValueOf(gensym(property), "none"), expected)
            << attribute << " " << property;
    }
    EXPECT_EQ(probe.window.Take(), Rows{});
    MaxAttribute(probe.x, gensym("classdescription")).GetValueOf(gensym("methods"), "");  // a dictionary
    EXPECT_EQ(probe.window.Take(),
              Rows{"[post] MaxAttribute::GetValueOf : classdescription (methods): unhandled atom type ?"});
}

TEST(MaxAttribute, ReadsOrderVisibilityAndChoices) {
    Probe probe;
    const MaxAttribute amount(probe.x, gensym("amount")), ghost(probe.x, gensym("ghost"));
    EXPECT_EQ(amount.GetOrder(), 3u);
    EXPECT_EQ(ghost.GetOrder(), 0u);
    EXPECT_FALSE(amount.IsInvisible());
    EXPECT_TRUE(ghost.IsInvisible());
    Rows choices;
    MaxAttribute(probe.x, gensym("word")).GetEnumChoices(choices, "none");
    EXPECT_EQ(choices, (Rows{"up", "down", "left"}));
    amount.GetEnumChoices(choices, "none");
    EXPECT_EQ(choices, Rows{"none"});
    EXPECT_EQ(probe.window.Take(), Rows{}) << "a property that is not there is no error";

    const MaxAttribute gain(probe.x, gensym("gain"));
    EXPECT_EQ(gain.GetOrder(), 0u);
    EXPECT_FALSE(gain.IsInvisible());
    MaxAttribute(probe.x, gensym("values")).GetEnumChoices(choices, "none");
    EXPECT_EQ(choices, (Rows{"one", ""}));
    EXPECT_EQ(probe.window.Take(), (Rows{"[post] bug ? order attribute is supposed to be of type long for gain",
                                         "[post] error attribute invisible not typed long ??",
                                         "[post] enumvals attribute with an atom that is not a symbol ??"}));
}

TEST(MaxAttribute, ComparesTheUnorderedAsGreaterThanEverything) {
    Probe probe;
    struct {
        const char *a, *b;
        int expected;
    } const rows[] = {{"amount", "word", 1}, {"word", "amount", -1}, {"amount", "amount", 0},    // 3, 1; 1, 3; 3, 3
                      {"word", "ghost", 1},  {"ghost", "word", 1},   {"ghost", "fontsize", 1}};  // 1 and none
    for (const auto& [nameOfA, nameOfB, expected] : rows) {
        const MaxAttribute a(probe.x, gensym(nameOfA)), b(probe.x, gensym(nameOfB));
        EXPECT_EQ(compareAttributeOrder(&a, &b), expected) << nameOfA << ", " << nameOfB;
    }
}

TEST(MaxAttribute, SortsByOrderWithTheUnorderedLast) {
    Probe probe;
    for (int i = 0; i < 500; ++i) {  // so many without an order that a sort by an inconsistent rule shows
        const std::string name = "extra" + std::to_string(i);
        object_addattr(probe.x, attribute_new(name.c_str(), gensym("long"), 0, nullptr, nullptr));
    }
    const Rows names = ListOfNames(probe, MaxAttribute::ByOrder);
    ASSERT_EQ(names.size(), 509u);
    EXPECT_EQ(Rows(names.begin(), names.begin() + 3), (Rows{"word", "values", "amount"}));
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 509u) << "none lost, none twice";
}

TEST(MaxAttribute, KeepsOnlyTheStateOfTheObject) {
    Probe probe;
    EXPECT_EQ(ListOfNames(probe, MaxAttribute::Alphabetical),
              (Rows{"amount", "broken", "classdescription", "externalversion", "fontsize", "gain", "ghost", "values",
                    "word"}));
    EXPECT_EQ(ListOfNames(probe, MaxAttribute::Alphabetical, true), (Rows{"amount", "gain", "values", "word"}));
    EXPECT_EQ(probe.window.Take().front(),
              "[bug] probe~: GetNumberOfAtomsNeededToStoreAttribute : MAX_ERR_OUT_OF_MEM in object_attr_getvalueof "
              "(broken)");
}

}  // namespace
}  // namespace velmomax
