#include "utils/VelmoDspDate.h"

#include <gtest/gtest.h>

#include "support/ScopedVariable.h"

namespace velmodsp {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

Date::Time At(long long unixTime) { return Date::Time(seconds(unixTime)); }

TEST(Date, WritesUniversalTime) {
    EXPECT_EQ(Date::ToUtcText(At(0)), "1970-01-01T00:00:00Z");
    EXPECT_EQ(Date::ToUtcText(At(951782400)), "2000-02-29T00:00:00Z");
    EXPECT_EQ(Date::ToUtcText(At(1704067199)), "2023-12-31T23:59:59Z");
    EXPECT_EQ(Date::ToUtcText(At(1709251199)), "2024-02-29T23:59:59Z");
    EXPECT_EQ(Date::ToUtcText(At(4107542399)), "2100-02-28T23:59:59Z");
    EXPECT_EQ(Date::ToUtcText(At(4107542400)), "2100-03-01T00:00:00Z");
    // Parts of a second are dropped, also before 1970.
    EXPECT_EQ(Date::ToUtcText(At(60) - milliseconds(1)), "1970-01-01T00:00:59Z");
    EXPECT_EQ(Date::ToUtcText(At(0) - milliseconds(1)), "1969-12-31T23:59:59Z");
}

TEST(Date, TellsThePresentUnlessAnotherTimeIsGiven) {
    const String before = Date::ToUtcText(std::chrono::system_clock::now());
    const String now = Date::ToUtcText();
    EXPECT_LE(before.Compare(now), 0);
    EXPECT_LE(now.Compare(Date::ToUtcText(std::chrono::system_clock::now())), 0);
}

#ifndef _WIN32  // where the variable TZ rules
TEST(Date, WritesLocalTimeOfTheZoneInForce) {
    struct Row {
        const char* zone;
        long long unixTime;
        const char* text;
        const char* fileName;
    };
    const char* const centralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";
    const Row rows[] = {
        {"UTC0", 1709251199, "2024-02-29T23:59:59+00:00", "20240229T235959+0000"},
        {centralEurope, 1704067199, "2024-01-01T00:59:59+01:00", "20240101T005959+0100"},
        {centralEurope, 1711846799, "2024-03-31T01:59:59+01:00", "20240331T015959+0100"},  // summer time begins
        {centralEurope, 1711846800, "2024-03-31T03:00:00+02:00", "20240331T030000+0200"},
        {centralEurope, 1729990799, "2024-10-27T02:59:59+02:00", "20241027T025959+0200"},  // the hour comes twice
        {centralEurope, 1729994399, "2024-10-27T02:59:59+01:00", "20241027T025959+0100"},
        {"NST3:30", 1709251199, "2024-02-29T20:29:59-03:30", "20240229T202959-0330"},
        {"<+0545>-5:45", 1709251199, "2024-03-01T05:44:59+05:45", "20240301T054459+0545"},
        {"LMT0:25:21", 0, "1969-12-31T23:35:00-00:25", "19691231T233500-0025"},  // cut to whole minutes
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.zone << " at " << row.unixTime);
        const ScopedVariable zone("TZ", row.zone);
        EXPECT_EQ(Date::ToLocalText(At(row.unixTime)), row.text);
        EXPECT_EQ(Date::ToFileNameText(At(row.unixTime)), row.fileName);
    }
}
#endif

}  // namespace
}  // namespace velmodsp
