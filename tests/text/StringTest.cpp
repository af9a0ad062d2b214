#include "text/VelmoDspString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <sstream>

#include "utils/VelmoDspException.h"

namespace velmodsp {
namespace {

TEST(String, WritesNumbersByTheLibrarysRules) {
    const struct {
        String text;
        const char* expected;
    } rows[] = {{String(4294967295u), "4294967295"},
                {String(true), "true"},
                {String(0.1f), "0.100000001"},
                {String(1.0), "1"},
                {String(std::nan("")), "nan"},
                {String(-std::nan("")), "nan"},
                {String(2.5, 0), "2.5"},
                {String(0.125, 2), "0.13"},
                {String(0.5, 2), "0.50"},
                {String(-12.345f, 1), "-12.3"},
                {String(-0.004, 2), "-0.00"},
                {String(-0.0, 2), "0.00"},
                {String(9.999, 2), "10.00"},
                {String(-1e20, 2), "-1e+20"},
                {String(9e18, 3), "9000000000000000000.000"},
                {String(2.5, String("%.3f dB")), "2.500 dB"},
                {String(10u, String("%04x")), "000a"},
                {String(1.0, String("%050.1f")), "000000000000000000000000000000000000000000000001.0"}};
    for (const auto& row : rows) EXPECT_EQ(row.text, row.expected);
}

TEST(String, FindsTextsFromBothEnds) {
    const String text("abcABCabc");
    EXPECT_EQ(text.IndexOfFirstOccurence("bc", false), 1);
    EXPECT_EQ(text.IndexOfFirstOccurence("BC", false), 4);
    EXPECT_EQ(text.IndexOfFirstOccurence("BC", true), 1);
    EXPECT_EQ(text.IndexOfLastOccurence("BCA", true), 4);
    EXPECT_EQ(text.IndexOfLastOccurence('B', true), 7);
    EXPECT_EQ(String("aaa").IndexOfLastOccurence("aa", false), 1) << "overlapping occurrences count";

    for (const char* nothing : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(text.IndexOfFirstOccurence(nothing, false), -1);
        EXPECT_EQ(String().IndexOfLastOccurence(nothing, true), -1);
    }
    EXPECT_FALSE(String().StartsWith('\0'));
    EXPECT_FALSE(String().EndsWith('\0'));
}

TEST(String, CutsAroundOccurrences) {
    const String path("a/B/c");
    EXPECT_EQ(path.FromFirstOccurrenceOf("/", false, false), "B/c");
    EXPECT_EQ(path.FromFirstOccurrenceOf("b", true, true), "B/c");
    EXPECT_EQ(path.FromLastOccurrenceOf("/", true, false), "/c");
    EXPECT_EQ(path.UpToFirstOccurrenceOf("/", true, false), "a/");
    EXPECT_EQ(path.UpToLastOccurrenceOf("/", false, false), "a/B");
    EXPECT_EQ(path.UpToLastOccurrenceOf("b/", true, true), "a/B/");
    EXPECT_EQ(path.FromFirstOccurrenceOf("b", false, false), "");

    const String abc("abc");
    EXPECT_EQ(abc.SubString(1, 99) + "|" + abc.SubString(2, 1) + "|" + abc.SubString(10, 20), "bc||");
    EXPECT_EQ(abc.SubString(2) + "|" + abc.SubString(3), "c|");
    EXPECT_EQ(String("x///").TrimCharactersAtEnd("/"), "x");
    EXPECT_EQ(String("abab").TrimCharactersAtEnd("ab"), "");
    EXPECT_EQ(String("x").TrimCharactersAtEnd(""), "x");
}

TEST(String, RemovesAndReplacesInPlace) {
    const auto changed = [](const char* text, const auto& change) {
        String string(text);
        change(string);
        return string;
    };
    EXPECT_EQ(changed("aa", [](String& s) { s.Replace("a", "aa"); }), "aaaa");
    EXPECT_EQ(changed("aaa", [](String& s) { s.Replace("aa", "b"); }), "ba");
    EXPECT_EQ(changed("a", [](String& s) { s.Replace("a", nullptr); }), "a");
    EXPECT_EQ(changed("abcab", [](String& s) { s.RemoveAllOccurence("ab"); }), "c");
    EXPECT_EQ(changed("abc/def/g", [](String& s) { s.RemoveFirstOccurence("/"); }), "def/g");
    EXPECT_EQ(changed("abc", [](String& s) { s.RemoveFirstOccurence(String("/")); }), "abc");
    EXPECT_EQ(changed("a/b/c", [](String& s) { s.RemoveLastOccurence("/"); }), "a/bc");
    EXPECT_EQ(changed("abc", [](String& s) { s.RemoveLastCharacters(2); }), "a");
    EXPECT_EQ(changed(" \t\n\v\f\ra b ", [](String& s) { s.RemoveLeadingSpaces(); }), "a b ");
    EXPECT_EQ(changed(" a b\r\n", [](String& s) { s.RemoveLeadingAndTrailingSpaces(); }), "a b");
    EXPECT_EQ(changed("  ", [](String& s) { s.RemoveLeadingAndTrailingSpaces(); }), "");
    EXPECT_EQ(changed("\xC4z", [](String& s) { s.MakeUpperCase(); }), "\xC4Z") << "bytes above 127 are no characters";
    EXPECT_EQ(changed("ab", [](String& s) { s.Append(s); }), "abab");
}

TEST(String, KeepsBytesOfEveryValueButEqualityStopsAtAZeroByte) {
    const String zero(std::string("a\0b", 3));
    EXPECT_EQ(zero.Length(), 3u);
    EXPECT_TRUE(zero == "a");
    EXPECT_TRUE("a" == zero);
    EXPECT_GT(zero.Compare("a"), 0);
    EXPECT_LT(String("\x7F"), String("\xC4")) << "bytes compare as unsigned";
    EXPECT_LT(String("ab"), String("abc"));
    EXPECT_EQ(("n" + String("=") + 3u + ' ' + 18446744073709551615ull), "n=3 18446744073709551615");
    std::ostringstream stream;
    stream << std::setw(5) << std::setfill('.') << String("abc");
    EXPECT_EQ(stream.str(), "..abc");
}

#ifndef _WIN32  // where sizes have 32 bits, and a text may be that long
TEST(String, KeepsItsTextWhenGrowthFails) {
    String text("kept");
    EXPECT_THROW(text.Resize(~0ul, ' '), Exception);
    EXPECT_EQ(text, "kept");
}
#endif

TEST(StringFormatting, WritesFrequenciesAsPeopleReadThem) {
    const struct {
        float hz;
        const char* expected;
    } rows[] = {
        {44100.0f, "44.1 kHz"}, {std::nanf(""), "44.1 kHz"}, {48000.0f, "48 kHz"},   {22050.0f, "22050 Hz"},
        {999.9f, "999 Hz"},     {1000.0f, "1 kHz"},          {999000.0f, "999 kHz"}, {999999.9f, "999999 Hz"},
        {2.5e6f, "2.50 MHz"},   {1e9f, "1.00 GHz"},          {-0.5f, "0 Hz"},        {-1e15f, "-999999986991104 Hz"},
        {INFINITY, "inf GHz"}};
    for (const auto& row : rows) EXPECT_EQ(StringFormatting::FrequencyToString<float>(row.hz), row.expected);
}

TEST(Characters, ReadTwoHexadecimalDigits) {
    EXPECT_EQ(Characters::HexaToInt('F', 'f'), 255);
    EXPECT_EQ(Characters::HexaToInt('A', '9'), 169);
    EXPECT_EQ(Characters::HexaToInt('a', '0'), 160);
    for (const char* pair : {"g0", "0G", "/0", "0:", "@0"})
        EXPECT_EQ(Characters::HexaToInt(pair[0], pair[1]), -1) << pair;
}

}  // namespace
}  // namespace velmodsp
