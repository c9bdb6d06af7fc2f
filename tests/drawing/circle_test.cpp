// Circles, ellipses and arcs against plain references.
#include "drawing/drawing.h"

#include "support/picture_words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <numbers>
#include <vector>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr int side = 101;
constexpr int centre = 50;

ImageHandle circle(double radius, double aspect = 1, double start = 0, double end = whole_circle, bool filled = false) {
    auto image = create_image(side, side, black);
    Canvas canvas(*image);
    draw_circle(canvas, centre, centre, radius, white, aspect, start, end, filled);
    EXPECT_EQ(canvas.take_damage().around(), around(*image, white));
    return image;
}

bool lit(const Image& image, int x, int y) { return image.pixel(x, y) == white; }

// How many separate pieces, touching by sides or corners, the white pixels form.
int pieces(const Image& image) {
    const auto left = create_image(image.width(), image.height());
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            left->set_pixel(x, y, image.pixel(x, y));
    int found = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            if (!lit(*left, x, y)) continue;
            ++found;
            std::vector<std::pair<int, int>> open{{x, y}};
            while (!open.empty()) {
                const auto [px, py] = open.back();
                open.pop_back();
                if (!lit(*left, px, py)) continue;
                left->set_pixel(px, py, black);
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx)
                        open.emplace_back(px + dx, py + dy);
            }
        }
    return found;
}

// Whether the ground can be walked, by sides only, from the centre to the picture's edge.
bool leaks(const Image& image) {
    std::vector<bool> seen(static_cast<std::size_t>(side * side));
    std::vector<std::pair<int, int>> open{{centre, centre}};
    while (!open.empty()) {
        const auto [x, y] = open.back();
        open.pop_back();
        if (x < 0 || y < 0 || x >= side || y >= side) return true;
        const auto at = static_cast<std::size_t>(y * side + x);
        if (seen[at] || lit(image, x, y)) continue;
        seen[at] = true;
        for (const auto& [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}})
            open.emplace_back(x + dx, y + dy);
    }
    return false;
}

// A pixel with lit neighbours on a horizontal and on a vertical side that touch each other by a corner: one too many.
int corner_pixels(const Image& image) {
    int found = 0;
    for (int y = 1; y + 1 < side; ++y)
        for (int x = 1; x + 1 < side; ++x) {
            if (!lit(image, x, y)) continue;
            const bool across = lit(image, x - 1, y) != lit(image, x + 1, y);
            const bool down = lit(image, x, y - 1) != lit(image, x, y + 1);
            const bool outer =
                !(lit(image, x - 1, y) && lit(image, x + 1, y)) && !(lit(image, x, y - 1) && lit(image, x, y + 1));
            found += across && down && outer;
        }
    return found;
}

// Distance of a pixel from the ellipse, near enough close to it: the equation's value over the gradient's length.
double distance_from_ellipse(double x, double y, double half_width, double half_height) {
    const double value = x * x / (half_width * half_width) + y * y / (half_height * half_height) - 1;
    const double slope = 2 * std::hypot(x / (half_width * half_width), y / (half_height * half_height));
    return slope > 0 ? value / slope : -std::min(half_width, half_height);
}

struct HalfAxes {
    double width, height;
};
HalfAxes half_axes(double radius, double aspect) {
    const double shorter = std::nearbyint(aspect > 1 ? radius / aspect : radius * aspect);
    const double longer = std::nearbyint(radius);
    return aspect > 1 ? HalfAxes{shorter, longer} : HalfAxes{longer, shorter};
}

TEST(Circle, RadiusZeroIsOnePixel) {
    const auto image = circle(0);
    EXPECT_EQ(count(*image, white), 1);
    EXPECT_TRUE(lit(*image, centre, centre));
    EXPECT_EQ(count(*circle(0, 3, 0, whole_circle, true), white), 1);
}

TEST(Circle, SmallCirclesLookRound) {
    const auto image = create_image(7, 7, black);
    Canvas canvas(*image);
    draw_circle(canvas, 3, 3, 2, white);
    EXPECT_EQ(picture(*image), ".......\n"
                               "..###..\n"
                               ".#...#.\n"
                               ".#...#.\n"
                               ".#...#.\n"
                               "..###..\n"
                               ".......\n");
    draw_circle(canvas, 3, 3, 3, white, 1, 0, whole_circle, true);
    EXPECT_EQ(picture(*image), "..###..\n"
                               ".#####.\n"
                               "#######\n"
                               "#######\n"
                               "#######\n"
                               ".#####.\n"
                               "..###..\n");
}

