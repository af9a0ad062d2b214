#include "utils/VelmoDspColourMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace velmodsp {
namespace {

constexpr std::size_t numColours = 256;
using Colours = std::array<Colour, numColours>;

/// Red, green and blue, 0 to 255.
using Components = std::array<double, 3>;
/// Key colours 0xRRGGBB at equal distances, from value 0 to value 1.
using KeyColours = std::array<unsigned int, 16>;

// The published maps at every 17th of their 256 colours.
constexpr KeyColours viridisKeys = {0x440154, 0x481a6c, 0x472f7d, 0x414487, 0x39568c, 0x31688e, 0x2a788e, 0x23888e,
                                    0x1f988b, 0x22a884, 0x35b779, 0x54c568, 0x7ad151, 0xa5db36, 0xd2e21b, 0xfde725};
constexpr KeyColours magmaKeys = {0x000004, 0x0b0924, 0x20114b, 0x3b0f70, 0x57157e, 0x721f81, 0x8c2981, 0xa8327d,
                                  0xc43c75, 0xde4968, 0xf1605d, 0xfa7f5e, 0xfe9f6d, 0xfebf84, 0xfddea0, 0xfcfdbf};

constexpr Colour Opaque(const Components& components) {
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): std::lround is for run-time alone
    const auto rounded = [](double x) { return static_cast<std::uint8_t>(std::clamp(x, 0.0, 255.0) + 0.5); };
    return {rounded(components[0]), rounded(components[1]), rounded(components[2]), 255};
}

/// All colours of the map that `componentsAt` describes for values from 0 to 1.
template <typename Function>
constexpr Colours MakeColours(const Function& componentsAt) {
    Colours colours{};
    for (std::size_t i = 0; i < numColours; ++i) {
        colours[i] = Opaque(componentsAt(static_cast<double>(i) / (numColours - 1)));
    }
    return colours;
}

/// Component 0 (red), 1 (green) or 2 (blue) of a colour 0xRRGGBB.
constexpr double Component(unsigned int colour, std::size_t index) { return (colour >> (16 - 8 * index)) & 0xff; }

/// Catmull-Rom spline through the key colours, within 4 of 255 of the published maps. Between p1 and p2, with the
/// neighbours p0 and p3 and t from 0 to 1, it is
///
///     p1 + t/2 (p2 - p0 + t (2 p0 - 5 p1 + 4 p2 - p3 + t (3 (p1 - p2) + p3 - p0)))
///
/// Before the first key and behind the last the line through the two outermost goes on.
constexpr Components Interpolate(const KeyColours& keys, double value) {
    constexpr std::size_t last = KeyColours().size() - 1;
    const double position = value * last;
    const std::size_t k = std::min(static_cast<std::size_t>(position), last - 1);
    const double t = position - static_cast<double>(k);
    Components result{};
    for (std::size_t c = 0; c < result.size(); ++c) {
        const double p1 = Component(keys[k], c);
        const double p2 = Component(keys[k + 1], c);
        const double p0 = k > 0 ? Component(keys[k - 1], c) : 2 * p1 - p2;
        const double p3 = k + 1 < last ? Component(keys[k + 2], c) : 2 * p2 - p1;
        result[c] = p1 + t / 2 * (p2 - p0 + t * (2 * p0 - 5 * p1 + 4 * p2 - p3 + t * (3 * (p1 - p2) + p3 - p0)));
    }
    return result;
}

constexpr Components GreyAt(double value) { return {255 * value, 255 * value, 255 * value}; }

/// Three equal trapezoids a quarter apart: 1.5 - |4 value - centre|, within 0 to 1.
constexpr Components JetAt(double value) {
    const auto trapezoid = [value](double centre) {
        const double distance = 4 * value > centre ? 4 * value - centre : centre - 4 * value;
        return 255 * std::clamp(1.5 - distance, 0.0, 1.0);
    };
    return {trapezoid(3), trapezoid(2), trapezoid(1)};
}

constexpr Colours grey = MakeColours(GreyAt);
constexpr Colours viridis = MakeColours([](double value) { return Interpolate(viridisKeys, value); });
constexpr Colours magma = MakeColours([](double value) { return Interpolate(magmaKeys, value); });
constexpr Colours jet = MakeColours(JetAt);

const Colours& ColoursOf(ColourMap map) noexcept {
    switch (map) {
        case ColourMap::Viridis:
            return viridis;
        case ColourMap::Magma:
            return magma;
        case ColourMap::Jet:
            return jet;
        case ColourMap::Grey:
            break;
    }
    return grey;
}

}  // namespace

Colour ColourOf(float value, ColourMap map) noexcept {
    if (std::isnan(value)) return {0, 0, 0, 0};
    const float index = std::clamp(value, 0.0f, 1.0f) * (numColours - 1);
    return ColoursOf(map)[static_cast<std::size_t>(std::lround(index))];
}

}  // namespace velmodsp
