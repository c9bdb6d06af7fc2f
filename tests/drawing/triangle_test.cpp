// Triangles, to the pixel.
#include "drawing/triangle.h"

#include "drawing/drawing.h"
#include "support/picture_words.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <utility>

namespace {

struct Point {
    int x, y;
};
using Points = std::array<Point, 3>;

void draw(Canvas& canvas, const Points& at, std::uint32_t colour) {
    const auto narrow = [](int value) { return static_cast<std::int16_t>(value); };
    DRAWTRIANGLE(canvas, narrow(at[0].x), narrow(at[0].y), narrow(at[1].x), narrow(at[1].y), narrow(at[2].x),
                 narrow(at[2].y), colour);
}

// A picture of one triangle, white on black.
ImageHandle drawn(const Points& at, int width, int height, const Rectangle& clip) {
    auto image = create_image(width, height, black);
    Canvas canvas(*image);
    canvas.set_clip(clip.x1, clip.y1, clip.x2, clip.y2);
    draw(canvas, at, white);
    return image;
}
ImageHandle drawn(const Points& at, int width = 12, int height = 8) {
    return drawn(at, width, height, {0, 0, width - 1, height - 1});
}

void outline(Canvas& canvas, const Points& at) {
    for (std::size_t i = 0; i < 3; ++i)
        draw_line(canvas, at[i].x, at[i].y, at[(i + 1) % 3].x, at[(i + 1) % 3].y, white);
}

// The pixel of a position in 1/256 pixels: rounded down, also left of 0.
long pixel_of(long position) { return (position < 0 ? position - 255 : position) / 256; }

// The rule, walked row by row from the top corner without any short cut.
void walk(Canvas& canvas, Points at) {
    auto& [p1, p2, p3] = at;
    if (p1.y > p2.y) std::swap(p1, p2);
    if (p2.y > p3.y) std::swap(p2, p3);
    if (p1.y > p2.y) std::swap(p1, p2);
    if (p1.y > 647 || p3.y < 0) return;
    if (p1.y == p3.y) return outline(canvas, at);
    if (p1.y != p2.y && p2.y != p3.y) {
        const long across = static_cast<long>(p2.y - p1.y) * (p3.x - p1.x) / (p3.y - p1.y);
        const Point p4{p1.x + static_cast<int>(across), p2.y};
        walk(canvas, {p1, p2, p4});
        walk(canvas, {p2, p4, p3});
        return;
    }
    long left = 0, right = 0, left_step = 0, right_step = 0;
    const long rows = p3.y - p1.y;
    if (p2.y == p3.y) {
        if (p2.x > p3.x) std::swap(p2, p3);
        left = right = p1.x * 256L;
        left_step = (p2.x - p1.x) * 256L / rows;
        right_step = (p3.x - p1.x) * 256L / rows;
    } else {
        if (p1.x > p2.x) std::swap(p1, p2);
        left = p1.x * 256L;
        right = p2.x * 256L;
        left_step = (p3.x - p1.x) * 256L / rows;
        right_step = (p3.x - p2.x) * 256L / rows;
    }
    for (int row = p1.y; row <= p3.y; ++row) {
        const long a = pixel_of(left), b = pixel_of(right);
        const double from = static_cast<double>(std::max(a, 0L)), to = static_cast<double>(std::min(b, 959L));
        const bool skipped = from == 0 && to == 0;
        if (row >= 0 && row <= 647 && a < 960 && b >= 0 && !skipped) draw_line(canvas, from, row, to, row, white);
        left += left_step;
        right += right_step;
    }
    outline(canvas, at);
}

ImageHandle walked(const Points& at, int width, int height, const Rectangle& clip) {
    auto image = create_image(width, height, black);
    Canvas canvas(*image);
    canvas.set_clip(clip.x1, clip.y1, clip.x2, clip.y2);
    walk(canvas, at);
    return image;
}

std::string words(const Points& at) {
    std::string text;
    for (const Point& point : at)
        text += std::to_string(point.x) + ',' + std::to_string(point.y) + ' ';
    return text;
}

class RandomTriangles {
public:
    explicit RandomTriangles(unsigned seed) : random_(seed) {}
    int within(int least, int most) { return std::uniform_int_distribution<int>(least, most)(random_); }
    // Corners around a picture of 64 x 48, now and then far outside it, on one row or in one place.
    Points next() {
        Points at;
        const int reach = std::array{40, 40, 300, 5000, 32000}[static_cast<std::size_t>(within(0, 4))];
        for (Point& point : at)
            point = {32 + within(-reach, reach), 24 + within(-reach, reach)};
        if (within(0, 5) == 0) at[1].y = at[0].y;
        if (within(0, 5) == 0) at[2].y = at[1].y;
        if (within(0, 9) == 0) at[2] = at[0];
        return at;
    }

private:
    std::mt19937 random_;
};

TEST(DrawTriangle, FlatBottom) {
    EXPECT_EQ(picture(*drawn({{{5, 1}, {1, 5}, {9, 5}}})), "............\n"
                                                           ".....#......\n"
                                                           "....###.....\n"
                                                           "...#####....\n"
                                                           "..#######...\n"
                                                           ".#########..\n"
                                                           "............\n"
                                                           "............\n");
}

// The right side moves by two columns a row; the outline adds the column that its line takes between two rows.
TEST(DrawTriangle, FlatTop) {
    EXPECT_EQ(picture(*drawn({{{1, 1}, {9, 1}, {1, 5}}})), "............\n"
                                                           ".#########..\n"
                                                           ".########...\n"
                                                           ".######.....\n"
                                                           ".####.......\n"
                                                           ".##.........\n"
                                                           "............\n"
                                                           "............\n");
}

// The dividing row belongs to the outlines of both halves, the long side is the two halves' sides.
TEST(DrawTriangle, ThreeRowsAreTwoHalvesOnTheMiddleCornersRow) {
    const auto whole = drawn({{{2, 0}, {10, 3}, {4, 7}}});
    const auto halves = create_image(12, 8, black);
    Canvas canvas(*halves);
    draw(canvas, {{{2, 0}, {10, 3}, {2, 3}}}, white); // 2 + 3 * 2 / 7 = 2
    draw(canvas, {{{10, 3}, {2, 3}, {4, 7}}}, white);
    EXPECT_EQ(picture(*whole), picture(*halves));
    EXPECT_EQ(whole->pixel(2, 3), white);
}

// 10 + 2 x -3 / 8 is 10 when the fraction is dropped, and would be 9 if it were rounded down.
TEST(DrawTriangle, TheDividingPointIsCutTowardsZero) {
    const auto image = drawn({{{10, 0}, {20, 2}, {7, 8}}}, 24, 10);
    EXPECT_EQ(image->pixel(10, 2), white);
    EXPECT_EQ(image->pixel(9, 2), black);
}

TEST(DrawTriangle, OrderOfCornersDoesNotMatterOnThreeRows) {
    const Points at{{{2, 0}, {10, 3}, {4, 7}}};
    const std::string expected = picture(*drawn(at));
    for (const auto& order : {std::array{0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}})
        EXPECT_EQ(picture(*drawn({at[static_cast<std::size_t>(order[0])], at[static_cast<std::size_t>(order[1])],
                                  at[static_cast<std::size_t>(order[2])]})),
                  expected);
}

TEST(DrawTriangle, ThreeCornersOnOneRowAreTheOutlineAlone) {
    EXPECT_EQ(picture(*drawn({{{7, 2}, {3, 2}, {10, 2}}}, 12, 4)), "............\n"
                                                                   "............\n"
                                                                   "...########.\n"
                                                                   "............\n");
}

TEST(DrawTriangle, OnePointIsOnePixel) { EXPECT_EQ(count(*drawn({{{4, 4}, {4, 4}, {4, 4}}}), white), 1); }

TEST(DrawTriangle, WhollyAboveTheFirstRowNothingIsDrawn) {
    EXPECT_EQ(count(*drawn({{{1, -9}, {9, -1}, {3, -4}}}), white), 0);
    EXPECT_EQ(count(*drawn({{{1, -9}, {9, -9}, {3, -9}}}), white), 0);
    EXPECT_GT(count(*drawn({{{1, -9}, {9, 0}, {3, -4}}}), white), 0);
}

TEST(DrawTriangle, WhollyBelowTheLastRowNothingIsDrawn) {
    EXPECT_EQ(count(*drawn({{{1, 648}, {9, 655}, {3, 650}}}, 12, 660), white), 0);
    EXPECT_GT(count(*drawn({{{1, 647}, {9, 655}, {3, 650}}}, 12, 660), white), 0);
}

// The half below the dividing row begins outside the screen and is dropped, its outline too.
TEST(DrawTriangle, HalvesAreCutAtTheScreensRowsOnTheirOwn) {
    const auto image = drawn({{{50, 640}, {90, 648}, {10, 690}}}, 100, 700);
    EXPECT_EQ(around(*image, white).y2, 648);
    const auto higher = drawn({{{50, 639}, {90, 647}, {10, 689}}}, 100, 700);
    EXPECT_EQ(around(*higher, white).y2, 689);
}

TEST(DrawTriangle, CrossingTheTopEdgeItIsFilledFromRowZero) {
    // Half a column a row, rounded down on both sides; the outline's lines run on the outer pixels.
    EXPECT_EQ(picture(*drawn({{{6, -6}, {0, 6}, {12, 6}}}, 13, 8)), "...#######...\n"
                                                                    "..########...\n"
                                                                    "..#########..\n"
                                                                    ".##########..\n"
                                                                    ".###########.\n"
                                                                    "############.\n"
                                                                    "#############\n"
                                                                    ".............\n");
}

TEST(DrawTriangle, RowsEndAtTheLastRowAndColumnOfTheScreen) {
    const auto image = drawn({{{900, 600}, {990, 600}, {900, 690}}}, 1000, 700);
    EXPECT_EQ(image->pixel(959, 610), white);
    EXPECT_EQ(image->pixel(960, 610), black); // inside the triangle
    EXPECT_EQ(image->pixel(910, 647), white);
    EXPECT_EQ(image->pixel(910, 648), black);
    EXPECT_EQ(image->pixel(980, 610), white); // the outline is cut by the canvas alone
    EXPECT_EQ(image->pixel(900, 680), white);
}

// The right side gains a quarter of a column a row: on row 23 it stands at 0.75, filled as column 0, outlined as
// column 1.
// ODDITY triangle-skips-column-zero
TEST(DrawTriangle, ARowOfTheFirstColumnAloneIsLeftToTheOutline) {
    const auto image = drawn({{{-5, 0}, {-20, 40}, {5, 40}}}, 12, 48);
    EXPECT_EQ(image->pixel(0, 23), black);
    EXPECT_EQ(image->pixel(1, 23), white);
    EXPECT_EQ(image->pixel(0, 24), white);
    const auto one_column_on = drawn({{{-4, 0}, {-19, 40}, {6, 40}}}, 12, 48);
    EXPECT_EQ(one_column_on->pixel(1, 23), white);
}

// The right side falls short by 344/256 of a column on the long way down, the left one by nothing.
TEST(DrawTriangle, SidesThatHaveCrossedAreFilledBetweenThemAllTheSame) {
    const auto image = drawn({{{0, 0}, {1, 0}, {600, 600}}}, 700, 640);
    EXPECT_EQ(image->pixel(599, 599), white);
    EXPECT_EQ(image->pixel(598, 599), white);
    EXPECT_EQ(image->pixel(597, 599), white);
    EXPECT_EQ(image->pixel(596, 599), black);
}

TEST(DrawTriangle, EveryPixelIsThatOfTheRuleWalkedRowByRow) {
    RandomTriangles random(1);
    for (int round = 0; round < 4000; ++round) {
        const Points at = random.next();
        const Rectangle clip{random.within(0, 63), random.within(0, 47), random.within(0, 63), random.within(0, 47)};
        const auto ours = drawn(at, 64, 48, clip), theirs = walked(at, 64, 48, clip);
        ASSERT_TRUE(std::ranges::equal(ours->bytes(), theirs->bytes())) << words(at);
    }
}

// Nothing is cut here, so that most halves are drawn as one run a row.
TEST(DrawTriangle, EveryTriangleOfASmallGridIsThatOfTheRule) {
    constexpr int side = 7, corners = side * side;
    const auto corner = [](int number) { return Point{2 + number % side, 1 + number / side}; };
    for (int a = 0; a < corners; ++a)
        for (int b = a; b < corners; ++b)
            for (int c = b; c < corners; ++c) {
                const Points at{corner(a), corner(b), corner(c)};
                const Rectangle everything{0, 0, side + 3, side + 1};
                const auto ours = drawn(at, side + 4, side + 2, everything);
                const auto theirs = walked(at, side + 4, side + 2, everything);
                ASSERT_TRUE(std::ranges::equal(ours->bytes(), theirs->bytes())) << words(at) << '\n'
                                                                                << picture(*ours) << '\n'
                                                                                << picture(*theirs);
            }
}

// Around the height of 128 rows the one way of finding the pixels takes over from the other.
TEST(DrawTriangle, TrianglesOfMiddlingSizeAreThoseOfTheRule) {
    RandomTriangles random(5);
    const auto ours = create_image(300, 160, black), theirs = create_image(300, 160, black);
    Canvas our_canvas(*ours), their_canvas(*theirs);
    for (int round = 0; round < 1500; ++round) {
        const int least_height = random.within(0, 1) * 120;
        const Points at{{{random.within(1, 299), random.within(0, 8)},
                         {random.within(1, 299), random.within(0, 150)},
                         {random.within(1, 299), std::min(8 + least_height + random.within(0, 30), 159)}}};
        fill_box(our_canvas, 0, 0, 299, 159, black);
        fill_box(their_canvas, 0, 0, 299, 159, black);
        draw(our_canvas, at, white);
        walk(their_canvas, at);
        ASSERT_TRUE(std::ranges::equal(ours->bytes(), theirs->bytes())) << words(at);
    }
}

TEST(DrawTriangle, EveryPixelOfTheWholeScreenIsThatOfTheRule) {
    std::mt19937 random(2);
    std::uniform_int_distribution<int> column(-1200, 2200), row(-900, 1500);
    for (int round = 0; round < 40; ++round) {
        Points at;
        for (Point& point : at)
            point = {column(random), row(random)};
        const Rectangle everything{0, 0, 999, 699};
        const auto ours = drawn(at, 1000, 700, everything), theirs = walked(at, 1000, 700, everything);
        ASSERT_TRUE(std::ranges::equal(ours->bytes(), theirs->bytes())) << words(at);
    }
}

TEST(DrawTriangle, PicturesOfOtherDepthsGetTheSamePixels) {
    RandomTriangles random(3);
    for (int round = 0; round < 200; ++round) {
        const Points at = random.next();
        const auto deep = drawn(at, 64, 48);
        for (const int depth : {8, 16}) {
            const auto image = create_image(64, 48, 0, depth);
            Canvas canvas(*image);
            draw(canvas, at, white);
            for (int y = 0; y < 48; ++y)
                for (int x = 0; x < 64; ++x)
                    ASSERT_EQ(image->pixel(x, y) != 0, deep->pixel(x, y) == white) << words(at);
        }
    }
}

TEST(DrawTriangle, AllThatIsDrawnCountsAsChanged) {
    RandomTriangles random(4);
    for (int round = 0; round < 500; ++round) {
        const Points at = random.next();
        const auto image = create_image(64, 48, black);
        Canvas canvas(*image);
        draw(canvas, at, white);
        const Rectangle changed = canvas.take_damage().around(), found = around(*image, white);
        ASSERT_EQ(intersection(changed, found), found) << words(at);
    }
}

TEST(DrawTriangle, LeavesThePenWhereItIs) {
    const auto image = create_image(20, 20, black);
    Canvas canvas(*image);
    canvas.pen_x = 3;
    canvas.pen_y = 4;
    draw(canvas, {{{1, 1}, {9, 1}, {1, 5}}}, white);
    EXPECT_EQ(canvas.pen_x, 3);
    EXPECT_EQ(canvas.pen_y, 4);
}

TEST(DrawTriangle, TheFarthestCornersCostNoMoreThanTheScreen) {
    const auto image = create_image(960, 648, black);
    Canvas canvas(*image);
    for (int round = 0; round < 100; ++round)
        draw(canvas, {{{-32768, -32768}, {32767, -32768}, {0, 32767}}}, white);
    EXPECT_EQ(count(*image, white), 960 * 648);
}

} // namespace