TEST(Circle, OutlineIsClosedConnectedThinAndNearTheCurve) {
    for (double radius = 1; radius < 49; radius += radius < 20 ? 1 : 4)
        for (const double aspect : {1.0, 0.9, 0.75, 0.5, 0.3, 0.1, 1.1, 1.5, 2.0, 3.7, 8.0}) {
            const auto image = circle(radius, aspect);
            const auto [width, height] = half_axes(radius, aspect);
            ASSERT_EQ(pieces(*image), 1) << radius << ' ' << aspect;
            const bool has_inside = width >= 2 && height >= 2;
            if (has_inside) {
                ASSERT_FALSE(leaks(*image)) << radius << ' ' << aspect << '\n' << picture(*image);
            }
            if (has_inside) {
                ASSERT_EQ(corner_pixels(*image), 0) << radius << ' ' << aspect << '\n' << picture(*image);
            }
            for (int y = 0; y < side; ++y)
                for (int x = 0; x < side; ++x) {
                    if (!lit(*image, x, y) || !has_inside) continue;
                    const double distance = distance_from_ellipse(x - centre, y - centre, width, height);
                    ASSERT_LT(std::abs(distance), 0.9) << radius << ' ' << aspect << ' ' << x << ' ' << y;
                }
        }
}

TEST(Circle, HalfAxesFollowTheAspect) {
    EXPECT_EQ(around(*circle(40, 1), white), (Rectangle{10, 10, 90, 90}));
    EXPECT_EQ(around(*circle(40, 0.5), white), (Rectangle{10, 30, 90, 70}));
    EXPECT_EQ(around(*circle(40, 2), white), (Rectangle{30, 10, 70, 90}));
    EXPECT_EQ(around(*circle(40, 1e-9), white), (Rectangle{10, 50, 90, 50}));
    EXPECT_EQ(around(*circle(40, 1e9), white), (Rectangle{50, 10, 50, 90}));
    EXPECT_EQ(around(*circle(40, infinite), white), (Rectangle{50, 10, 50, 90}));
}

TEST(Circle, FilledIsTheOutlineAndAllItEncloses) {
    for (double radius = 0; radius < 49; radius += 1.5)
        for (const double aspect : {1.0, 0.6, 0.2, 1.7, 5.0}) {
            const auto outline = circle(radius, aspect);
            const auto filled = circle(radius, aspect, 0, whole_circle, true);
            for (int y = 0; y < side; ++y) {
                int first = side, last = -1;
                for (int x = 0; x < side; ++x)
                    if (lit(*outline, x, y)) {
                        first = std::min(first, x);
                        last = x;
                    }
                for (int x = 0; x < side; ++x)
                    ASSERT_EQ(lit(*filled, x, y), x >= first && x <= last)
                        << radius << ' ' << aspect << ' ' << x << ' ' << y;
            }
        }
}

TEST(Circle, NotDrawnForRadiusOrAspectThatIsNoPositiveNumber) {
    for (const double bad : {-1.0, nan_value, -infinite})
        EXPECT_EQ(count(*circle(bad), white), 0);
    for (const double bad : {0.0, -1.0, nan_value, -infinite})
        EXPECT_EQ(count(*circle(10, bad), white), 0);
    for (const double bad : {nan_value, infinite}) {
        EXPECT_EQ(count(*circle(10, 1, bad, 1), white), 0);
        EXPECT_EQ(count(*circle(10, 1, 0, bad), white), 0);
    }
    const auto image = create_image(10, 10, black);
    Canvas canvas(*image);
    draw_circle(canvas, nan_value, 5, 3, white);
    draw_circle(canvas, 5, nan_value, 3, white);
    EXPECT_EQ(count(*image, white), 0);
}

TEST(Circle, CutAtTheClipRectangleLikeTheWholeFigure) {
    for (const bool filled : {false, true})
        for (const double aspect : {1.0, 0.4, 2.5}) {
            const auto whole = circle(45, aspect, 0, whole_circle, filled);
            const auto cut = create_image(side, side, black);
            Canvas canvas(*cut);
            const Rectangle clip{20, 33, 61, 80};
            canvas.set_clip(clip.x1, clip.y1, clip.x2, clip.y2);
            draw_circle(canvas, centre, centre, 45, white, aspect, 0, whole_circle, filled);
            for (int y = 0; y < side; ++y)
                for (int x = 0; x < side; ++x)
                    ASSERT_EQ(lit(*cut, x, y), inside(clip, x, y) && lit(*whole, x, y));
        }
}

TEST(Circle, HugeRadiiCostNoMoreThanThePicture) {
    const std::clock_t begin = std::clock();
    const auto image = create_image(side, side, black);
    Canvas canvas(*image);
    for (const double radius : {1e6, 1e9, 1e30, 1e300, infinite})
        for (const double aspect : {1.0, 1e-6, 1e6, 1e-300, 1e300}) {
            draw_circle(canvas, centre, centre, radius, white, aspect);
            draw_circle(canvas, centre, centre, radius, white, aspect, 1, 3);
            draw_circle(canvas, centre, centre, radius, white, aspect, -1, -3);
            draw_circle(canvas, centre + radius, centre, radius, white, aspect, 0, whole_circle, true);
            draw_circle(canvas, 1e30, -1e30, radius, white, aspect, 0, whole_circle, true);
        }
    EXPECT_LT(std::clock() - begin, 2 * CLOCKS_PER_SEC); // of the processor: what else runs takes no part
}

TEST(Circle, HugeCircleThroughThePictureIsAStraightLine) {
    const auto image = create_image(side, side, black);
    Canvas canvas(*image);
    draw_circle(canvas, centre, centre + 1e8, 1e8, white);
    EXPECT_EQ(around(*image, white), (Rectangle{0, centre, side - 1, centre}));
    EXPECT_EQ(count(*image, white), side);
}

