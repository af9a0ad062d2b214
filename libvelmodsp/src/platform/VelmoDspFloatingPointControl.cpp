#include "platform/VelmoDspFloatingPointControl.h"

#if defined(__x86_64__) || defined(_M_X64)
#include <xmmintrin.h>
#endif

namespace velmodsp {

#if defined(__x86_64__) || defined(_M_X64)

// MXCSR: bit 15 is flush-to-zero (results), bit 6 is denormals-are-zero (operands).
const FloatingPointControl::Word FloatingPointControl::FlushDenormalsBits = 0x8040;

FloatingPointControl::Word FloatingPointControl::Get() noexcept { return _mm_getcsr(); }

void FloatingPointControl::Set(Word word) noexcept { _mm_setcsr(static_cast<unsigned int>(word)); }

#elif defined(__aarch64__)

// FPCR: bit 24 is FZ, which covers operands and results.
const FloatingPointControl::Word FloatingPointControl::FlushDenormalsBits = Word{1} << 24;

FloatingPointControl::Word FloatingPointControl::Get() noexcept {
    Word word;
    asm volatile("mrs %0, fpcr" : "=r"(word));
    return word;
}

// The clobber keeps loads and stores of samples on their side of the change.
void FloatingPointControl::Set(Word word) noexcept { asm volatile("msr fpcr, %0" : : "r"(word) : "memory"); }

#else

const FloatingPointControl::Word FloatingPointControl::FlushDenormalsBits = 0;

FloatingPointControl::Word FloatingPointControl::Get() noexcept { return 0; }

void FloatingPointControl::Set(Word) noexcept {}

#endif

}  // namespace velmodsp
