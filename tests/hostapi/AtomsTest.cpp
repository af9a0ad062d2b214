#include <cmath>
#include <limits>

#include "ApiObjects.h"

namespace velmotest {
namespace {

t_atom FloatAtom(double value) {
    t_atom atom;
    atom_setfloat(&atom, value);
    return atom;
}

TEST(Atoms, BecomeNumbersByCuttingWideningAndReading) {
    constexpr t_atom_long top = std::numeric_limits<t_atom_long>::max();
    const struct {
        const char* text;
        t_atom_long asLong;
        double asFloat;
    } rows[] = {
        {"2.9", 2, 2.9},          {"-2.9", -2, -2.9},      {"1e300", top, 1e300}, {"\"17\"", 17, 17},
        {"\"-1.5e1\"", -15, -15}, {"\"17 apples\"", 0, 0}, {"inf", 0, 0},         {"\"\"", 0, 0},
    };
    for (const auto& row : rows) {
        const t_atom atom = ParseAtoms(row.text).front();
        EXPECT_EQ(atom_getlong(&atom), row.asLong) << row.text;
        EXPECT_EQ(atom_getfloat(&atom), row.asFloat) << row.text;
    }
    const t_atom nan = FloatAtom(NAN), nothing{};
    EXPECT_EQ(atom_getlong(&nan), 0);
    EXPECT_EQ(atom_getlong(&nothing), 0);
    EXPECT_EQ(atom_getsym(&nan), gensym(""));
    EXPECT_EQ(atom_getobj(&nan), nullptr);
    t_atom_long unwritten = -1;
    EXPECT_NE(atom_arg_getlong(&unwritten, 1, 1, &nan), 0);
    EXPECT_EQ(unwritten, -1);
}

TEST(AtomText, IsReadByTheRulesOfABox) {
    const struct {
        const char* text;
        std::string types;   // of symbols, longs and floats
        const char* values;  // as plain text
    } rows[] = {{"foo 1 -2 +3", "slll", "foo 1 -2 3"},
                {"1. .5 2e3 -1.5E-1", "ffff", "1.000000 0.500000 2000.000000 -0.150000"},
                {"1.2.3 2e - . 0x10 nan inf", "sssssss", "1.2.3 2e - . 0x10 nan inf"},
                {"\"two words\" \"12\" \"\"", "sss", "two words 12 "},
                {"a\\ b \\12 \\\"q\\\"", "sss", "a b 12 \"q\""},
                {"\"open quote", "s", "open quote"},
                {"9223372036854775807", "l", "9223372036854775807"},
                {"9223372036854775808", "f", "9223372036854775808.000000"},
                {" \t\n ", "", ""}};
    constexpr long plain = OBEX_UTIL_ATOM_GETTEXT_SYM_NO_QUOTE | OBEX_UTIL_ATOM_GETTEXT_FORCE_ZEROS;
    for (const auto& row : rows) {
        const std::vector<t_atom> atoms = ParseAtoms(row.text);
        std::string types;
        for (const t_atom& atom : atoms) types += atom.a_type == A_SYM ? 's' : atom.a_type == A_LONG ? 'l' : 'f';
        EXPECT_EQ(types, row.types) << row.text;
        EXPECT_EQ(AtomsToText(static_cast<long>(atoms.size()), atoms.data(), plain), row.values) << row.text;
    }
}

TEST(AtomText, GoesIntoTheCallersMemoryOrANewCopy) {
    long ac = 0;
    t_atom* av = nullptr;
    ASSERT_EQ(atom_setparse(&ac, &av, "mode 3 0.25"), MAX_ERR_NONE);
    ASSERT_EQ(ac, 3);
    long size = 0;
    char* text = nullptr;
    ASSERT_EQ(atom_gettext(ac, av, &size, &text, 0), MAX_ERR_NONE);
    EXPECT_STREQ(text, "mode 3 0.25");
    sysmem_freeptr(text);

    char small[6] = "";
    text = small;
    size = sizeof(small);
    atom_gettext(ac, av, &size, &text, 0);
    EXPECT_STREQ(small, "mode ");
    sysmem_freeptr(av);

    t_atom own[2];
    av = own;
    ac = 2;
    ASSERT_EQ(atom_setparse(&ac, &av, "1 2 3"), MAX_ERR_NONE);
    EXPECT_EQ(av, own);
    EXPECT_EQ(AtomsToText(ac, av), "1 2");
}

TEST(AtomFormat, ReadsEveryLetter) {
    const float floats[] = {0.5f, 1.5f};
    const double doubles[] = {2.25};
    const t_atom_long longs[] = {4, 5};
    t_symbol* const symbols[] = {gensym("x"), gensym("two words")};
    t_atom single = FloatAtom(9.5);
    const Owned<t_dictionary> object(dictionary_new());
    long ac = 0;
    t_atom* av = nullptr;
    ASSERT_EQ(atom_setformat(&ac, &av, "clfdsoaFDLSpA", 'A', t_atom_long{1} << 40, 0.5, 0.25, gensym("s"), object.get(),
                             &single, 2L, floats, 1L, doubles, 2L, longs, 2L, symbols, "p 1", 1L, &single),
              MAX_ERR_NONE);
    EXPECT_EQ(AtomsToText(ac, av),
              "65 1099511627776 0.5 0.25 s <dictionary> 9.5 0.5 1.5 2.25 4 5 x \"two words\" p 1 9.5");
    sysmem_freeptr(av);
    av = nullptr;
    ac = 0;
    EXPECT_NE(atom_setformat(&ac, &av, "l?", t_atom_long{1}), MAX_ERR_NONE);
    EXPECT_EQ(av, nullptr);
}

}  // namespace
}  // namespace velmotest
