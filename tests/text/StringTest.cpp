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
    } rows[] = {{String(true), "true"},
                {String(0.1f), "0.100000001"},
                {String(2.5, 0), "2.5"},
                {String(0.125, 2), "0.13"},
                {String(-0.004, 2), "-0.00"},
                {String(-0.0, 2), "0.00"},
                {String(-1e20, 2), "-1e+20"},
                {String(9e18, 3), "9000000000000000000.000"},
                {String(2.5, String("%.3f dB")), "2.500 dB"},
                {String(10u, String("%04x")), "000a"},
                {String(1.0, String("%050.1f")), "000000000000000000000000000000000000000000000001.0"}};
    for (const auto& row : rows) EXPECT_EQ(row.text, row.expected);
}

TEST(String, EmptyAndMissingTextsAreFoundNowhere) {
    for (const char* nothing : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(String("abc").IndexOfFirstOccurence(nothing, false), -1);
        EXPECT_EQ(String().IndexOfLastOccurence(nothing, true), -1);
    }
    EXPECT_FALSE(String().StartsWith('\0'));
    EXPECT_FALSE(String().EndsWith('\0'));
    String text("a");
    text.Replace("a", nullptr);
    EXPECT_EQ(text, "a");
}

TEST(String, KeepsBytesOfEveryValueButEqualityStopsAtAZeroByte) {
    const String zero(std::string("a\0b", 3));
    EXPECT_EQ(zero.Length(), 3u);
    EXPECT_TRUE(zero == "a");
    EXPECT_TRUE("a" == zero);
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

}  // namespace
}  // namespace velmodsp
