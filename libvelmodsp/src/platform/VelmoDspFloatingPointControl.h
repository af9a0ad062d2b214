#pragma once

#include <cstdint>

namespace velmodsp {

/// The floating-point control word of the calling thread: MXCSR on x86-64, FPCR on arm64. On any other processor the
/// word reads 0, writing it does nothing, and `FlushDenormalsBits` is 0.
///
/// Any thread; real-time safe. The word belongs to the thread that asks: no other thread sees a change.
class FloatingPointControl {
public:
    using Word = std::uint64_t;

    /// The bits that make the processor read and write subnormal numbers as zeros.
    static const Word FlushDenormalsBits;

    /// This thread's control word.
    static Word Get() noexcept;

    /// Replaces this thread's control word by `word`, which should be a changed copy of what `Get` gave: on x86-64 a
    /// reserved bit that is set ends the process.
    static void Set(Word word) noexcept;
};

/// Gives the thread its control word back at the end of a scope, whatever was called in between. Put it round calls
/// into code that sets the word for itself, such as `Denormals::TurnOff`:
///
///     ScopedFloatingPointControl restoreAtEnd;
///     engine.Perform(outs, ins, n, 0, 0, 0);
///
/// Build and destroy it on the same thread. Real-time safe.
class ScopedFloatingPointControl {
public:
    ScopedFloatingPointControl() noexcept : saved(FloatingPointControl::Get()) {}
    ~ScopedFloatingPointControl() { FloatingPointControl::Set(saved); }
    ScopedFloatingPointControl(const ScopedFloatingPointControl&) = delete;
    ScopedFloatingPointControl& operator=(const ScopedFloatingPointControl&) = delete;

private:
    const FloatingPointControl::Word saved;
};

}  // namespace velmodsp
