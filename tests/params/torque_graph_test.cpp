#include "params/torque_graph.h"

#include "params/parameter_test.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

constexpr std::uint32_t high = 0xFFFA5000, low = 0xFF00C800, clipped = 0xFFFF00FA, selected = 0xFF00FAFA,
                        hovered = 0xFFFAFAFA, axis = 0xFFB4B4B4, curve = 0xFF00B400;
constexpr std::uint32_t idle = 0xFFB4A000, downshift = 0xFF3C3CB4, upshift = 0xFF3CB4B4, maximum = 0xFFF05000;

class TorqueGraphTest : public ParameterTest {
protected:
    TorqueGraph graph;

    void SetUp() override {
        ParameterTest::SetUp();
        fill_box(screen(), 0, 0, 959, 599, colour::background);
    }
    void draw() { draw_torque_graph(screen(), graph); }
    void hover(int point) {
        draw_hovered_point(screen(), graph, point);
        draw_hovered_values(screen(), point);
    }
    // All markers out of the way of what is looked at.
    static void hide_markers() {
        for (int marker = 1; marker <= speed_markers; ++marker)
            set_marker_speed(marker, 0);
    }
};

} // namespace

TEST_F(TorqueGraphTest, KnowsItsAreas) {
    EXPECT_TRUE(over_curve(65, 245));
    EXPECT_TRUE(over_curve(686, 500));
    EXPECT_FALSE(over_curve(64, 300));
    EXPECT_FALSE(over_curve(687, 300));
    EXPECT_FALSE(over_curve(300, 244));
    EXPECT_FALSE(over_curve(300, 501));
    EXPECT_TRUE(over_marker_strip(65, 510));
    EXPECT_TRUE(over_marker_strip(686, 540));
    EXPECT_FALSE(over_marker_strip(64, 520));
    EXPECT_FALSE(over_marker_strip(687, 520));
    EXPECT_FALSE(over_marker_strip(300, 509));
    EXPECT_FALSE(over_marker_strip(300, 541));
}

TEST_F(TorqueGraphTest, EverySixPixelsAreOnePoint) {
    EXPECT_EQ(point_at(65), 0);
    EXPECT_EQ(point_at(70), 0);
    EXPECT_EQ(point_at(71), 1);
    EXPECT_EQ(point_at(686), 103);
}

TEST_F(TorqueGraphTest, AHeightIsATorqueByTheZoom) {
    EXPECT_EQ(torque_at(245, 1), 255);
    EXPECT_EQ(torque_at(245, 2), 127);
    EXPECT_EQ(torque_at(245, 4), 63);
    EXPECT_EQ(torque_at(499, 2), 0);
    EXPECT_EQ(torque_at(500, 1), 0);
}

TEST_F(TorqueGraphTest, NoPlaceOfTheMouseLeavesTheRange) {
    for (int x = 65; x <= 686; ++x) {
        EXPECT_GE(point_at(x), 0);
        EXPECT_LT(point_at(x), torque_points);
        EXPECT_GE(dragged_speed(x), 0);
        EXPECT_LE(keyed_speed(x), 65535);
    }
    for (int zoom = 1; zoom <= 4; ++zoom)
        for (int y = 245; y <= 500; ++y) {
            EXPECT_GE(torque_at(y, zoom), 0);
            EXPECT_LE(torque_at(y, zoom), 255);
        }
}

TEST_F(TorqueGraphTest, ADragCutsTheSpeedAndAKeyRoundsIt) { // ODDITY marker-drag-truncates-key-rounds
    EXPECT_EQ(dragged_speed(65), 0);
    EXPECT_EQ(keyed_speed(65), 0);
    EXPECT_EQ(dragged_speed(66), 21); // 21.33
    EXPECT_EQ(keyed_speed(66), 21);
    EXPECT_EQ(dragged_speed(67), 42); // 42.67
    EXPECT_EQ(keyed_speed(67), 43);
    EXPECT_EQ(dragged_speed(686), 13248);
    EXPECT_EQ(keyed_speed(686), 13248);
    for (int x = 65; x <= 686; ++x) {
        EXPECT_EQ(dragged_speed(x), (128 * x - 8320) / 6);
        EXPECT_EQ(keyed_speed(x), std::lround((128 * x - 8320) / 6.0)); // thirds have no halves
    }
}

