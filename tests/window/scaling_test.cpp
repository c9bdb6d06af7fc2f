#include "window/scaling.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace {

constexpr Size picture{960, 648};

Placement place(int width, int height) { return place_picture(picture, {width, height}); }

TEST(Placing, AtItsOwnSizeThePictureFillsTheWindow) {
    const Placement placement = place(960, 648);
    EXPECT_TRUE(placement.sharp);
    EXPECT_EQ(placement.x, 0);
    EXPECT_EQ(placement.y, 0);
    EXPECT_EQ(placement.width, 960);
    EXPECT_EQ(placement.height, 648);
}

TEST(Placing, WholeMultiplesAreSharp) {
    for (int scale = 2; scale <= 5; ++scale) {
        const Placement placement = place(960 * scale, 648 * scale);
        EXPECT_TRUE(placement.sharp);
        EXPECT_EQ(placement.width, 960 * scale);
        EXPECT_EQ(placement.height, 648 * scale);
    }
}

TEST(Placing, ALittleMoreThanAWholeMultipleStaysSharpWithBorders) {
    const Placement placement = place(1000, 900);
    EXPECT_TRUE(placement.sharp);
    EXPECT_EQ(placement.x, 20);
    EXPECT_EQ(placement.y, 126);
    EXPECT_EQ(placement.width, 960);
}

TEST(Placing, InBetweenThePictureIsAsLargeAsItFits) {
    const Placement placement = place(1440, 1000);
    EXPECT_FALSE(placement.sharp);
    EXPECT_EQ(placement.width, 1440);
    EXPECT_EQ(placement.height, 972);
    EXPECT_EQ(placement.x, 0);
    EXPECT_EQ(placement.y, 14);
}

TEST(Placing, ASmallWindowShowsAllOfThePicture) {
    const Placement placement = place(500, 400);
    EXPECT_FALSE(placement.sharp);
    EXPECT_EQ(placement.width, 500);
    EXPECT_EQ(placement.height, 338);
    EXPECT_EQ(placement.y, 31);
    EXPECT_FALSE(place(959, 648).sharp);
}

TEST(Placing, SevenEighthsIsSharpEnough) {
    EXPECT_TRUE(place(1097, 648 * 2).sharp);
    EXPECT_FALSE(place(1098, 648 * 2).sharp);
}

TEST(Placing, AWindowWithoutAreaIsSurvived) {
    for (const Size window : {Size{0, 0}, Size{0, 648}, Size{960, 0}, Size{1, 1}}) {
        const Placement placement = place_picture(picture, window);
        EXPECT_GE(placement.width, 1);
        EXPECT_GE(placement.height, 1);
        const Rectangle area = window_area(placement, {0, 0, 959, 647});
        EXPECT_TRUE(area.empty() || (area.x2 < window.width && area.y2 < window.height));
    }
}

TEST(PointerMapping, EveryPicturePixelIsReachedAndNoneOutside) {
    for (const Size window : {Size{960, 648}, Size{1920, 1296}, Size{1000, 900}, Size{1440, 1000}}) {
        const Placement placement = place_picture(picture, window);
        std::vector<bool> columns(960), rows(648);
        for (int x = -2; x < window.width + 2; ++x)
            for (int y : {placement.y + placement.height / 2}) {
                const auto point = picture_point(placement, x + 0.5, y + 0.5);
                EXPECT_EQ(point.has_value(), x >= placement.x && x < placement.x + placement.width) << x;
                if (point) columns.at(static_cast<std::size_t>(point->x)) = true;
            }
        for (int y = -2; y < window.height + 2; ++y)
            if (const auto point = picture_point(placement, placement.x + 0.5, y + 0.5))
                rows.at(static_cast<std::size_t>(point->y)) = true;
        EXPECT_EQ(columns, std::vector<bool>(960, true)) << window.width;
        EXPECT_EQ(rows, std::vector<bool>(648, true)) << window.height;
    }
}

