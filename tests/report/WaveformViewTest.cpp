#include "report/WaveformView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace velmohost {
namespace {

TEST(WaveformView, KeepsTheRangeOfEveryColumnHoweverTheSignalIsCut) {
    // 1000 samples from 500 on in 400 columns of 2 or 3: column c begins at 500 + floor(2.5 c).
    std::vector<float> before(2000), after(2000);
    for (std::size_t i = 0; i < before.size(); ++i) before[i] = after[i] = static_cast<float>(i);
    before[502] = INFINITY;
    before[505] = before[506] = NAN;
    after[502] = -7.0f;
    for (const std::size_t blockSize : {1u, 501u, 2000u}) {
        WaveformView view(500, 1000);
        for (std::size_t start = 0; start < before.size(); start += blockSize) {
            const std::size_t n = std::min(blockSize, before.size() - start);
            view.Add(start, before.data() + start, after.data() + start, n);
        }
        SCOPED_TRACE(blockSize);
        const auto& columns = view.Columns();
        ASSERT_EQ(columns.size(), 400u);
        EXPECT_EQ(columns[0].beforeMin, 500.0f);
        EXPECT_EQ(columns[0].beforeMax, 501.0f);
        EXPECT_EQ(columns[1].beforeMin, 503.0f);  // 502 to 504, of which 502 is bad
        EXPECT_EQ(columns[1].afterMin, -7.0f);
        EXPECT_EQ(columns[1].afterMax, 504.0f);
        EXPECT_EQ(columns[1].numBad, 1u);
        EXPECT_GT(columns[2].beforeMin, columns[2].beforeMax);  // 505 and 506
        EXPECT_EQ(columns[2].afterMin, 505.0f);
        EXPECT_EQ(columns[2].numBad, 2u);
        EXPECT_EQ(columns[399].afterMax, 1499.0f);
        EXPECT_EQ(view.Peak(), 1499.0f);
    }
}

}  // namespace
}  // namespace velmohost
