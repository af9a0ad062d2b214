#include "dsp/VelmoDspDenormals.h"

#include "platform/VelmoDspFloatingPointControl.h"

namespace velmodsp {

void Denormals::TurnOff() noexcept {
    FloatingPointControl::Set(FloatingPointControl::Get() | FloatingPointControl::FlushDenormalsBits);
}

}  // namespace velmodsp
