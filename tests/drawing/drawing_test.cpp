// Lines, boxes, pixels, text, clip and damage; circles and images have tests of their own.
#include "drawing/drawing.h"

#include "support/picture_words.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace {

constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

// A Bresenham line walked in full, from the end where the longer side is smaller, with the usual error term.
void walk_line(Image& image, long x1, long y1, long x2, long y2, std::uint32_t colour) {
    const bool steep = std::labs(y2 - y1) > std::labs(x2 - x1);
    if (steep) {
        std::swap(x1, y1);
        std::swap(x2, y2);
    }
    if (x1 > x2) {
        std::swap(x1, x2);
        std::swap(y1, y2);
    }
    const long dx = x2 - x1;
    const long dy = std::labs(y2 - y1);
    long error = 2 * dy - dx;
    long y = y1;
    for (long x = x1; x <= x2; ++x) {
        steep ? image.set_pixel(static_cast<int>(y), static_cast<int>(x), colour)
              : image.set_pixel(static_cast<int>(x), static_cast<int>(y), colour);
        if (error > 0) {
            y += y2 > y1 ? 1 : -1;
            error -= 2 * dx;
        }
        error += 2 * dy;
    }
}

TEST(DrawingBox, FilledBoxFromCornerToCornerCoversTheWholeWindow) {
    const auto image = create_image(960, 648, black);
    Canvas canvas(*image);
    fill_box(canvas, 0, 0, 959, 647, white);
    EXPECT_EQ(count(*image, white), 960 * 648);
}

TEST(DrawingBox, CornersAreIncludedAndMayBeSwapped) {
    const auto image = create_image(20, 20, black);
    Canvas canvas(*image);
    draw_box(canvas, 12, 11, 3, 4, white);
    EXPECT_EQ(count(*image, white), 2 * 10 + 2 * 6);
    for (const auto& [x, y] : {std::pair{3, 4}, {12, 4}, {3, 11}, {12, 11}})
        EXPECT_EQ(image->pixel(x, y), white);
    EXPECT_EQ(image->pixel(4, 5), black);
    EXPECT_EQ(canvas.take_damage().around(), (Rectangle{3, 4, 12, 11}));
}

TEST(DrawingBox, SecondCornerMayBeRelative) {
    const auto one = create_image(20, 20, black);
    const auto other = create_image(20, 20, black);
    Canvas absolute(*one), relative(*other);
    fill_box(absolute, 2, 3, 5, 9, white);
    draw_box(absolute, 10, 10, 8, 14, white);
    fill_box_relative(relative, 2, 3, 3, 6, white);
    draw_box_relative(relative, 10, 10, -2, 4, white);
    EXPECT_EQ(picture(*one), picture(*other));
}

TEST(DrawingBox, BoxOfOnePixel) {
    const auto image = create_image(5, 5, black);
    Canvas canvas(*image);
    draw_box(canvas, 2, 2, 2, 2, white);
    EXPECT_EQ(count(*image, white), 1);
}

TEST(DrawingLine, BothEndsIncludedInEveryDirection) {
    for (const auto& [dx, dy] : {std::pair{7, 3},
                                 {3, 7},
                                 {-7, 3},
                                 {-3, 7},
                                 {7, -3},
                                 {3, -7},
                                 {-7, -3},
                                 {-3, -7},
                                 {5, 5},
                                 {-5, 5},
                                 {6, 0},
                                 {0, 6},
                                 {-6, 0},
                                 {0, -6},
                                 {0, 0}}) {
        const auto image = create_image(20, 20, black);
        Canvas canvas(*image);
        draw_line(canvas, 10, 10, 10 + dx, 10 + dy, white);
        EXPECT_EQ(image->pixel(10, 10), white);
        EXPECT_EQ(image->pixel(10 + dx, 10 + dy), white);
        EXPECT_EQ(count(*image, white), std::max(std::abs(dx), std::abs(dy)) + 1);
    }
}

TEST(DrawingLine, VisiblePixelsAreThoseOfTheLineWalkedInFull) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> coordinate(-150, 200);
    std::uniform_int_distribution<int> corner(0, 39);
    for (int round = 0; round < 3000; ++round) {
        const auto drawn = create_image(40, 30, black);
        const auto walked = create_image(40, 30, black);
        Canvas canvas(*drawn);
        const Rectangle clip{corner(random), corner(random) % 30, corner(random), corner(random) % 30};
        canvas.set_clip(clip.x1, clip.y1, clip.x2, clip.y2);
        const int x1 = coordinate(random), y1 = coordinate(random), x2 = coordinate(random), y2 = coordinate(random);
        draw_line(canvas, x1, y1, x2, y2, white);
        walk_line(*walked, x1, y1, x2, y2, white);
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                if (!inside(canvas.clip(), x, y)) walked->set_pixel(x, y, black);
        { ASSERT_EQ(picture(*drawn), picture(*walked)) << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2; }
        ASSERT_EQ(canvas.take_damage().around(), around(*drawn, white));
    }
}

