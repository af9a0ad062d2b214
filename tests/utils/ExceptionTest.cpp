#include "utils/VelmoDspException.h"

#include <gtest/gtest.h>
#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

#include <functional>
#include <sstream>
#include <stdexcept>

#include "support/MessageOf.h"
#include "utils/VelmoDspConsoleLog.h"

namespace velmodsp {
namespace {

/// What `action` prints on standard error; the system puts the identity and the process id before each message.
std::string Printed(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

const std::string prefix = "velmodsp[" + std::to_string(getpid()) + "]: ";

TEST(Exception, ReportsItselfOnceWhenItIsBuilt) {
    EXPECT_EQ(Printed([] { Exception(String("bad"), "libvelmodsp/src/files/VelmoDspFile", 12, true, false); }),
              prefix + "Exception occured in : VelmoDspFile at line 12 : \n  bad\n\n");
    const auto throwIt = [] { throw Exception(String("100%d"), "", 0, false, false); };
    EXPECT_EQ(Printed([&] { EXPECT_EQ(MessageOf(throwIt), "100%d"); }), prefix + "Exception occured : 100%d\n\n");
}

TEST(Exception, TakesOverItsCausesMessageWithANewLocation) {
    const Exception first(std::runtime_error("disk full"), "a/b", 1, true, false);
    const Exception again(first, nullptr, 2, true, false);
    EXPECT_STREQ(again.what(), "disk full");
    EXPECT_EQ(first.GetFileName(), "b");
    EXPECT_EQ(again.GetFileName(), "");
    EXPECT_STREQ(UnknownException("x", 1, false, false).what(), "unknown exception");
}

TEST(ExceptionDeathTest, EndsTheProcessAfterTheReportWhenAskedTo) {
    // NOLINTNEXTLINE(bugprone-throw-keyword-missing): it does not come to be thrown
    EXPECT_EXIT(Exception(String("fatal"), "x", 3, false, true), testing::ExitedWithCode(1),
                "Exception occured : fatal");
}

TEST(ConsoleLog, AddsALineBreakToStringsButNotToStreams) {
    EXPECT_EQ(Printed([] { ConsoleLog::Print(String("%s 50%")); }), prefix + "%s 50%\n");
    std::ostringstream text;
    text << "two\nlines\n";
    EXPECT_EQ(Printed([&] { ConsoleLog::Print(text); }), prefix + "two\nlines\n");
}

}  // namespace
}  // namespace velmodsp
