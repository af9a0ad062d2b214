#include <gmock/gmock.h>

#include <string>
#include <utility>

#include "support/OutputOf.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

/// A file, and the function that it begins with.
using Binary = std::pair<std::string, std::string>;

/// What is shipped: the plug-in and the program that runs it.
class Hardening : public testing::TestWithParam<Binary> {
protected:
    /// What a command prints about the file.
    static std::string Tell(const std::string& command) { return OutputOf(command + " '" + GetParam().first + "'"); }
};

TEST_P(Hardening, IsLoadedAnywhere) {
    EXPECT_THAT(Tell("readelf --file-header"), ContainsRegex("Type: +DYN"));
    EXPECT_THAT(Tell("readelf --wide --dynamic"), Not(HasSubstr("TEXTREL"))) << "code would be made writable";
}

TEST_P(Hardening, HasTablesOfAddressesThatAreReadOnlyOnceItIsLoaded) {
    EXPECT_THAT(Tell("readelf --wide --segments"), HasSubstr("GNU_RELRO"));
    EXPECT_THAT(Tell("readelf --wide --dynamic"), ContainsRegex("FLAGS_1\\).*NOW"));
}

TEST_P(Hardening, ExecutesNothingThatItWrites) {
    const std::string segments = Tell("readelf --wide --segments");
    EXPECT_THAT(segments, ContainsRegex("GNU_STACK.* RW +0x"));
    EXPECT_THAT(segments, Not(ContainsRegex(" RWE +0x")));
}

TEST_P(Hardening, GuardsItsStack) {
    EXPECT_THAT(Tell("nm --dynamic --undefined-only"), HasSubstr("__stack_chk_fail"));
#ifdef __x86_64__
    const std::string entry = GetParam().second;
    EXPECT_THAT(Tell("objdump --disassemble=" + entry), ContainsRegex("<" + entry + ">:\n[^\n]*endbr64"));
#endif
}

// For clang, functions of variable arguments are never told, and there are no others here.
#if defined(__OPTIMIZE__) && !defined(__clang__)
TEST_P(Hardening, TellsTheCLibraryTheSizesOfWhatItWritesTo) {
    EXPECT_THAT(Tell("nm --dynamic --undefined-only"), ContainsRegex("__[a-z]+_chk@"));
}
#endif

INSTANTIATE_TEST_SUITE_P(Plugin, Hardening,
                         testing::Values(Binary(VELMO_EXTERNALS_DIR "/tesk.fixnan~" VELMO_EXTERNAL_SUFFIX,
                                                "ext_main")));
INSTANTIATE_TEST_SUITE_P(Host, Hardening, testing::Values(Binary(VELMO_HOST_PROGRAM, "main")));

}  // namespace