TEST(DrawingLine, SameBothWays) {
    std::mt19937 random(2);
    std::uniform_int_distribution<int> coordinate(-20, 60);
    for (int round = 0; round < 500; ++round) {
        const auto there = create_image(40, 40, black);
        const auto back = create_image(40, 40, black);
        Canvas first(*there), second(*back);
        const int x1 = coordinate(random), y1 = coordinate(random), x2 = coordinate(random), y2 = coordinate(random);
        draw_line(first, x1, y1, x2, y2, white);
        draw_line(second, x2, y2, x1, y1, white);
        ASSERT_EQ(picture(*there), picture(*back));
    }
}

TEST(DrawingLine, FarCoordinatesAreCutAtOnce) {
    const auto image = create_image(40, 30, black);
    Canvas canvas(*image);
    draw_line(canvas, -1e9, 15, 1e9, 15, white);
    EXPECT_EQ(count(*image, white), 40);
    draw_line(canvas, 7, -infinite, 7, infinite, white);
    EXPECT_EQ(count(*image, white), 40 + 30 - 1);
    const auto diagonal = create_image(40, 30, black);
    Canvas other(*diagonal);
    draw_line(other, -1e30, -1e30, 1e30, 1e30, white);
    EXPECT_EQ(count(*diagonal, white), 30);
    for (int i = 0; i < 30; ++i)
        EXPECT_EQ(diagonal->pixel(i, i), white);
}

TEST(DrawingLine, MissesThePictureFromEverySide) {
    const auto image = create_image(10, 10, black);
    Canvas canvas(*image);
    draw_line(canvas, -5, -1, 30, -1, white);
    draw_line(canvas, -5, 10, 30, 12, white);
    draw_line(canvas, -1, -9, -3, 30, white);
    draw_line(canvas, 10, -9, 12, 30, white);
    draw_line(canvas, -20, 5, 5, -25, white);
    draw_line(canvas, 1e30, 1e30, 1e25, 1e26, white);
    EXPECT_EQ(count(*image, white), 0);
    EXPECT_FALSE(canvas.damaged());
}

TEST(DrawingLine, RelativeFromPenAndInForegroundColour) {
    const auto image = create_image(20, 20, black);
    Canvas canvas(*image);
    draw_line_relative(canvas, 2, 2, 5, 0, white);
    EXPECT_EQ(around(*image, white), (Rectangle{2, 2, 7, 2}));
    draw_line_from_pen(canvas, 7, 9, red);
    EXPECT_EQ(around(*image, red), (Rectangle{7, 2, 7, 9}));
    canvas.foreground = green;
    draw_line(canvas, 0, 15, 4, 15);
    EXPECT_EQ(around(*image, green), (Rectangle{0, 15, 4, 15}));
}

TEST(DrawingPen, IsTheEndOfTheLastFigure) {
    const auto image = create_image(20, 20, black);
    Canvas canvas(*image);
    const auto pen = [&] { return std::pair{canvas.pen_x, canvas.pen_y}; };
    draw_line(canvas, 1, 2, 3, 4, white);
    EXPECT_EQ(pen(), std::pair(3.0, 4.0));
    draw_box(canvas, 5, 6, 2, 1, white);
    EXPECT_EQ(pen(), std::pair(2.0, 1.0));
    fill_box_relative(canvas, 5, 6, 3, 4, white);
    EXPECT_EQ(pen(), std::pair(8.0, 10.0));
    draw_pixel(canvas, -3, 40, white);
    EXPECT_EQ(pen(), std::pair(-3.0, 40.0));
    draw_circle(canvas, 9, 8, 3, white);
    EXPECT_EQ(pen(), std::pair(9.0, 8.0));
    draw_line(canvas, 1, 2, nan_value, 4, white);
    EXPECT_EQ(pen(), std::pair(9.0, 8.0));
}

TEST(DrawingCoordinates, AreRoundedHalvesToTheEvenPixel) {
    const auto image = create_image(10, 10, black);
    Canvas canvas(*image);
    draw_pixel(canvas, 2.5, 3.5, white);
    EXPECT_EQ(image->pixel(2, 4), white);
    draw_pixel(canvas, -0.5, 0.49, red);
    EXPECT_EQ(image->pixel(0, 0), red);
    draw_pixel(canvas, 6.51, 7.5, green);
    EXPECT_EQ(image->pixel(7, 8), green);
}

