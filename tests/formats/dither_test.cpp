#include "formats/dither.h"

#include "formats/bitmap_import.h"
#include "model/bitmap_table.h"
#include "model/colours.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <numeric>

namespace {

constexpr std::uint8_t black = 0, white = 1, grey = 2;

std::array<std::uint32_t, 256> black_and_white() {
    std::array<std::uint32_t, 256> palette{};
    palette.fill(0xFF000000);
    palette[white] = 0xFFFFFFFF;
    return palette;
}

ImageHandle plain(int width, int height, std::uint32_t colour) { return create_image(width, height, colour); }

std::size_t whites(const Pixels& pixels) { return static_cast<std::size_t>(std::ranges::count(pixels, white)); }

} // namespace

TEST(Dithering, WithoutItEveryPixelIsTheNearestEntry) {
    EXPECT_EQ(dithered(*plain(8, 8, 0xFF7F7F7F), black_and_white(), Dither::none), Pixels(64, black));
    EXPECT_EQ(dithered(*plain(8, 8, 0xFF808080), black_and_white(), Dither::none), Pixels(64, white));
}

TEST(Dithering, ErrorsAreHandedOnSoThatTheMeanStays) {
    for (const std::uint32_t level : {0x20U, 0x40U, 0x80U, 0xC0U}) {
        const Pixels pixels =
            dithered(*plain(64, 64, 0xFF000000 | level * 0x010101), black_and_white(), Dither::floyd_steinberg);
        const double mean = 255.0 * static_cast<double>(whites(pixels)) / 4096;
        EXPECT_NEAR(mean, level, 4) << level;
    }
}

TEST(Dithering, ErrorsGoRightAndBelowBySixteenths) {
    // 200 becomes white, 55 too bright: the one right of it has 100 - 24, the one below 100 - 17.
    auto palette = black_and_white();
    palette[grey] = 0xFF505050;
    auto picture = plain(2, 2, 0xFF646464);
    picture->set_pixel(0, 0, 0xFFC8C8C8);
    EXPECT_EQ(dithered(*picture, palette, Dither::floyd_steinberg), (Pixels{white, grey, grey, grey}));
    picture = plain(3, 1, 0xFF808080);
    EXPECT_EQ(dithered(*picture, black_and_white(), Dither::floyd_steinberg), (Pixels{white, black, white}));
}

TEST(Dithering, ThePatternMixesTwoNeighboursAndIsTheSameEverywhere) {
    auto palette = black_and_white();
    palette[grey] = 0xFF101010;
    const Pixels pixels = dithered(*plain(16, 16, 0xFF080808), palette, Dither::ordered);
    const auto greys = std::ranges::count(pixels, grey);
    EXPECT_GT(greys, 64);
    EXPECT_LT(greys, 192);
    for (std::size_t y = 0; y < 8; ++y)
        for (std::size_t x = 0; x < 8; ++x) {
            EXPECT_EQ(pixels[16 * y + x], pixels[16 * (y + 8) + x + 8]);
            EXPECT_EQ(pixels[16 * y + x], pixels[16 * y + x + 8]);
        }
    std::set<std::vector<std::uint8_t>> rows;
    for (std::size_t y = 0; y < 8; ++y)
        rows.insert({pixels.begin() + static_cast<long>(16 * y), pixels.begin() + static_cast<long>(16 * y + 8)});
    EXPECT_GT(rows.size(), 2U) << "a pattern, no stripes";
}

TEST(Dithering, ColoursOfThePaletteStay) {
    auto palette = black_and_white();
    for (unsigned i = 2; i < 256; ++i)
        palette[i] = 0xFF000000 | i * 0x010101;
    auto picture = plain(16, 16, 0);
    for (int y = 0; y < 16; ++y)
        for (int x = 0; x < 16; ++x)
            picture->set_pixel(x, y, palette[static_cast<std::size_t>(16 * y + x)]);
    const Pixels none = dithered(*picture, palette, Dither::none);
    EXPECT_EQ(dithered(*picture, palette, Dither::ordered), none);
    EXPECT_EQ(dithered(*picture, palette, Dither::floyd_steinberg), none);
}

TEST(Dithering, WhatIsSeeThroughHandsOnNoError) {
    auto picture = plain(2, 1, 0xFF7F7F7F);
    picture->set_pixel(0, 0, 0x007F7F7F);
    EXPECT_EQ(dithered(*picture, black_and_white(), Dither::floyd_steinberg), (Pixels{black, black}));
    picture->set_pixel(0, 0, 0xFF7F7F7F);
    EXPECT_EQ(dithered(*picture, black_and_white(), Dither::floyd_steinberg), (Pixels{black, white}));
}

TEST(Dithering, AnImportTakesItForTheColoursAndNotForTheMask) {
    PAL = black_and_white();
    auto picture = plain(8, 8, 0xFF707070);
    ASSERT_TRUE(import_bitmap("dast", *picture).done);
    EXPECT_EQ(*BITMAP[RBM("dast")].pixels, Pixels(64, black));
    ASSERT_TRUE(import_bitmap("dast", *picture, Dither::floyd_steinberg).done);
    EXPECT_GT(whites(*BITMAP[RBM("dast")].pixels), 20U);
    EXPECT_EQ(*BITMAP[RBM("dasm")].pixels, Pixels(64, 0));
}
