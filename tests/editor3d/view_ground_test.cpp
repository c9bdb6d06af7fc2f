// The grid, and what the parameters say about the car's size.
#include "editor3d/view_ground.h"

#include "base/reset.h"
#include "drawing/drawing.h"
#include "model/car.h"
#include "model/parameters.h"
#include "support/picture_words.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

constexpr std::uint32_t data = ground_colour::physical_data;

TEST(ViewGrid, TwentyOneLinesEachWay) {
    const auto image = create_image(140, 140, black);
    Canvas canvas(*image);
    draw_grid(canvas, {70, 65, 12});
    // Above the grid's middle line, half way between two lines across.
    for (int line = -10; line <= 10; ++line) {
        const std::uint32_t colour = line == 0       ? ground_colour::axis
                                     : line % 2 == 0 ? ground_colour::unit
                                                     : ground_colour::half_unit;
        EXPECT_EQ(image->pixel(70 + 6 * line, 65 - 3), colour) << line;
        EXPECT_EQ(image->pixel(70 - 3, 65 + 6 * line), colour) << line;
    }
    EXPECT_EQ(around(*image, black), (Rectangle{0, 0, 139, 139}));
    canvas.take_damage();
    draw_grid(canvas, {70, 65, 12});
    EXPECT_EQ(canvas.take_damage().around(), (Rectangle{10, 5, 130, 125}));
}

// Line by line from the least value on, so that a later one crosses over an earlier one.
TEST(ViewGrid, LaterLinesCrossOverEarlierOnes) {
    const auto image = create_image(140, 140, black);
    Canvas canvas(*image);
    draw_grid(canvas, {70, 65, 12});
    EXPECT_EQ(image->pixel(70, 65), ground_colour::axis);
    EXPECT_EQ(image->pixel(70, 65 + 6), ground_colour::half_unit);
    EXPECT_EQ(image->pixel(70 + 12, 65), ground_colour::unit);
    EXPECT_EQ(image->pixel(70, 65 - 6), ground_colour::axis);
}

class PhysicalData : public testing::Test {
protected:
    static constexpr int side = 200;
    static constexpr ViewMapping mapping{100, 120, 40};
    static constexpr double scale = 0.04 * 40;

    PhysicalData() {
        reset_program();
        set_par_word(200, 15);
        set_par_word(202, 22);
        set_par_word(204, 36);
        set_par_word(206, 44);
    }

    static ImageHandle drawn(Plane plane) {
        return figures([&](Canvas& canvas) { draw_physical_data(canvas, plane, mapping); });
    }
    static ImageHandle figures(const std::function<void(Canvas&)>& draw) {
        auto image = create_image(side, side, black);
        Canvas canvas(*image);
        draw(canvas);
        return image;
    }
    static void dot(Canvas& canvas, double x, double y) {
        draw_circle(canvas, x, y, 3, data, 1, 0, whole_circle, true);
    }
};

TEST_F(PhysicalData, FromTheFrontTheBoxIsTwiceTheHalfWidthAndStandsOnTheGround) {
    const auto expected = figures(
        [](Canvas& canvas) { draw_box(canvas, 100 - 15 * scale, 120 - 22 * scale, 100 + 15 * scale, 120, data); });
    EXPECT_EQ(picture(*drawn(Plane::front)), picture(*expected));
    EXPECT_EQ(around(*expected, data), (Rectangle{76, 85, 124, 120}));
}

TEST_F(PhysicalData, FromTheSideTheBoxIsTwiceTheHalfLength) {
    const auto expected = figures(
        [](Canvas& canvas) { draw_box(canvas, 100 - 36 * scale, 120 - 22 * scale, 100 + 36 * scale, 120, data); });
    EXPECT_EQ(picture(*drawn(Plane::side)), picture(*expected));
}

// ODDITY wheel-dots-mirrored
TEST_F(PhysicalData, FromTheTopWheelsAreDotsWithYRunningDownwards) {
    const int unit = 40; // words a pixel at this zoom: 1 / (0.000625 x 40)
    const std::array<std::array<int, 2>, 4> wheels{{{-20, 30}, {25, 35}, {28, -40}, {-18, -45}}};
    for (int wheel = 0; wheel < 4; ++wheel) {
        set_par_word(210 + 6 * wheel, static_cast<std::uint16_t>(wheels[static_cast<std::size_t>(wheel)][0] * unit));
        set_par_word(214 + 6 * wheel, static_cast<std::uint16_t>(wheels[static_cast<std::size_t>(wheel)][1] * unit));
    }
    EXPECT_EQ(picture(*drawn(Plane::top)), picture(*figures([&](Canvas& canvas) {
                  for (const auto& [across, along] : wheels)
                      dot(canvas, 100 + across, 120 + along);
                  draw_circle(canvas, 100, 120, 44 * scale, data);
                  draw_box(canvas, 100 - 15 * scale, 120 - 36 * scale, 100 + 15 * scale, 120 + 36 * scale, data);
              })));
    EXPECT_EQ(drawn(Plane::top)->pixel(80, 150), data);
    EXPECT_EQ(drawn(Plane::top)->pixel(80, 90), black);
}

TEST_F(PhysicalData, BoxWordsHaveNoSign) {
    set_par_word(202, 0xFFFF);
    const auto image = drawn(Plane::front);
    EXPECT_EQ(image->pixel(76, 0), data); // reaches far above the picture
    EXPECT_EQ(image->pixel(100, 120), data);
}

} // namespace