TEST(Arc, AnglesRunCounterClockwiseFromTheRight) {
    const auto quarter = circle(40, 1, 0, pi / 2);
    EXPECT_EQ(around(*quarter, white), (Rectangle{50, 10, 90, 50}));
    EXPECT_EQ(around(*circle(40, 1, pi / 2, pi), white), (Rectangle{10, 10, 50, 50}));
    EXPECT_EQ(around(*circle(40, 1, pi, 3 * pi / 2), white), (Rectangle{10, 50, 50, 90}));
    EXPECT_EQ(around(*circle(40, 1, 3 * pi / 2, 2 * pi), white), (Rectangle{50, 50, 90, 90}));
}

TEST(Arc, UpperHalfWithFiveDecimalsOfPiReachesBothSides) {
    const auto image = circle(40, 0.5, 0, 3.14159);
    EXPECT_EQ(around(*image, white), (Rectangle{10, 30, 90, 50}));
    EXPECT_EQ(pieces(*image), 1);
}

TEST(Arc, IsThePartOfTheOutlineBetweenItsAngles) {
    for (const double aspect : {1.0, 0.5, 2.0})
        for (double start = 0; start < 6.2; start += 0.73)
            for (double sweep = 0.2; sweep < 6; sweep += 0.97) {
                const auto outline = circle(40, aspect);
                const auto arc = circle(40, aspect, start, start + sweep);
                const auto [width, height] = half_axes(40, aspect);
                ASSERT_EQ(pieces(*arc), 1);
                for (int y = 0; y < side; ++y)
                    for (int x = 0; x < side; ++x) {
                        if (lit(*arc, x, y)) {
                            ASSERT_TRUE(lit(*outline, x, y));
                        }
                        if (!lit(*outline, x, y)) continue;
                        // A pixel well inside the sweep is there, one well outside is not.
                        const double angle = std::atan2((centre - y) / height, (x - centre) / width);
                        const double past = std::fmod(angle - start + 4 * pi, 2 * pi);
                        if (past > 0.1 && past < sweep - 0.1) {
                            ASSERT_TRUE(lit(*arc, x, y));
                        }
                        if (past > sweep + 0.1 && past < 2 * pi - 0.1) {
                            ASSERT_FALSE(lit(*arc, x, y));
                        }
                    }
            }
}

TEST(Arc, EndBelowStartWrapsRound) {
    const auto wrapped = circle(40, 1, 3 * pi / 2, pi / 2);
    EXPECT_EQ(around(*wrapped, white), (Rectangle{50, 10, 90, 90}));
    EXPECT_EQ(picture(*wrapped), picture(*circle(40, 1, 3 * pi / 2, 5 * pi / 2)));
}

TEST(Arc, NegativeAngleAddsTheRadiusLineToThatEnd) {
    const auto plain = circle(40, 1, 0.5, 2);
    const auto joined = circle(40, 1, 0.5, -2);
    EXPECT_FALSE(lit(*plain, centre, centre));
    EXPECT_TRUE(lit(*joined, centre, centre));
    EXPECT_EQ(pieces(*joined), 1);
    // The new pixels lie along the radius at angle 2, all the way, and nowhere else.
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            if (lit(*plain, x, y)) {
                EXPECT_TRUE(lit(*joined, x, y));
            }
            if (lit(*plain, x, y) || !lit(*joined, x, y)) continue;
            const double off = (x - centre) * std::sin(2.0) + (centre - y) * -std::cos(2.0);
            EXPECT_LT(std::abs(off), 1.0) << x << ' ' << y;
        }
    EXPECT_GT(count(*circle(40, 1, -0.5, 2), white), count(*plain, white) + 20);
    EXPECT_EQ(pieces(*circle(40, 1, -0.5, -2)), 1);
    EXPECT_GT(count(*circle(40, 1, -0.5, -2), white), count(*joined, white) + 20);
}

TEST(Arc, ZeroWithASignIsNotNegative) { EXPECT_EQ(picture(*circle(40, 1, 2, -0.0)), picture(*circle(40, 1, 2, 0))); }

TEST(Arc, WholeTurnsCloseTheFigure) {
    const auto whole = circle(40, 0.7);
    EXPECT_EQ(picture(*circle(40, 0.7, 1, 1 + whole_circle)), picture(*whole));
    EXPECT_EQ(picture(*circle(40, 0.7, 0, 100)), picture(*whole));
    const auto with_radius = circle(40, 0.7, 0, -whole_circle);
    EXPECT_EQ(count(*with_radius, white), count(*whole, white) + 40);
}

TEST(Arc, OnlyWholeFiguresAreFilled) {
    EXPECT_EQ(picture(*circle(40, 1, 0.3, 3, true)), picture(*circle(40, 1, 0.3, 3, false)));
}

TEST(Arc, StartEqualToEndIsOnePixel) {
    const auto image = circle(40, 1, 1, 1);
    EXPECT_EQ(count(*image, white), 1);
}

} // namespace