TEST_F(TorqueGraphTest, AMarkersPlaceIsRoundedHalvesToTheEvenPixel) {
    EXPECT_EQ(marker_place(0), 0);
    EXPECT_EQ(marker_place(1000), 47); // 46.875
    EXPECT_EQ(marker_place(32), 2);    // 1.5
    EXPECT_EQ(marker_place(96), 4);    // 4.5
    EXPECT_EQ(marker_place(65535), 3072);
}

TEST_F(TorqueGraphTest, PicksTheNearestMarker) {
    EXPECT_EQ(marker_near(1400), 1);
    EXPECT_EQ(marker_near(1600), 2);
    EXPECT_EQ(marker_near(9499), 3);
    EXPECT_EQ(marker_near(9501), 4);
}

TEST_F(TorqueGraphTest, AMarkerAThousandAwayIsNotPicked) {
    EXPECT_EQ(marker_near(2999), 2);
    EXPECT_EQ(marker_near(3000), 0);
    EXPECT_EQ(marker_near(5000), 0);
    EXPECT_EQ(marker_near(8000), 0);
    EXPECT_EQ(marker_near(8001), 3);
}

TEST_F(TorqueGraphTest, OfMarkersAtOneSpeedTheFirstIsPicked) {
    for (int first = 1; first <= speed_markers; ++first) {
        for (int marker = first; marker <= speed_markers; ++marker)
            set_marker_speed(marker, 6000);
        EXPECT_EQ(marker_near(6100), first);
        set_marker_speed(first, 0);
    }
    // As near from both sides: the earlier one again.
    set_marker_speed(2, 4000);
    set_marker_speed(4, 5000);
    EXPECT_EQ(marker_near(4500), 2);
}

TEST_F(TorqueGraphTest, SpeedsAndTorqueAreKeptInTheirWidth) {
    set_marker_speed(1, -5);
    EXPECT_EQ(par_word(6), 0);
    set_marker_speed(4, 70000);
    EXPECT_EQ(par_word(12), 65535);
    set_torque(0, 300);
    EXPECT_EQ(par_byte(58), 255);
    set_torque(103, -1);
    EXPECT_EQ(par_byte(161), 0);
    set_torque(104, 7);
    set_torque(-1, 7);
    EXPECT_EQ(par_word(162), 0);
    EXPECT_EQ(par_byte(57), 0);
}

TEST_F(TorqueGraphTest, DrawsAxesAndTicks) {
    hide_markers();
    set_curve(50);
    draw();
    EXPECT_EQ(drawn(55, 245), Pixel{axis});
    EXPECT_EQ(drawn(54, 245), Pixel{colour::background});
    EXPECT_EQ(drawn(55, 500), Pixel{axis});
    EXPECT_EQ(drawn(683, 500), Pixel{axis});
    EXPECT_EQ(drawn(112, 507), Pixel{axis}); // 1000: 111.875
    EXPECT_EQ(drawn(112, 508), Pixel{colour::background});
    EXPECT_EQ(drawn(674, 507), Pixel{axis}); // 13000: 674.375
    EXPECT_TRUE(screen_shows(104, 510, "1k", axis));
    EXPECT_TRUE(screen_shows(662, 510, "13k", axis));
    EXPECT_TRUE(screen_shows(45, 492, "0", axis));
}

TEST_F(TorqueGraphTest, TicksAtHalfPixelsStandAtTheEvenOne) {
    hide_markers();
    set_curve(50);
    draw();
    for (const auto& [x, label_x, label] : {std::tuple{252, 244, "4k"}, std::tuple{628, 616, "12k"}}) { // 252.5, 627.5
        SCOPED_TRACE(label);
        EXPECT_TRUE(is_filled(x, 501, x, 507, axis));
        EXPECT_EQ(drawn(x - 1, 507), Pixel{colour::background});
        EXPECT_EQ(drawn(x + 1, 507), Pixel{colour::background});
        EXPECT_TRUE(screen_shows(label_x, 510, label, axis));
    }
}

