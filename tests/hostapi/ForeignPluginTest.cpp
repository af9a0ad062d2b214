#include <gmock/gmock.h>

#include "VelmoHost.h"

#include "audio/DspSettings.h"
#include "support/CapturedWindow.h"

namespace velmohost {
namespace {

TEST(ForeignPlugin, LoadsAndRunsWithoutTheFunctionsThatTheHostLacks) {
    SetDspSettings({32000.0, 64, false});
    velmotest::CapturedWindow window;
    Host host{{VELMO_FOREIGN_PLUGIN_DIR}};
    const auto box = Box::Create(host, "foreign");
    ASSERT_NE(box, nullptr) << testing::PrintToString(window.Take());
    box->Send("bang");
    const std::vector<std::string> rows = window.Take();
    ASSERT_EQ(rows.size(), 5u) << testing::PrintToString(rows);
    // The two functions are called in an order that compilers choose, and told of once.
    EXPECT_THAT(std::vector(rows.begin(), rows.begin() + 2),
                testing::UnorderedElementsAre("[error] systimer_gettime is not there in this host: calls do nothing",
                                              "[error] qelem_new is not there in this host: calls do nothing"));
    for (const std::string& row : {rows[2], rows[3]})
        EXPECT_EQ(row, "[post] foreign: the time is 0, there is no queue");
    EXPECT_EQ(rows[4], "[post] foreign: the rate is 32000");
}

}  // namespace
}  // namespace velmohost
