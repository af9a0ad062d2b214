#include "dsp/VelmoDspDenormals.h"

#include <gtest/gtest.h>

#include "platform/VelmoDspFloatingPointControl.h"

namespace velmodsp {
namespace {

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
    {
        const ScopedFloatingPointControl restoreAtEnd;
        Denormals::TurnOff();
        EXPECT_EQ(FloatingPointControl::Get() & bits, bits);
    }
    EXPECT_EQ(FloatingPointControl::Get() & bits, 0u);
}

}  // namespace
}  // namespace velmodsp
