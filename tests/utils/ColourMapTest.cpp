#include "utils/VelmoDspColourMap.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ostream>

namespace velmodsp {

// Where GoogleTest looks for it.
void PrintTo(const Colour& colour, std::ostream* stream) {
    *stream << +colour.red << " " << +colour.green << " " << +colour.blue << " alpha " << +colour.alpha;
}

namespace {

constexpr ColourMap allMaps[] = {ColourMap::Grey, ColourMap::Viridis, ColourMap::Magma, ColourMap::Jet};

/// `rgb` as 0xRRGGBB.
Colour Opaque(unsigned int rgb) {
    const auto component = [rgb](unsigned int shift) { return static_cast<std::uint8_t>(rgb >> shift); };
    return {component(16), component(8), component(0), 255};
}

TEST(ColourMap, HasTheColoursThatPeopleKnow) {
    struct Row {
        ColourMap map;
        float value;
        unsigned int rgb;
        int tolerance;
    };
    // The ends are exact; inside the published maps at quarters, all of which lie between key colours.
    const Row rows[] = {
        {ColourMap::Viridis, 0.0f, 0x440154, 0}, {ColourMap::Viridis, 0.25f, 0x3b528b, 4},
        {ColourMap::Viridis, 0.5f, 0x21918c, 4}, {ColourMap::Viridis, 0.75f, 0x5ec962, 4},
        {ColourMap::Viridis, 1.0f, 0xfde725, 0}, {ColourMap::Magma, 0.0f, 0x000004, 0},
        {ColourMap::Magma, 0.25f, 0x51127c, 4},  {ColourMap::Magma, 0.5f, 0xb73779, 4},
        {ColourMap::Magma, 0.75f, 0xfc8961, 4},  {ColourMap::Magma, 1.0f, 0xfcfdbf, 0},
        {ColourMap::Grey, 0.0f, 0x000000, 0},    {ColourMap::Grey, 0.2f, 0x333333, 0},
        {ColourMap::Grey, 1.0f, 0xffffff, 0},    {ColourMap::Jet, 0.0f, 0x000080, 0},
        {ColourMap::Jet, 0.125f, 0x0000ff, 2},   {ColourMap::Jet, 0.375f, 0x00ffff, 2},
        {ColourMap::Jet, 0.625f, 0xffff00, 2},   {ColourMap::Jet, 0.875f, 0xff0000, 2},
        {ColourMap::Jet, 1.0f, 0x800000, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "map " << static_cast<int>(row.map) << " at " << row.value);
        const Colour expected = Opaque(row.rgb);
        const Colour colour = ColourOf(row.value, row.map);
        EXPECT_NEAR(colour.red, expected.red, row.tolerance);
        EXPECT_NEAR(colour.green, expected.green, row.tolerance);
        EXPECT_NEAR(colour.blue, expected.blue, row.tolerance);
        EXPECT_EQ(colour.alpha, 255);
    }
}

TEST(ColourMap, GivesTheColourOfTheEndBeyondItAndNoneToNaN) {
    for (const ColourMap map : allMaps) {
        for (const float value : {-0.001f, -5.0f, -INFINITY}) EXPECT_EQ(ColourOf(value, map), ColourOf(0.0f, map));
        for (const float value : {1.001f, 5.0f, INFINITY}) EXPECT_EQ(ColourOf(value, map), ColourOf(1.0f, map));
        EXPECT_EQ(ColourOf(NAN, map).alpha, 0);
        EXPECT_EQ(ColourOf(-NAN, map).alpha, 0);
    }
}

TEST(ColourMap, RunsFromDarkToLightWithoutJumps) {
    const auto lightness = [](const Colour& colour) {  // luma of ITU-R BT.709
        return 0.2126 * colour.red + 0.7152 * colour.green + 0.0722 * colour.blue;
    };
    const auto distance = [](const Colour& a, const Colour& b) {
        return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
    };
    for (const ColourMap map : {ColourMap::Grey, ColourMap::Viridis, ColourMap::Magma}) {
        const auto colour = [map](int i) { return ColourOf(static_cast<float>(i) / 255.0f, map); };
        for (int i = 1; i < 256; ++i) {
            SCOPED_TRACE(testing::Message() << "map " << static_cast<int>(map) << ", colour " << i);
            EXPECT_LE(distance(colour(i), colour(i - 1)), 12);
            // Rounding to 8 bits may darken a single step.
            EXPECT_TRUE(i < 4 || lightness(colour(i)) > lightness(colour(i - 4)));
        }
    }
}

}  // namespace
}  // namespace velmodsp
