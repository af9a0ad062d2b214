#include <cmath>

#include "host/Program.h"
#include "host/SoundFiles.h"
#include "realtime/SystemCallTrap.h"

namespace {

using testing::HasSubstr;

/// The program velmohost_realtime.
class CheckedHost : public velmotest::Program {
protected:
    velmotest::Outcome RunUnsafe(const std::string& deed) {
        return Velmohost("run --path '" VELMO_UNSAFE_DIR "' 'unsafe~ " + deed + "' --seconds 0.01");
    }

    void ExpectEndsUpon(const std::string& deed, const std::string& report) {
        const velmotest::Outcome outcome = RunUnsafe(deed);
        EXPECT_EQ(outcome.status, 1) << deed;
        EXPECT_THAT(outcome.err, HasSubstr("Real-time violation: " + report)) << deed;
    }
};

TEST_F(CheckedHost, RunsThePluginAsItIsShipped) {
    velmotest::WriteSound(folder / "bad.wav", {std::vector<float>(10000, NAN), std::vector<float>(10000, 0.5f)});
    const velmotest::Outcome outcome =
        Velmohost("run 'tesk.fixnan~ @numchannels 2' --in bad.wav --out good.wav --at 0.1 clear --quiet");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    const std::string report = "[error] tesk.fixnan~: NaN occured in Channel #1\n";
    EXPECT_EQ(outcome.out, report + report);
}

TEST_F(CheckedHost, EndsUponWhatAnObjectAsksTheCLibraryForOnTheAudioThread) {
    const velmotest::Outcome harmless = RunUnsafe("nothing");
    EXPECT_EQ(harmless.status, 0) << harmless.err;
    EXPECT_EQ(harmless.err, "");
    for (const auto& [deed, function] :
         {std::pair("allocate", "malloc"), std::pair("free", "free"), std::pair("throw", "malloc"),
          std::pair("lock", "pthread_mutex_lock"), std::pair("open", "open"), std::pair("print", "puts")}) {
        ExpectEndsUpon(deed, std::string("intercepted call to real-time unsafe function `") + function + "`");
    }
}

TEST_F(CheckedHost, EndsUponAnyCallOfTheSystemOnTheAudioThread) {
    if (!velmohost::SystemCallTrap::Prepare()) {
        GTEST_SKIP() << "this kernel has no syscall user dispatch (Linux 5.11): calls of the system that the "
                        "sanitizer's run-time library does not know are not checked";
    }
    ExpectEndsUpon("write", "system call 1 ");
    ExpectEndsUpon("yield", "system call 24 ");
}

}  // namespace