TEST(PointerMapping, CornersAreCorners) {
    const Placement small = place(500, 400);
    EXPECT_EQ(picture_point(small, 0.5, 31.5), (Point{0, 0}));
    EXPECT_EQ(picture_point(small, 499.5, 368.5), (Point{959, 647}));
    EXPECT_EQ(picture_point(small, 250, 30.9), std::nullopt);
    EXPECT_EQ(picture_point(small, 250, 369), std::nullopt);
    EXPECT_EQ(picture_point(small, -0.1, 200), std::nullopt);
    EXPECT_EQ(picture_point(small, 500, 200), std::nullopt);
}

// An image whose pixels all differ.
Image motley(int width, int height) {
    Image image(width, height, 4, static_cast<std::size_t>(width) * 4 + 12);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.set_pixel(x, y, 0xFF000000u + static_cast<std::uint32_t>((x * 37 + y * 101) % 256 * 0x010203 + y));
    return image;
}

struct Target {
    explicit Target(const Placement& at)
        : placement(at), pitch(static_cast<std::size_t>(at.window.width) + 3),
          words(pitch * static_cast<std::size_t>(at.window.height), 0x12345678) {}
    std::uint32_t at(int x, int y) const {
        return words[static_cast<std::size_t>(y) * pitch + static_cast<std::size_t>(x)];
    }
    void draw(const Image& image, const Rectangle& changed) { draw_area(image, window_area(placement, changed)); }
    void draw_area(const Image& image, const Rectangle& area) { Scaler(placement).draw(image, area, words, pitch); }

    Placement placement;
    std::size_t pitch;
    std::vector<std::uint32_t> words;
};

TEST(Scaling, SharpPixelsAreRepeatedExactly) {
    const Image image = motley(7, 5);
    for (int scale = 1; scale <= 3; ++scale) {
        Target target(place_picture({7, 5}, {7 * scale, 5 * scale}));
        target.draw(image, {0, 0, 6, 4});
        for (int y = 0; y < 5 * scale; ++y)
            for (int x = 0; x < 7 * scale; ++x)
                ASSERT_EQ(target.at(x, y), image.pixel(x / scale, y / scale)) << x << "," << y;
    }
}

TEST(Scaling, OneColourStaysThatColourHoweverItIsScaled) {
    Image image(30, 20, 4, 120);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 30; ++x)
            image.set_pixel(x, y, 0xFFFF01FE);
    for (const Size window : {Size{44, 33}, Size{17, 11}, Size{29, 20}, Size{1, 1}, Size{130, 90}}) {
        Target target(place_picture({30, 20}, window));
        target.draw(image, {0, 0, 29, 19});
        const Placement& placement = target.placement;
        for (int y = placement.y; y < placement.y + placement.height; ++y)
            for (int x = placement.x; x < placement.x + placement.width; ++x)
                ASSERT_EQ(target.at(x, y), 0xFFFF01FE) << window.width << ": " << x << "," << y;
    }
}

TEST(Scaling, HalvingAverages) {
    Image image(4, 4, 4, 16);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            image.set_pixel(x, y, x % 2 == 0 ? 0xFF000000 : 0xFFFFFFFF);
    Target target(place_picture({4, 4}, {2, 2}));
    target.draw(image, {0, 0, 3, 3});
    for (int x = 0; x < 2; ++x) {
        EXPECT_GT(target.at(x, 0) & 0xFF, 0x50u);
        EXPECT_LT(target.at(x, 0) & 0xFF, 0xB0u);
    }
}

TEST(Scaling, OnlyThePartThatDependsOnTheChangeIsDrawnAndItIsAllOfIt) {

    for (const Size window : {Size{40, 30}, Size{80, 60}, Size{61, 47}, Size{25, 19}, Size{150, 70}}) {
        Image image = motley(40, 30);
        Target target(place_picture({40, 30}, window));
        target.draw(image, {0, 0, 39, 29});
        for (const Rectangle changed : {Rectangle{0, 0, 0, 0}, Rectangle{39, 29, 39, 29}, Rectangle{13, 7, 20, 9}}) {
            for (int y = changed.y1; y <= changed.y2; ++y)
                for (int x = changed.x1; x <= changed.x2; ++x)
                    image.set_pixel(x, y, 0xFFFFFFFF);
            target.draw(image, changed);
            Target anew(target.placement);
            anew.draw(image, {0, 0, 39, 29});
            ASSERT_EQ(target.words, anew.words) << window.width;
        }
    }
}

