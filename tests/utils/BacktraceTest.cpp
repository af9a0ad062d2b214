#include "utils/VelmoDspBacktrace.h"

#include <gmock/gmock.h>

#include <new>
#include <stdexcept>

#include "math/VelmoDspVector.h"
#include "platform/VelmoDspBacktraceLine.h"
#include "support/MessageOf.h"
#include "text/VelmoDspStringArray.h"
#include "utils/VelmoDspDemangling.h"
#include "utils/VelmoDspGuardedAllocation.h"

namespace velmodsp {

// Outside the unnamed namespace, so that their names are plain; each keeps its own frame on the stack.
template <typename Thrown>
[[gnu::noinline]] void GrowAndThrow(const Thrown& thrown) {
    GuardGrowth([&] { throw thrown; });
}

template <typename Thrown>
[[gnu::noinline]] void AskForGrowth(const Thrown& thrown) {
    GrowAndThrow(thrown);
    asm volatile("");
}

namespace {

using testing::AllOf;
using testing::StartsWith;

/// Whether a text names the function, or the place in the program on systems that do not know functions by name.
testing::Matcher<std::string> Names([[maybe_unused]] const char* function) {
#ifdef _WIN32
    return testing::HasSubstr("utils_tests.exe+0x");
#else
    return testing::HasSubstr(function);
#endif
}

TEST(Backtrace, ListsTheStackFromItselfOutwards) {
    StringArray names;
    Backtrace::GetStack(names, 2);
    ASSERT_EQ(names.Size(), 2u);
    EXPECT_THAT(names[0].Str(), Names("velmodsp::Backtrace::GetStack(velmodsp::StringArray&, unsigned int)"));
    EXPECT_THAT(names[1].Str(), Names("ListsTheStackFromItselfOutwards"));
    Backtrace::GetStack(names, 200);
    EXPECT_GT(names.Size(), 5u);
    EXPECT_LT(names.Size(), 200u);
#ifndef _WIN32
    EXPECT_EQ(std::count(&names[0], &names[0] + names.Size(), String("main")), 1);
#endif
}

#ifdef __linux__
TEST(Backtrace, ReadsSymbolsFromTheSystemsLines) {
    const std::pair<const char*, const char*> rows[] = {{"/opt/c++ (x)/a+b.so(_ZN1aC1Ev+0x1c) [0x10]", "_ZN1aC1Ev"},
                                                        {"./a.out(main+0x4) [0x10]", "main"},
                                                        {"./a.out(fini) [0x10]", "fini"},
                                                        {"/opt/c++/a.out(+0x1a2b) [0x10]", "a.out+0x1a2b"},
                                                        {"/opt/c++/a.out() [0x10]", ""},
                                                        {"[0x10]", ""},
                                                        {"", ""}};
    for (const auto& [line, symbol] : rows) EXPECT_EQ(SymbolOfBacktraceLine(line), symbol) << line;
}
#endif

TEST(Demangling, ReturnsWhatIsNoMangledNameUnchanged) {
    EXPECT_EQ(Demangling::Demangle("_ZN8velmodsp6String6AppendEc"), "velmodsp::String::Append(char)");
    for (const char* name : {"", "__libc_start_main", "_Z", "a.out+0x1a2b"})
        EXPECT_EQ(Demangling::Demangle(name), name);

    // One long parameter type and 40 references to it: "f(x…x, x…x, …)" is longer than the work buffer.
    std::string mangled = "_Z1f900" + std::string(900, 'x');
    for (int i = 0; i < 40; ++i) mangled += "S_";
    EXPECT_EQ(Demangling::Demangle(String(mangled)).Length(), 2u + 41 * 900 + 40 * 2 + 1);
}

TEST(GuardedAllocation, SaysWhatHappenedAndWhoAsked) {
    EXPECT_THAT(MessageOf([] { AskForGrowth(std::bad_alloc()); }),
                AllOf(StartsWith("out of memory occured in "), Names("velmodsp::AskForGrowth<std::bad_alloc>")));
    EXPECT_THAT(MessageOf([] { AskForGrowth(std::runtime_error("odd")); }),
                AllOf(StartsWith("exception odd occured in "), Names("velmodsp::AskForGrowth<std::runtime_error>")));
    EXPECT_THAT(MessageOf([] { AskForGrowth(5); }),
                AllOf(StartsWith("unknown exception occured in "), Names("velmodsp::AskForGrowth<int>")));
    EXPECT_EQ(MessageOf([] { AskForGrowth(Exception(String("as it is"), "x", 1, false, false)); }), "as it is");
}

TEST(Vector, GrowsWithZerosAndKeepsItsElementsWhenGrowthFails) {
    Vector<double> vector(1);
    vector[0] = 1.5;
    ResizeVector(vector, 3);
    EXPECT_THAT(vector, testing::ElementsAre(1.5, 0.0, 0.0));
#ifndef _WIN32  // where sizes have 32 bits, and a large machine has room for it
    EXPECT_THROW(ResizeVector(vector, ~0ul), Exception);
#endif
    ResizeVector(vector, 1);
    EXPECT_THAT(vector, testing::ElementsAre(1.5));
}

}  // namespace
}  // namespace velmodsp
