#pragma once

#include <cstdint>

namespace velmodsp {

/// Colour with 8 bits a component. Alpha is 255 where it covers what lies below and 0 where it is transparent.
struct Colour {
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
    std::uint8_t alpha;

    friend bool operator==(const Colour&, const Colour&) = default;
};

/// Scales from small to large values for pictures of sound: spectrograms, correlation, level over time.
///
///     const Colour pixel = ColourOf(1.0f + decibels / 90.0f, ColourMap::Magma);   // -90 dB to full scale
///
/// Viridis and magma run evenly for the eye and from dark to light, so that they read the same for the colour-blind and
/// in grey print.
enum class ColourMap {
    Grey,     ///< black to white
    Viridis,  ///< violet, blue-green, yellow
    Magma,    ///< black, purple, orange, pale yellow; dark where there is silence
    Jet       ///< dark blue, cyan, yellow, dark red: many steps to tell apart, though not evenly
};

/// The nearest of the 256 colours of `map`.
/// @param value 0 to 1; what lies beyond, infinities included, gets the colour of the end; NaN is transparent, so that
/// bad samples are holes in the picture and no colour lies about them
/// Any thread; real-time safe.
Colour ColourOf(float value, ColourMap map) noexcept;

}  // namespace velmodsp