TEST(DrawingCoordinates, WhatIsNotANumberIsNotDrawn) {
    const auto image = create_image(10, 10, black);
    Canvas canvas(*image);
    for (int which = 0; which < 4; ++which) {
        std::array<double, 4> c{1, 1, 5, 5};
        c[static_cast<std::size_t>(which)] = nan_value;
        draw_line(canvas, c[0], c[1], c[2], c[3], white);
        draw_line_relative(canvas, c[0], c[1], c[2], c[3], white);
        draw_box(canvas, c[0], c[1], c[2], c[3], white);
        draw_box_relative(canvas, c[0], c[1], c[2], c[3], white);
        fill_box(canvas, c[0], c[1], c[2], c[3], white);
        fill_box_relative(canvas, c[0], c[1], c[2], c[3], white);
    }
    draw_pixel(canvas, nan_value, 1, white);
    draw_pixel(canvas, 1, nan_value, white);
    draw_text(canvas, nan_value, 1, "text", white);
    draw_text(canvas, 1, nan_value, "text", white);
    EXPECT_EQ(count(*image, white), 0);
    EXPECT_FALSE(canvas.damaged());
}

TEST(DrawingCoordinates, InfinitiesAndHugeNumbersAreSafeInEveryFigure) {
    const auto image = create_image(10, 10, black);
    Canvas canvas(*image);
    for (const double far : {infinite, 1e30, 1e300, 4294967296.0}) {
        draw_pixel(canvas, far, -far, white);
        draw_text(canvas, far, 1, "text", white);
        draw_text(canvas, 1, -far, "text", white);
        draw_image(canvas, *image, far, -far, DrawMode::copy);
        draw_box(canvas, -far, -far, far, far, white);
        EXPECT_EQ(count(*image, white), 0);
    }
    fill_box(canvas, -infinite, 2, infinite, 3, white);
    EXPECT_EQ(count(*image, white), 20);
}

TEST(DrawingClip, CutsWithoutShifting) {
    const auto image = create_image(40, 40, black);
    Canvas canvas(*image);
    canvas.set_clip(20, 5, 10, 15);
    EXPECT_EQ(canvas.clip(), (Rectangle{10, 5, 20, 15}));
    fill_box(canvas, 0, 0, 39, 39, white);
    EXPECT_EQ(around(*image, white), (Rectangle{10, 5, 20, 15}));
    EXPECT_EQ(canvas.take_damage().around(), (Rectangle{10, 5, 20, 15}));
    EXPECT_FALSE(canvas.damaged());
    canvas.reset_clip();
    draw_pixel(canvas, 39, 39, red);
    EXPECT_EQ(image->pixel(39, 39), red);
}

TEST(DrawingClip, OutsideThePictureNothingIsDrawn) {
    const auto image = create_image(10, 10, black);
    Canvas canvas(*image);
    canvas.set_clip(50, 50, 60, 60);
    fill_box(canvas, -100, -100, 100, 100, white);
    draw_line(canvas, 0, 0, 9, 9, white);
    draw_circle(canvas, 5, 5, 4, white, 1, 0, whole_circle, true);
    draw_text(canvas, 0, 0, "A", white);
    draw_image(canvas, *create_image(4, 4, white), 0, 0, DrawMode::copy);
    EXPECT_EQ(count(*image, white), 0);
    EXPECT_FALSE(canvas.damaged());
}

TEST(DrawingDepths, SixteenBitColoursBecome565AndEightBitOnesTheirLowByte) {
    const auto sixteen = create_image(4, 4, 0, 16);
    Canvas canvas(*sixteen);
    draw_pixel(canvas, 1, 1, 0xFFFF8040);
    EXPECT_EQ(sixteen->pixel(1, 1), 0xFFu >> 3 << 11 | 0x80u >> 2 << 5 | 0x40u >> 3);
    EXPECT_EQ(sixteen->pixel(2, 1), 0u);
    const auto eight = create_image(4, 4, 0, 8);
    Canvas indices(*eight);
    fill_box(indices, 0, 0, 1, 3, 0xFFAB12C3);
    EXPECT_EQ(eight->pixel(1, 3), 0xC3u);
    EXPECT_EQ(eight->pixel(2, 3), 0u);
}

TEST(DrawingText, OnlyGlyphPixelsAreDrawn) {
    const auto image = create_image(30, 30, red);
    Canvas canvas(*image);
    draw_text(canvas, 3, 5, "A", white);
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 30; ++x) {
            const bool in_cell = x >= 3 && x < 11 && y >= 5 && y < 21;
            const bool set = in_cell && (glyph_rows('A')[y - 5] >> (7 - (x - 3)) & 1);
            ASSERT_EQ(image->pixel(x, y), set ? white : red);
        }
    EXPECT_GT(count(*image, white), 20);
}

