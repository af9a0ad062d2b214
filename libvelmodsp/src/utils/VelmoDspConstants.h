#pragma once

#include <concepts>

/// Mathematical constants that signal processing needs and the standard's `<numbers>` lacks, in any floating-point
/// type, each rounded once, to the nearest value of the type.
///
///     const double omega = Constants::TwoPi<double> * frequency / samplerate;   // radians a sample
///     const float gain = std::exp(Constants::Ln10Over20<float> * decibels);     // cheaper than pow(10, decibels / 20)
///     const float left = std::cos(Constants::HalfPi<float> * position);         // equal-power panning, 0 to 1
namespace velmodsp::Constants {

/// 2 pi: one period in radians.
template <std::floating_point T>
inline constexpr T TwoPi = static_cast<T>(6.283185307179586476925286766559006L);

/// pi / 2: a quarter of a period in radians.
template <std::floating_point T>
inline constexpr T HalfPi = static_cast<T>(1.570796326794896619231321691639751L);

/// 1 / sqrt(2): half the power, the gain of -3.01 dB and the Q of a second-order Butterworth filter.
template <std::floating_point T>
inline constexpr T SqrtHalf = static_cast<T>(0.7071067811865475244008443621048490L);

/// ln(10) / 20: the gain of d decibels is exp(d * Ln10Over20).
template <std::floating_point T>
inline constexpr T Ln10Over20 = static_cast<T>(0.1151292546497022842008995727342182L);

/// 20 / ln(10): a gain g has ln(g) * TwentyOverLn10 decibels.
template <std::floating_point T>
inline constexpr T TwentyOverLn10 = static_cast<T>(8.685889638065036553022568018836220L);

/// ln(2) / 12: s equal-tempered semitones multiply a frequency by exp(s * Ln2Over12).
template <std::floating_point T>
inline constexpr T Ln2Over12 = static_cast<T>(0.05776226504666210911810267678818138L);

/// ln(1000): what falls by 60 dB in T seconds is exp(-t * Ln1000 / T) after t seconds.
template <std::floating_point T>
inline constexpr T Ln1000 = static_cast<T>(6.907755278982137052053974364053093L);

}  // namespace velmodsp::Constants