TEST_F(TorqueGraphTest, AxesEndWhereTheyShould) {
    hide_markers();
    set_curve(50); // its first box stands over the vertical axis, its last above the end of the horizontal one
    draw();
    EXPECT_TRUE(is_filled(65, 245, 65, 398, axis));
    EXPECT_TRUE(is_filled(65, 402, 65, 500, axis));
    EXPECT_NE(drawn(65, 244), Pixel{axis});
    EXPECT_TRUE(is_filled(55, 245, 65, 245, axis));
    EXPECT_TRUE(is_filled(55, 500, 683, 500, axis));
    EXPECT_EQ(drawn(684, 500), Pixel{colour::background});
    EXPECT_EQ(drawn(54, 500), Pixel{colour::background});
}

TEST_F(TorqueGraphTest, TheTopLabelFollowsTheZoom) {
    const std::array<std::string, 4> labels{"255", "127", "84", "63"};
    for (graph.zoom = 1; graph.zoom <= 4; ++graph.zoom) {
        draw();
        EXPECT_TRUE(screen_shows(29, 237, labels[static_cast<std::size_t>(graph.zoom - 1)], axis)) << graph.zoom;
    }
}

TEST_F(TorqueGraphTest, DrawsTheMarkers) {
    set_marker_speed(1, 1000);
    set_marker_speed(2, 3000);
    set_marker_speed(3, 5000);
    set_marker_speed(4, 7000);
    draw();
    const std::array<std::uint32_t, 4> colours{idle, downshift, upshift, maximum};
    const std::array<int, 4> places{47, 141, 234, 328}; // 46.875, 140.625, 234.375, 328.125
    const std::array<std::string, 4> letters{"I", "D", "U", "M"};
    for (std::size_t i = 0; i < 4; ++i) {
        SCOPED_TRACE(letters[i]);
        EXPECT_EQ(drawn(places[i] + 65, 245), Pixel{colours[i]});
        EXPECT_EQ(drawn(places[i] + 65, 400), Pixel{colours[i]});
        EXPECT_EQ(drawn(places[i] + 64, 540), Pixel{colours[i]}); // the lowest pixel of the disc
        EXPECT_EQ(drawn(places[i] + 64 - 8, 532), Pixel{colours[i]});
        EXPECT_EQ(drawn(places[i] + 64 + 8, 532), Pixel{colours[i]});
        EXPECT_TRUE(screen_shows(places[i] + 61, 525, letters[i], 0xFF000000));
    }
    EXPECT_TRUE(is_filled(72, 545, 231, 560, colour::background));
}

TEST_F(TorqueGraphTest, ShowsTheSpeedOfTheDraggedMarker) {
    const std::array<std::string, 4> texts{"Idle: 1000 RPM", "Downshift: 2000 RPM", "Upshift: 9000 RPM",
                                           "Max: 10000 RPM"};
    const std::array<std::uint32_t, 4> colours{idle, downshift, upshift, maximum};
    for (graph.dragged = 1; graph.dragged <= 4; ++graph.dragged) {
        draw();
        const auto i = static_cast<std::size_t>(graph.dragged - 1);
        EXPECT_TRUE(screen_shows(72, 545, texts[i], colours[i])) << texts[i];
    }
}

TEST_F(TorqueGraphTest, AtZoom1HighTorqueIsDrawnInPlace) {
    hide_markers();
    graph.zoom = 1;
    set_torque(10, 127);
    set_torque(20, 128);
    set_torque(30, 255);
    draw();
    EXPECT_TRUE(has_point_box(10, 127, low));
    EXPECT_TRUE(has_point_box(20, 128, high));
    EXPECT_TRUE(has_point_box(30, 255, high));
    EXPECT_TRUE(has_point_box(40, 0, low));
}