TEST(DrawingText, StepsEightPixelsACharacterAndIsCut) {
    const auto whole = create_image(40, 20, black);
    const auto cut = create_image(40, 20, black);
    Canvas first(*whole), second(*cut);
    draw_text(first, -3, -2, "Wg@#%", white);
    second.set_clip(4, 3, 17, 11);
    draw_text(second, -3, -2, "Wg@#%", white);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 40; ++x)
            ASSERT_EQ(cut->pixel(x, y), inside({4, 3, 17, 11}, x, y) ? whole->pixel(x, y) : black);
    EXPECT_EQ(second.take_damage().around(), around(*cut, white));
}

TEST(DrawingText, GridTextWrapsAtTheRightEdge) {
    const auto image = create_image(960, 648, black);
    Canvas canvas(*image);
    canvas.foreground = green;
    canvas.text_column = 119;
    canvas.text_row = 2;
    print_text(canvas, "HH");
    EXPECT_EQ(canvas.text_column, 1);
    EXPECT_EQ(canvas.text_row, 3);
    const auto expected = create_image(960, 648, black);
    Canvas by_hand(*expected);
    draw_text(by_hand, 119 * 8, 32, "H", green);
    draw_text(by_hand, 0, 48, "H", green);
    EXPECT_EQ(picture(*image), picture(*expected));
}

int lit_pixels(int character) {
    int lit = 0;
    for (int y = 0; y < glyph_height; ++y)
        for (int bits = glyph_rows(static_cast<unsigned char>(character))[y]; bits; bits &= bits - 1)
            ++lit;
    return lit;
}

TEST(Font, HasEveryCharacterOfCodePage437) {
    for (int character = 1; character < 256; ++character)
        if (character != ' ' && character != 0xFF) {
            EXPECT_GT(lit_pixels(character), 0) << character;
        }
    EXPECT_EQ(lit_pixels(0), 0);
    EXPECT_EQ(lit_pixels(' '), 0);
    EXPECT_EQ(lit_pixels(0xFF), 0);
    EXPECT_EQ(lit_pixels(0xDB), 128); // full block
}

TEST(Font, BlocksAndBoxCharactersStandAtTheirCodes) {
    for (int y = 0; y < glyph_height; ++y) {
        EXPECT_EQ(glyph_rows(0xDC)[y], y < 8 ? 0x00 : 0xFF) << "lower half, row " << y;
        EXPECT_EQ(glyph_rows(0xDD)[y], 0xF0) << "left half, row " << y;
        EXPECT_EQ(glyph_rows(0xDE)[y], 0x0F) << "right half, row " << y;
        EXPECT_EQ(glyph_rows(0xDF)[y], y < 8 ? 0xFF : 0x00) << "upper half, row " << y;
        EXPECT_EQ(glyph_rows(0xB3)[y], glyph_rows(0xB3)[0]) << "vertical line, row " << y;
    }
    // A double top left corner goes to the right and down, not to the left nor up; a bottom right one the other way.
    const auto column = [](int character, int x) {
        int lit = 0;
        for (int y = 0; y < glyph_height; ++y)
            lit += glyph_rows(static_cast<unsigned char>(character))[y] >> (7 - x) & 1;
        return lit;
    };
    EXPECT_EQ(column(0xC9, 7), 2);
    EXPECT_EQ(column(0xC9, 0), 0);
    EXPECT_EQ(glyph_rows(0xC9)[0], 0);
    EXPECT_NE(glyph_rows(0xC9)[15], 0);
    EXPECT_EQ(column(0xBC, 0), 2);
    EXPECT_EQ(column(0xBC, 7), 0);
    EXPECT_NE(glyph_rows(0xBC)[0], 0);
    EXPECT_EQ(glyph_rows(0xBC)[15], 0);
}

TEST(Rectangles, IntersectionAndBoundingTreatEmptyOnesAsNothing) {
    const Rectangle a{0, 0, 9, 9}, b{5, 6, 20, 7}, far{30, 30, 40, 40};
    EXPECT_EQ(intersection(a, b), (Rectangle{5, 6, 9, 7}));
    EXPECT_TRUE(intersection(a, far).empty());
    EXPECT_EQ(bounding(a, b), (Rectangle{0, 0, 20, 9}));
    EXPECT_EQ(bounding(a, Rectangle{}), a);
    EXPECT_EQ(bounding(Rectangle{}, b), b);
    EXPECT_TRUE(bounding(Rectangle{}, Rectangle{}).empty());
}

} // namespace