// Each pixel of the rectangle is that of the whole, and nothing beside it is touched.
void expect_part_of_whole(const Rectangle& area, const Target& part, const Target& whole) {
    for (int y = 0; y < whole.placement.window.height; ++y)
        for (int x = 0; x < whole.placement.window.width; ++x) {
            const bool inside = area.contains({x, y});
            ASSERT_EQ(part.at(x, y), inside ? whole.at(x, y) : 0x12345678u) << x << "," << y;
        }
}

TEST(Scaling, ARectangleHasThePixelsOfTheWhole) {
    std::mt19937 random(1);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const Image image = motley(40, 30);
    for (const Size window : {Size{40, 30}, Size{80, 60}, Size{61, 47}, Size{25, 19}, Size{13, 9}, Size{99, 70}}) {
        Target whole(place_picture({40, 30}, window));
        whole.draw(image, {0, 0, 39, 29});
        const Placement& at = whole.placement;
        for (int i = 0; i < 40; ++i) {
            const int x1 = at.x + below(at.width), y1 = at.y + below(at.height);
            const Rectangle area{x1, y1, x1 + below(at.x + at.width - x1), y1 + below(at.y + at.height - y1)};
            Target part(at);
            part.draw_area(image, area);
            expect_part_of_whole(area, part, whole);
        }
    }
}

// What a smoothed pixel is made of, written down once more without any haste: rows first, then columns, each a weighed
// sum in 256ths, rounded.
TEST(Scaling, SmoothPixelsAreTheWeighedSumsOfTheirTaps) {
    const Image image = motley(40, 30);
    for (const Size window : {Size{61, 47}, Size{25, 19}}) {
        Target target(place_picture({40, 30}, window));
        target.draw(image, {0, 0, 39, 29});
        const Placement& at = target.placement;
        const Taps columns(40, at.width), rows(30, at.height);
        const auto channel = [&](int x, int y, int shift) {
            std::uint32_t across = 128;
            for (const auto& [column, column_weight] : columns.of(x)) {
                std::uint32_t down = 128;
                for (const auto& [row, row_weight] : rows.of(y))
                    down += (image.pixel(column, row) >> shift & 0xFF) * row_weight;
                across += (down >> 8) * column_weight;
            }
            return across >> 8 << shift;
        };
        for (int y = 0; y < at.height; ++y)
            for (int x = 0; x < at.width; ++x)
                ASSERT_EQ(target.at(at.x + x, at.y + y),
                          0xFF000000u | channel(x, y, 16) | channel(x, y, 8) | channel(x, y, 0))
                    << x << "," << y;
    }
}

TEST(Scaling, TheWeightsOfAPixelAddUpAndItsTapsAreInOrder) {
    for (const auto& [from, to] : {std::pair{960, 1200}, {960, 240}, {648, 162}, {40, 1}, {1, 40}, {30, 29}}) {
        const Taps taps(from, to);
        for (int pixel = 0; pixel < to; ++pixel) {
            std::uint32_t sum = 0;
            for (const auto& [index, weight] : taps.of(pixel)) {
                sum += weight;
                EXPECT_GE(index, taps.of(pixel).front().index);
                EXPECT_LE(index, taps.of(pixel).back().index);
            }
            ASSERT_EQ(sum, 256u) << from << " to " << to << ": " << pixel;
        }
    }
}

TEST(Scaling, BordersAreLeftAlone) {
    const Image image = motley(10, 10);
    Target target(place_picture({10, 10}, {15, 31}));
    target.draw(image, {0, 0, 9, 9});
    EXPECT_EQ(target.at(7, 0), 0x12345678u);
    EXPECT_EQ(target.at(7, 30), 0x12345678u);
    EXPECT_NE(target.at(7, 15), 0x12345678u);
}

TEST(Scaling, NothingChangedDrawsNothing) {
    const Image image = motley(10, 10);
    Target target(place_picture({10, 10}, {10, 10}));
    target.draw_area(image, Rectangle{});
    EXPECT_EQ(target.at(0, 0), 0x12345678u);
}

} // namespace