TEST_F(TorqueGraphTest, AtZoom2HighTorqueIsClippedAtTheTopLine) {
    hide_markers();
    set_torque(10, 127);
    set_torque(20, 128);
    set_torque(30, 255);
    draw();
    EXPECT_TRUE(has_point_box(10, 254, low));
    EXPECT_TRUE(has_point_box(20, 255, clipped));
    EXPECT_TRUE(has_point_box(30, 255, clipped));
}

TEST_F(TorqueGraphTest, AtZoom2EveryTorqueFrom128OnIsClipped) {
    hide_markers();
    for (int first = 0; first < 256; first += torque_points - 1) { // point 0 is selected
        for (int point = 1; point < torque_points; ++point)
            set_torque(point, first + point - 1);
        draw();
        for (int point = 1; point < torque_points; ++point) {
            const int value = torque(point);
            EXPECT_EQ(drawn(64 + 6 * point, 500 - std::min(255, 2 * value) - 1), Pixel{value < 128 ? low : clipped})
                << value;
        }
    }
}

TEST_F(TorqueGraphTest, TheCurveClimbsInStraightLines) {
    hide_markers();
    graph.zoom = 1;
    graph.selected = 90;
    set_curve(0);
    set_torque(11, 60);
    set_torque(12, 60);
    draw();
    // From (125,500) up to (131,440), a column every ten pixels; the boxes of the points stand over both ends.
    for (int y = 498; y >= 442; --y) {
        if ((500 - y) % 10 == 5) continue; // between two columns
        EXPECT_EQ(drawn(125 + static_cast<int>(std::lround((500 - y) / 10.0)), y), Pixel{curve}) << y;
    }
    EXPECT_EQ(drawn(134, 440), Pixel{curve});
    EXPECT_EQ(drawn(140, 470), Pixel{curve}); // half-way down to (143,500)
    EXPECT_EQ(drawn(128, 440), Pixel{colour::background});
}

TEST_F(TorqueGraphTest, AxesLieOverMarkersTheCurveOverAxesAndBoxesOverTheCurve) {
    hide_markers();
    set_marker_speed(4, 5000); // at x 299
    set_curve(0);
    set_torque(50, 40);
    graph.zoom = 1;
    draw();
    EXPECT_EQ(drawn(65, 300), Pixel{axis}); // markers at speed 0 stand on the vertical axis
    EXPECT_EQ(drawn(299, 498), Pixel{maximum});
    EXPECT_EQ(drawn(299, 500), Pixel{curve}); // the marker, the axis, the curve
    EXPECT_EQ(drawn(60, 500), Pixel{axis});
    EXPECT_EQ(drawn(65 + 6 * 20 - 1, 500), Pixel{low}); // a box's side, which the curve goes through
    EXPECT_EQ(drawn(65 + 6 * 20 + 1, 500), Pixel{low});
    EXPECT_EQ(drawn(65 + 6 * 20, 500), Pixel{curve}); // its centre is open
}

TEST_F(TorqueGraphTest, TheCurveJoinsThePoints) {
    hide_markers();
    graph.zoom = 1;
    set_curve(100);
    draw();
    for (int x = 68; x < 683; x += 6)
        EXPECT_EQ(drawn(x, 400), Pixel{curve}) << x;
    set_torque(50, 255);
    graph.zoom = 4; // all clipped: a straight line along the top
    draw();
    for (int x = 68; x < 683; x += 6)
        EXPECT_EQ(drawn(x, 245), Pixel{curve}) << x;
}

TEST_F(TorqueGraphTest, TheSelectedPointIsDrawnAboveTheGraph) { // ODDITY selected-point-unclipped
    hide_markers();
    graph.zoom = 2;
    graph.selected = 60;
    set_torque(60, 150);
    draw();
    EXPECT_TRUE(has_point_box(60, 300, selected));
    EXPECT_NE(drawn(65 + 6 * 60 + 1, 244), Pixel{clipped});
    graph.zoom = 1;
    draw();
    EXPECT_TRUE(has_point_box(60, 150, selected));
}

