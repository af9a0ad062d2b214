#include "dsp/VelmoDspDenormals.h"

#include <bit>
#include <cstdint>
#include <limits>

#include "platform/VelmoDspFloatingPointControl.h"

namespace velmodsp {

namespace {

/// Tells by two products, one with a subnormal result and one with a subnormal operand. That is far quicker than
/// reading the control word: on x86-64 the read waits until every operation before it is done.
bool AreOff() {
    static const volatile float smallestNormal = std::numeric_limits<float>::min();
    static const volatile float subnormal = std::numeric_limits<float>::denorm_min();
    const float result = smallestNormal * 0.5f;
    const float operand = subnormal * 0x1p100f;
    // Bits, because a thread that flushes its operands finds any subnormal equal to 0.
    return (std::bit_cast<std::uint32_t>(result) | std::bit_cast<std::uint32_t>(operand)) == 0;
}

}  // namespace

void Denormals::TurnOff() noexcept {
    if (AreOff()) return;
    FloatingPointControl::Set(FloatingPointControl::Get() | FloatingPointControl::FlushDenormalsBits);
}

}  // namespace velmodsp
