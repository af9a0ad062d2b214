#include "dsp/VelmoDspDenormals.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

#include "platform/VelmoDspFloatingPointControl.h"

namespace velmodsp {
namespace {

constexpr std::uint32_t SmallestNormal = 0x00800000u, HalfOfSmallestNormal = 0x00400000u, SmallestSubnormal = 1u;

/// The bits of x times y, computed at run time. Bits, because a flushing thread compares a subnormal equal to 0.
std::uint32_t Product(std::uint32_t xBits, float y) {
    const volatile float x = std::bit_cast<float>(xBits);
    return std::bit_cast<std::uint32_t>(x * y);
}

TEST(Denormals, AreFlushedUntilTheScopeEnds) {
    if (FloatingPointControl::FlushDenormalsBits == 0) GTEST_SKIP() << "no control word on this processor";
    const ScopedFloatingPointControl restoreForOtherTests;
    const auto bits = FloatingPointControl::FlushDenormalsBits, keeping = FloatingPointControl::Get() & ~bits;
    for (const auto oneBit : {bits & (bits - 1), bits & ~(bits - 1)}) {  // results alone, operands alone
        FloatingPointControl::Set(keeping | oneBit);
        Denormals::TurnOff();
        EXPECT_EQ(FloatingPointControl::Get() & bits, bits);
    }
    FloatingPointControl::Set(keeping);
    ASSERT_EQ(Product(SmallestNormal, 0.5f), HalfOfSmallestNormal);
    {
        const ScopedFloatingPointControl restoreAtEnd;
        Denormals::TurnOff();
        EXPECT_EQ(Product(SmallestNormal, 0.5f), 0u) << "results";
        EXPECT_EQ(Product(SmallestSubnormal, 8388608.0f), 0u) << "operands";
    }
    EXPECT_EQ(Product(SmallestNormal, 0.5f), HalfOfSmallestNormal);
    EXPECT_EQ(Product(SmallestSubnormal, 8388608.0f), SmallestNormal);
}

}  // namespace
}  // namespace velmodsp
