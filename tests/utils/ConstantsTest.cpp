#include "utils/VelmoDspConstants.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmodsp {
namespace {

#define EXPECT_NEAREST(constant, formula)                               \
    EXPECT_EQ(Constants::constant<float>, static_cast<float>(formula)); \
    EXPECT_EQ(Constants::constant<double>, static_cast<double>(formula))

TEST(Constants, AreTheNearestValuesOfTheirType) {
    EXPECT_NEAREST(TwoPi, 2 * std::acos(-1.0L));
    EXPECT_NEAREST(HalfPi, std::acos(0.0L));
    EXPECT_NEAREST(SqrtHalf, std::sqrt(0.5L));
    EXPECT_NEAREST(Ln10Over20, std::log(10.0L) / 20);
    EXPECT_NEAREST(TwentyOverLn10, 20 / std::log(10.0L));
    EXPECT_NEAREST(Ln2Over12, std::log(2.0L) / 12);
    EXPECT_NEAREST(Ln1000, std::log(1000.0L));
}

}  // namespace
}  // namespace velmodsp
