// Rectangles, the list of those that changed, and the clip that restores itself.
#include "drawing/drawing.h"
#include "support/picture_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::SizeIs;
using testing::UnorderedElementsAre;

std::vector<Rectangle> listed(const std::vector<Rectangle>& added) {
    DamageList list;
    for (const Rectangle& one : added)
        list.add(one);
    return {list.rectangles().begin(), list.rectangles().end()};
}

long area(const std::vector<Rectangle>& rectangles) {
    long sum = 0;
    for (const Rectangle& one : rectangles)
        sum += static_cast<long>(one.x2 - one.x1 + 1) * (one.y2 - one.y1 + 1);
    return sum;
}

} // namespace

TEST(RectangleTest, ContainsItsCornersAndNothingOutside) {
    const Rectangle box{2, 3, 5, 4};
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            EXPECT_EQ(box.contains({x, y}), x >= 2 && x <= 5 && y >= 3 && y <= 4) << x << "," << y;
    EXPECT_FALSE(Rectangle{}.contains({0, 0}));
}

TEST(DamageListTest, KeepsWhatLiesFarApartApart) {
    const Rectangle above{10, 10, 300, 25}, below{10, 400, 300, 415};
    EXPECT_THAT(listed({above, below}), UnorderedElementsAre(above, below));
    DamageList list;
    EXPECT_TRUE(list.empty());
    EXPECT_TRUE(list.around().empty());
    list.add(above);
    list.add(below);
    EXPECT_FALSE(list.empty());
    EXPECT_EQ(list.around(), (Rectangle{10, 10, 300, 415}));
}

TEST(DamageListTest, JoinsWhatLiesCloseTogether) {
    EXPECT_THAT(listed({{10, 10, 17, 25}, {18, 10, 25, 25}}), ElementsAre(Rectangle{10, 10, 25, 25})) << "letters";
    EXPECT_THAT(listed({{0, 0, 99, 99}, {10, 10, 20, 20}}), ElementsAre(Rectangle{0, 0, 99, 99}));
    EXPECT_THAT(listed({{10, 10, 20, 20}, {0, 0, 99, 99}}), ElementsAre(Rectangle{0, 0, 99, 99}));
}

TEST(DamageListTest, ARectangleThatBringsOthersTogetherJoinsThemAll) {
    EXPECT_THAT(listed({{0, 0, 99, 99}, {200, 0, 299, 99}, {400, 0, 499, 99}, {0, 0, 499, 99}}),
                ElementsAre(Rectangle{0, 0, 499, 99}));
}

TEST(DamageListTest, AnEmptyRectangleIsNone) { EXPECT_THAT(listed({{}, {5, 5, 4, 9}}), SizeIs(0)); }

TEST(DamageListTest, IsNeverLongAndCoversEverything) {
    std::mt19937 random(5);
    for (int round = 0; round < 50; ++round) {
        std::vector<Rectangle> added;
        for (int i = 0; i < 40; ++i) {
            const int x = static_cast<int>(random() % 950), y = static_cast<int>(random() % 640);
            added.push_back({x, y, x + static_cast<int>(random() % 30), y + static_cast<int>(random() % 30)});
            const std::vector<Rectangle> list = listed(added);
            ASSERT_LE(list.size(), 8U);
            for (const Rectangle& one : added) {
                const bool covered = std::ranges::any_of(
                    list, [&](const Rectangle& in_list) { return intersection(in_list, one) == one; });
                ASSERT_TRUE(covered);
            }
        }
    }
}

TEST(DamageListTest, PastItsLengthItJoinsWhatCostsLeast) {
    std::vector<Rectangle> added;
    for (int i = 0; i < 8; ++i)
        added.push_back({0, i * 300, 9, i * 300 + 9});
    added.push_back({140, 2100, 149, 2109}); // beside the last one
    const std::vector<Rectangle> list = listed(added);
    EXPECT_THAT(list, SizeIs(8));
    EXPECT_EQ(area(list), 7 * 100 + 1500);
}

TEST(CanvasTest, TellsTheRectanglesThatFiguresHaveSet) {
    const auto image = create_image(400, 400, black);
    Canvas canvas(*image);
    fill_box(canvas, 10, 10, 20, 20, white);
    draw_line(canvas, 300, 10, 300, 390, white);
    fill_box(canvas, Rectangle{350, 350, 340, 340}, white); // empty
    const DamageList damage = canvas.take_damage();
    EXPECT_THAT(std::vector(damage.rectangles().begin(), damage.rectangles().end()),
                UnorderedElementsAre(Rectangle{10, 10, 20, 20}, Rectangle{300, 10, 300, 390}));
    EXPECT_FALSE(canvas.damaged());
}

TEST(ClipGuardTest, CutsWithinTheClipBeforeAndRestoresIt) {
    const auto image = create_image(40, 40, black);
    Canvas canvas(*image);
    canvas.set_clip(5, 5, 30, 30);
    {
        const ClipGuard guard(canvas, {20, 0, 39, 39});
        EXPECT_EQ(canvas.clip(), (Rectangle{20, 5, 30, 30}));
        {
            const ClipGuard inner(canvas, {0, 0, 10, 10});
            fill_box(canvas, 0, 0, 39, 39, white);
            draw_text(canvas, 0, 0, "A", white);
            EXPECT_EQ(count(*image, white), 0) << "nothing is left of both";
        }
        EXPECT_EQ(canvas.clip(), (Rectangle{20, 5, 30, 30}));
        fill_box(canvas, 0, 0, 39, 39, white);
    }
    EXPECT_EQ(canvas.clip(), (Rectangle{5, 5, 30, 30}));
    EXPECT_EQ(around(*image, white), (Rectangle{20, 5, 30, 30}));
}

TEST(ClipGuardTest, RestoresAnEmptyClip) {
    const auto image = create_image(40, 40, black);
    Canvas canvas(*image);
    canvas.set_clip(Rectangle{});
    { const ClipGuard guard(canvas, {0, 0, 39, 39}); }
    fill_box(canvas, 0, 0, 39, 39, white);
    EXPECT_EQ(count(*image, white), 0);
}
