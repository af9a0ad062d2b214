#include "utils/VelmoDspConstants.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velmodsp {
namespace {

/// What the constants are, computed in the widest type.
template <typename T>
void ExpectNearestValues() {
    const auto nearest = [](long double x) { return static_cast<T>(x); };
    const long double pi = std::acos(-1.0L);
    EXPECT_EQ(Constants::TwoPi<T>, nearest(2 * pi));
    EXPECT_EQ(Constants::HalfPi<T>, nearest(pi / 2));
    EXPECT_EQ(Constants::SqrtHalf<T>, nearest(std::sqrt(0.5L)));
    EXPECT_EQ(Constants::Ln10Over20<T>, nearest(std::log(10.0L) / 20));
    EXPECT_EQ(Constants::TwentyOverLn10<T>, nearest(20 / std::log(10.0L)));
    EXPECT_EQ(Constants::Ln2Over12<T>, nearest(std::log(2.0L) / 12));
    EXPECT_EQ(Constants::Ln1000<T>, nearest(std::log(1000.0L)));
}

TEST(Constants, AreTheNearestValuesOfTheirType) {
    ExpectNearestValues<float>();
    ExpectNearestValues<double>();
}

}  // namespace
}  // namespace velmodsp
