#include "model/gauges.h"

#include "model/bitmap_table.h"
#include "model/items.h"

#include "support/cockpit.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

namespace {
class Gauges : public testing::Test {
protected:
    Gauges() { INITDASHITEMS(); }
};
} // namespace

TEST_F(Gauges, LieWhereTheParametersSay) {
    set_gauge_centre(speedometer, {0x0102, 0x0304});
    set_point_count(speedometer, 100);
    set_needle_tip(speedometer, 0, {1, 2});
    set_needle_tip(speedometer, 103, {3, 4});
    EXPECT_EQ(par_word(296), 0x0102);
    EXPECT_EQ(par_word(298), 0x0304);
    EXPECT_EQ(par_word(300), 100);
    EXPECT_EQ(par_byte(302), 1);
    EXPECT_EQ(par_byte(303), 2);
    EXPECT_EQ(par_byte(508), 3);
    EXPECT_EQ(par_byte(509), 4);

    set_gauge_centre(tachometer, {5, 6});
    set_point_count(tachometer, 127);
    set_needle_tip(tachometer, 127, {7, 8});
    EXPECT_EQ(par_word(510), 5);
    EXPECT_EQ(par_word(512), 6);
    EXPECT_EQ(par_word(514), 127);
    EXPECT_EQ(par_byte(770), 7);
    EXPECT_EQ(par_byte(771), 8);
    EXPECT_EQ(needle_tip(tachometer, 127), (CockpitPoint{7, 8}));
    EXPECT_EQ(gauge_centre(tachometer), (CockpitPoint{5, 6}));

    set_wheel_marker(0, {9, 10});
    set_wheel_marker(30, {11, 12});
    EXPECT_EQ(par_byte(234), 9);
    EXPECT_EQ(par_byte(235), 10);
    EXPECT_EQ(par_byte(294), 11);
    EXPECT_EQ(par_byte(295), 12);

    set_gear_count(5);
    set_knob(gate, {13, 14});
    set_knob(6, {15, 0x1617});
    EXPECT_EQ(par_byte(0), 5);
    EXPECT_EQ(par_word(28), 13);
    EXPECT_EQ(par_word(30), 14);
    EXPECT_EQ(par_word(52), 15);
    EXPECT_EQ(par_word(54), 0x1617);
    EXPECT_EQ(knob(6), (CockpitPoint{15, 0x1617}));
}

TEST_F(Gauges, CountsBeyondTheirBoundsAreReadAsTheBoundAndKept) {
    set_par_word(300, 104);
    set_par_word(514, 65535);
    set_par_byte(0, 7);
    EXPECT_EQ(point_count(speedometer), 103);
    EXPECT_EQ(point_count(tachometer), 127);
    EXPECT_EQ(gear_count(), 6);
    EXPECT_EQ(par_word(300), 104);
    EXPECT_EQ(par_word(514), 65535);
    EXPECT_EQ(par_byte(0), 7);
}

TEST_F(Gauges, WordsAreSignedAndTipsKeepTheirLowBytes) {
    set_gauge_centre(speedometer, {-5, -300});
    EXPECT_EQ(par_word(296), 65531);
    EXPECT_EQ(gauge_centre(speedometer), (CockpitPoint{-5, -300}));
    set_needle_tip(speedometer, 1, {-1, 258});
    EXPECT_EQ(needle_tip(speedometer, 1), (CockpitPoint{255, 2}));
}

TEST_F(Gauges, SumsWrapTo16Bits) {
    EXPECT_EQ((CockpitPoint{32767, -32768} + CockpitPoint{1, -1}), (CockpitPoint{-32768, 32767}));
    EXPECT_EQ((CockpitPoint{-32768, 32767} - CockpitPoint{1, -1}), (CockpitPoint{32767, -32768}));
    EXPECT_EQ((CockpitPoint{10, 20} + CockpitPoint{-3, 5}), (CockpitPoint{7, 25}));
}

TEST_F(Gauges, MarkersAreMirroredAboutTheFirstOne) {
    set_wheel_marker(0, {140, 100});
    set_wheel_marker(7, {190, 130});
    EXPECT_EQ(mirrored_marker(7), (CockpitPoint{90, 130}));
    EXPECT_EQ(mirrored_marker(0), (CockpitPoint{140, 100}));
    set_wheel_marker(0, {0, 0});
    EXPECT_EQ(mirrored_marker(7), (CockpitPoint{-190, 130}));
}

TEST_F(Gauges, ABitmapThatIsNotThereStandsAtTheCorner) {
    EXPECT_EQ(bitmap_position("ins2"), (CockpitPoint{0, 0}));
    BITMAPS = 1;
    BITMAP[1].name = "ins2";
    BITMAP[1].absolute_x = -4;
    BITMAP[1].absolute_y = 120;
    EXPECT_EQ(bitmap_position("ins2"), (CockpitPoint{-4, 120}));
}

TEST_F(Gauges, NearestPointIsTheFirstOfEquallyNearOnes) {
    const std::vector<CockpitPoint> candidates = {{10, 10}, {20, 10}, {12, 10}, {20, 10}};
    EXPECT_EQ(nearest_point(candidates, {11, 10}), 0); // as near as the third
    EXPECT_EQ(nearest_point(candidates, {19, 11}), 1); // as near as the fourth
    EXPECT_EQ(nearest_point(candidates, {13, 9}), 2);
}

TEST_F(Gauges, NearestPointIsNearerThanEight) {
    const std::vector<CockpitPoint> candidates = {{10, 10}};
    EXPECT_EQ(nearest_point(candidates, {14, 13}), 0); // 7
    EXPECT_EQ(nearest_point(candidates, {6, 7}), 0);
    EXPECT_EQ(nearest_point(candidates, {14, 14}), -1); // 8
    EXPECT_EQ(nearest_point(candidates, {2, 10}), -1);
    EXPECT_EQ(nearest_point({}, {2, 10}), -1);
}
