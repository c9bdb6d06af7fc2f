// The nearest palette entry: the definition, and the quick way held against it.
#include "image/image.h"
#include "model/colours.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace {

using Palette = std::array<std::uint32_t, 256>;

Palette random_palette(unsigned seed) {
    std::mt19937 random(seed);
    Palette palette;
    for (auto& entry : palette)
        entry = static_cast<std::uint32_t>(random());
    return palette;
}

// Far away from everything that the tests ask for.
Palette black_palette() {
    Palette palette;
    palette.fill(0xFF000000);
    return palette;
}

int summed_difference(std::uint32_t a, std::uint32_t b) {
    int sum = 0;
    for (int shift = 0; shift < 24; shift += 8)
        sum += std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF));
    return sum;
}

std::uint8_t nearest(const Palette& palette, std::uint32_t colour) {
    const std::uint8_t quick = NearestPaletteEntry(palette)(colour);
    EXPECT_EQ(quick, nearest_palette_entry_by_scan(palette, colour));
    return quick;
}

TEST(NearestPaletteEntry, OfTwoEqualColoursTheLowerIndexWins) {
    Palette palette = black_palette();
    palette[40] = palette[90] = 0xFF336699;
    EXPECT_EQ(nearest(palette, 0xFF336699), 40);
}

TEST(NearestPaletteEntry, OfTwoEquallyDistantColoursTheLowerIndexWins) {
    Palette palette = black_palette();
    palette[200] = 0xFF646464;
    palette[100] = 0xFF686868;
    EXPECT_EQ(nearest(palette, 0xFF666666), 100);
    palette[60] = 0xFF606666; // the same sum from one channel only
    EXPECT_EQ(nearest(palette, 0xFF666666), 60);
}

TEST(NearestPaletteEntry, WhiteWithoutAWhiteEntryTakesTheSmallestSummedDifference) {
    Palette palette = black_palette();
    palette[7] = 0xFFF0F0F0;  // 45 away
    palette[8] = 0xFFFFFFD7;  // 40 away
    palette[9] = 0xFFEBEBFF;  // 40 away, but higher
    palette[10] = 0xFFFFFF00; // 255 away
    EXPECT_EQ(nearest(palette, 0xFFFFFFFF), 8);
}

TEST(NearestPaletteEntry, AlphaTakesNoPart) {
    Palette palette = black_palette();
    palette[3] = 0x00112233;
    palette[4] = 0xFF112233;
    EXPECT_EQ(nearest(palette, 0xFF112233), 3);
    EXPECT_EQ(nearest(palette, 0x80112233), 3);
}

TEST(NearestPaletteEntry, PaletteOfOneColourGivesIndexZero) {
    EXPECT_EQ(nearest(black_palette(), 0xFFFFFFFF), 0);
    EXPECT_EQ(nearest(black_palette(), 0), 0);
}

TEST(NearestPaletteEntry, EveryCornerAndEdgeOfTheCubeAgreesWithTheScan) {
    const Palette palette = random_palette(1);
    const NearestPaletteEntry quick(palette);
    for (std::uint32_t red = 0; red < 256; red += 15)
        for (std::uint32_t green = 0; green < 256; green += 5)
            for (std::uint32_t blue = 0; blue < 256; blue += 17) {
                const std::uint32_t colour = red << 16 | green << 8 | blue;
                ASSERT_EQ(quick(colour), nearest_palette_entry_by_scan(palette, colour)) << std::hex << colour;
            }
}

TEST(NearestPaletteEntry, AgreesWithTheScanForManyPalettes) {
    for (unsigned seed = 2; seed < 22; ++seed) {
        Palette palette = random_palette(seed);
        // Some palettes have few different colours, some only greys: ties everywhere.
        if (seed % 3 == 0)
            for (auto& entry : palette)
                entry &= 0xFFC0C0C0;
        if (seed % 3 == 1)
            for (auto& entry : palette)
                entry = (entry & 0xFF) * 0x010101;
        const NearestPaletteEntry quick(palette);
        std::mt19937 random(seed * 1000);
        for (int i = 0; i < 600; ++i) {
            const std::uint32_t colour = static_cast<std::uint32_t>(random());
            const std::uint8_t index = quick(colour);
            ASSERT_EQ(index, nearest_palette_entry_by_scan(palette, colour)) << std::hex << colour;
            for (std::size_t other = 0; other < palette.size(); ++other)
                ASSERT_GE(summed_difference(palette[other], colour) * 256 + static_cast<int>(other),
                          summed_difference(palette[index], colour) * 256 + index);
        }
    }
}

TEST(Colours, ResetEmptiesEveryTable) {
    PAL[5] = 1;
    MATERIAL[6] = {2, 3};
    PJCOL[32] = {4, 5, 6, 7};
    PJCOLS = 9;
    reset_colours();
    EXPECT_EQ(PAL[5], 0u);
    EXPECT_EQ(MATERIAL[6].colour, 0u);
    EXPECT_EQ(MATERIAL[6].attribute, 0);
    EXPECT_EQ(PJCOL[32][3], 0);
    EXPECT_EQ(PJCOLS, 0);
}

} // namespace
