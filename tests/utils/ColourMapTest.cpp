#include "utils/VelmoDspColourMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace velmodsp {
namespace {

/// How far the colour is from 0xRRGGBB in its worst component.
int Distance(const Colour& colour, int rgb) {
    return std::max({std::abs(colour.red - (rgb >> 16)), std::abs(colour.green - (rgb >> 8) % 256),
                     std::abs(colour.blue - rgb % 256)});
}

TEST(ColourMap, HasTheColoursThatPeopleKnow) {
    struct Row {
        ColourMap map;
        int colours[5];  // at 0, a quarter, half, three quarters and 1
    };
    const Row rows[] = {{ColourMap::Grey, {0x000000, 0x404040, 0x808080, 0xbfbfbf, 0xffffff}},
                        {ColourMap::Viridis, {0x440154, 0x3b528b, 0x21918c, 0x5ec962, 0xfde725}},
                        {ColourMap::Magma, {0x000004, 0x51127c, 0xb73779, 0xfc8961, 0xfcfdbf}},
                        {ColourMap::Jet, {0x000080, 0x0080ff, 0x80ff80, 0xff8000, 0x800000}}};
    for (const auto& [map, colours] : rows) {
        SCOPED_TRACE(static_cast<int>(map));
        for (int i = 0; i <= 4; ++i)  // exact at the ends
            EXPECT_LE(Distance(ColourOf(static_cast<float>(i) / 4.0f, map), colours[i]), i % 4 == 0 ? 0 : 4) << i;
        for (const float value : {-0.001f, -INFINITY}) EXPECT_EQ(Distance(ColourOf(value, map), colours[0]), 0);
        for (const float value : {1.001f, INFINITY}) EXPECT_EQ(Distance(ColourOf(value, map), colours[4]), 0);
        EXPECT_EQ(ColourOf(0.5f, map).alpha, 255);
        EXPECT_EQ(ColourOf(NAN, map).alpha, 0);
    }
}

TEST(ColourMap, RunsFromDarkToLightWithoutJumps) {
    const auto lightness = [](const Colour& colour) {  // luma of ITU-R BT.709
        return 0.2126 * colour.red + 0.7152 * colour.green + 0.0722 * colour.blue;
    };
    for (const ColourMap map : {ColourMap::Grey, ColourMap::Viridis, ColourMap::Magma}) {
        const auto colour = [map](int i) { return ColourOf(static_cast<float>(i) / 255.0f, map); };
        for (int i = 4; i < 256; ++i) {
            const double step = lightness(colour(i)) - lightness(colour(i - 4));  // rounding may darken a single one
            EXPECT_TRUE(step > 0 && step < 8) << "map " << static_cast<int>(map) << ", colour " << i << ": " << step;
        }
    }
}

}  // namespace
}  // namespace velmodsp