TEST_F(TorqueGraphTest, ClearsWhatStoodThereBefore) {
    fill_box(screen(), 0, 0, 959, 599, 0xFF123456);
    hide_markers();
    draw();
    EXPECT_EQ(drawn(11, 300), Pixel{0xFF123456});
    EXPECT_EQ(drawn(12, 230), Pixel{colour::background});
    EXPECT_EQ(drawn(718, 564), Pixel{colour::background});
    EXPECT_EQ(drawn(719, 300), Pixel{0xFF123456});
    EXPECT_EQ(drawn(300, 229), Pixel{0xFF123456});
    EXPECT_EQ(drawn(300, 565), Pixel{0xFF123456});
}

TEST_F(TorqueGraphTest, TellsWhenItReachesOutside) {
    EXPECT_FALSE(reaches_outside(graph));
    set_torque(0, 134); // its box ends at y 231
    EXPECT_FALSE(reaches_outside(graph));
    set_torque(0, 135); // at 229
    EXPECT_TRUE(reaches_outside(graph));
    set_torque(0, 0);
    set_marker_speed(4, 13770); // its disc ends at x 717
    EXPECT_FALSE(reaches_outside(graph));
    set_marker_speed(4, 13800);
    EXPECT_TRUE(reaches_outside(graph));
}

TEST_F(TorqueGraphTest, HoverHighlightsAndTells) {
    hide_markers();
    graph.selected = 90;
    set_torque(10, 20);
    set_torque(11, 30);
    draw();
    hover(10);
    EXPECT_TRUE(has_point_box(10, 40, hovered));
    EXPECT_TRUE(screen_shows(520, 545, "1280 RPM", axis));
    EXPECT_TRUE(screen_shows(610, 545, "Torque=20", axis));
    graph.hovered_speed = 1280;
    hover(11);
    EXPECT_TRUE(has_point_box(10, 40, low));
    EXPECT_TRUE(has_point_box(11, 60, hovered));
    EXPECT_TRUE(screen_shows(520, 545, "1408 RPM", axis));
    EXPECT_TRUE(screen_shows(610, 545, "Torque=30", axis));
}

TEST_F(TorqueGraphTest, HoverHighlightsUpToTheTopLine) {
    hide_markers();
    graph.selected = 90;
    graph.hovered_speed = 40 * 128;
    graph.zoom = 3;
    set_torque(10, 85); // 255
    draw();
    hover(10);
    EXPECT_TRUE(has_point_box(10, 255, hovered));
    graph.zoom = 2;
    set_torque(10, 128); // 256
    draw();
    hover(10);
    EXPECT_TRUE(has_point_box(10, 255, clipped));
    EXPECT_FALSE(has_point_box(10, 256, hovered));
}

TEST_F(TorqueGraphTest, HoverLeavesHighTorqueInItsColour) {
    hide_markers();
    graph.zoom = 1;
    graph.selected = 90;
    graph.hovered_speed = 10 * 128;
    set_torque(10, 200);
    draw();
    hover(11);
    EXPECT_TRUE(has_point_box(10, 200, high));
}

TEST_F(TorqueGraphTest, TheBoxLeftBehindTakesTheSelectedColour) { // ODDITY hover-box-takes-selected-colour
    hide_markers();
    graph.selected = 11;
    graph.hovered_speed = 10 * 128;
    draw();
    hover(11);
    EXPECT_TRUE(has_point_box(10, 0, selected));
    EXPECT_TRUE(has_point_box(11, 0, hovered));
    // Leaving the selected point itself gives it the plain colour.
    graph.hovered_speed = 11 * 128;
    hover(12);
    EXPECT_TRUE(has_point_box(11, 0, low));
}

TEST_F(TorqueGraphTest, HoverLeavesClippedPointsAlone) {
    hide_markers();
    graph.selected = 90;
    graph.hovered_speed = 10 * 128;
    set_torque(10, 200);
    set_torque(11, 200);
    draw();
    hover(11);
    EXPECT_TRUE(has_point_box(10, 255, clipped));
    EXPECT_TRUE(has_point_box(11, 255, clipped));
    EXPECT_TRUE(screen_shows(610, 545, "Torque=200", axis));
}
