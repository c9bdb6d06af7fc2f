#include "model/arcs.h"

#include "model/items.h"

#include "support/cockpit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <ostream>
#include <vector>

namespace {
using std::numbers::pi;

class Arcs : public testing::Test {
protected:
    Arcs() {
        INITDASHITEMS();
        BITMAPS = 1;
        BITMAP[1].name = "ins2";
        BITMAP[1].absolute_x = static_cast<std::int16_t>(instruments.x);
        BITMAP[1].absolute_y = static_cast<std::int16_t>(instruments.y);
    }

    // Tips on a circle, from one angle to another in degrees, laid without the generator.
    static void put_tips(const Gauge& gauge, CockpitPoint centre, double radius, double from, double to, int count) {
        set_point_count(gauge, count);
        set_gauge_centre(gauge, centre - instruments);
        for (int tip = 0; tip <= count; ++tip) {
            const double angle = (from + (to - from) * tip / count) * pi / 180;
            const CockpitPoint at{static_cast<int>(std::lround(centre.x + radius * std::cos(angle))),
                                  static_cast<int>(std::lround(centre.y - radius * std::sin(angle)))};
            set_needle_tip(gauge, tip, at - instruments);
        }
    }
    static std::vector<CockpitPoint> tips(const Gauge& gauge) {
        std::vector<CockpitPoint> result;
        for (int tip = 0; tip <= point_count(gauge); ++tip)
            result.push_back(needle_tip(gauge, tip));
        return result;
    }
    // The most by which laying a gauge along the arc it begins with moves one of its tips.
    static int bend(const Gauge& gauge) {
        const auto before = tips(gauge);
        lay_gauge(gauge, arc_of(gauge), instruments);
        const auto after = tips(gauge);
        int most = 0;
        for (std::size_t i = 0; i < before.size(); ++i)
            most = std::max({most, std::abs(before[i].x - after[i].x), std::abs(before[i].y - after[i].y)});
        return most;
    }

    static constexpr CockpitPoint instruments{80, 120};
};
} // namespace

TEST_F(Arcs, BeginWithWhatTheGaugeIs) {
    put_tips(speedometer, {111, 148}, 15, 225, -45, 64);
    const Arc arc = arc_of(speedometer);
    EXPECT_EQ(arc.centre, (CockpitPoint{111, 148}));
    EXPECT_NEAR(arc.radius, 15, 0.2);
    EXPECT_EQ(arc.eccentricity, 1);
    EXPECT_NEAR(arc.start, 225 * pi / 180, 0.05);
    EXPECT_NEAR(arc.end, 315 * pi / 180, 0.05);
    EXPECT_EQ(arc.direction, 1);
}

TEST_F(Arcs, OfTipsThatRunCounterClockwiseSweepFromTheEnd) {
    put_tips(tachometer, {160, 150}, 20, 30, 200, 40);
    const Arc arc = arc_of(tachometer);
    EXPECT_EQ(arc.direction, -1);
    EXPECT_NEAR(arc.end, 30 * pi / 180, 0.05);
    EXPECT_NEAR(arc.start, 200 * pi / 180, 0.05);
}

TEST_F(Arcs, BendAGoodGaugeAsLittleAsRoundingDoes) {
    const double sweeps[][2] = {{225, -45}, {180, 0},  {0, 180},   {350, 10},  {10, 350},   {90, -260},
                                {-45, 225}, {45, -44}, {100, 460}, {100, 459}, {200, -160}, {12, 13}};
    for (const auto& [from, to] : sweeps)
        for (const int count : {5, 30, 103}) {
            put_tips(speedometer, {130, 150}, 20, from, to, count);
            EXPECT_LE(bend(speedometer), 1) << from << " to " << to << ", " << count << " points";
        }
}

TEST_F(Arcs, OfNoPointsAreTheDefaults) {
    set_gauge_centre(speedometer, {30, 20});
    const Arc arc = arc_of(speedometer);
    EXPECT_EQ(arc.centre, (CockpitPoint{110, 140}));
    EXPECT_EQ(arc.radius, 30);
    EXPECT_EQ(arc.start, 3.92699);
    EXPECT_EQ(arc.end, 5.49779);
    EXPECT_EQ(arc.direction, 1);
}

TEST_F(Arcs, OfTipsAtOnePlaceKeepTheDefaultAngles) {
    put_tips(speedometer, {120, 140}, 20, 90, 90, 10);
    const Arc arc = arc_of(speedometer);
    EXPECT_EQ(arc.radius, 20);
    EXPECT_EQ(arc.start, 3.92699);
    EXPECT_EQ(arc.end, 5.49779);
}

TEST_F(Arcs, OfTipsAtTheCentreKeepTheDefaultRadius) {
    put_tips(speedometer, {120, 140}, 0, 90, 90, 10);
    EXPECT_EQ(arc_of(speedometer).radius, 30);
}

TEST_F(Arcs, CentresAreKeptOnTheCanvas) {
    set_gauge_centre(speedometer, {-100, 100});
    EXPECT_EQ(arc_of(speedometer).centre, (CockpitPoint{0, 199}));
    set_gauge_centre(speedometer, {200, -150});
    EXPECT_EQ(arc_of(speedometer).centre, (CockpitPoint{255, 0}));
}

TEST_F(Arcs, LayingStoresTheCentreAndTheTips) {
    set_point_count(tachometer, 2);
    const Arc arc{.centre = {150, 140}, .radius = 10, .start = pi, .end = 0};
    EXPECT_EQ(lay_gauge(tachometer, arc, instruments), 3);
    EXPECT_EQ(gauge_centre(tachometer), (CockpitPoint{70, 20}));
    EXPECT_EQ(tips(tachometer), (std::vector<CockpitPoint>{{60, 20}, {70, 10}, {80, 20}}));
}

TEST_F(Arcs, AStartBelowTheEndIsRaisedByATurnForTheCallOnly) {
    set_point_count(speedometer, 2);
    const Arc arc{.centre = {150, 140}, .radius = 10, .start = 0, .end = pi};
    lay_gauge(speedometer, arc, instruments);
    EXPECT_EQ(tips(speedometer), (std::vector<CockpitPoint>{{80, 20}, {70, 30}, {60, 20}})); // downwards, by the bottom
}

TEST_F(Arcs, TheOtherDirectionLaysFromTheEnd) {
    set_point_count(speedometer, 2);
    const Arc arc{.centre = {150, 140}, .radius = 10, .start = pi, .end = 0, .direction = -1};
    lay_gauge(speedometer, arc, instruments);
    EXPECT_EQ(tips(speedometer), (std::vector<CockpitPoint>{{80, 20}, {70, 10}, {60, 20}}));
}

TEST_F(Arcs, AGaugeWithoutPointsGetsItsCentreOnly) {
    set_needle_tip(speedometer, 0, {9, 9});
    EXPECT_EQ(lay_gauge(speedometer, {.centre = {90, 130}}, instruments), 0);
    EXPECT_EQ(gauge_centre(speedometer), (CockpitPoint{10, 10}));
    EXPECT_EQ(needle_tip(speedometer, 0), (CockpitPoint{9, 9}));
}

TEST_F(Arcs, ACentreBesideTheInstrumentsIsStoredAsNegative) {
    set_point_count(speedometer, 1);
    lay_gauge(speedometer, {.centre = {70, 100}, .radius = 5, .start = pi, .end = 0}, instruments);
    EXPECT_EQ(gauge_centre(speedometer), (CockpitPoint{-10, -20}));
    EXPECT_EQ(needle_tip(speedometer, 0), (CockpitPoint{241, 236})); // the low bytes of -15 and -20
}

TEST_F(Arcs, AnOverlongCountIsLaidToItsBoundAndKept) {
    set_par_word(300, 500);
    EXPECT_EQ(lay_gauge(speedometer, {.centre = {150, 140}, .start = pi, .end = 0}, instruments), 104);
    EXPECT_EQ(par_word(300), 500);
    EXPECT_EQ(gauge_centre(tachometer), (CockpitPoint{0, 0})); // what follows is untouched
}

TEST_F(Arcs, OfTheWheelBeginsWithItsMarkers) {
    for (int marker = 0; marker <= last_marker; ++marker)
        set_wheel_marker(marker, {140 + 2 * marker, 100 + marker});
    const Arc arc = arc_of_wheel();
    EXPECT_EQ(arc.centre, (CockpitPoint{140, 130}));
    EXPECT_EQ(arc.radius, 60);
    EXPECT_EQ(arc.eccentricity, 0.5);
}

TEST_F(Arcs, OfAWheelWithoutExtentAreTheDefaults) {
    for (int marker = 0; marker <= last_marker; ++marker)
        set_wheel_marker(marker, {140, 100});
    EXPECT_EQ(arc_of_wheel().radius, 60);
    EXPECT_EQ(arc_of_wheel().eccentricity, 1);
    set_wheel_marker(9, {130, 100}); // across only
    EXPECT_EQ(arc_of_wheel().radius, 10);
    EXPECT_EQ(arc_of_wheel().eccentricity, 1);
    set_wheel_marker(9, {140, 110}); // down only
    EXPECT_EQ(arc_of_wheel().radius, 60);
    EXPECT_EQ(arc_of_wheel().eccentricity, 1);
}

TEST_F(Arcs, OfTheWheelKeepsItsEccentricityInBounds) {
    for (int marker = 0; marker <= last_marker; ++marker)
        set_wheel_marker(marker, {140 + marker, 100 + 3 * marker});
    EXPECT_EQ(arc_of_wheel().eccentricity, 2);
    for (int marker = 0; marker <= last_marker; ++marker)
        set_wheel_marker(marker, {140 + 3 * marker, 100 + marker});
    EXPECT_EQ(arc_of_wheel().eccentricity, 0.5);
}

TEST_F(Arcs, OfTheWheelHasItsCentreOnTheCanvas) {
    for (int marker = 0; marker <= last_marker; ++marker)
        set_wheel_marker(marker, {100, 200 + marker});
    EXPECT_EQ(arc_of_wheel().centre, (CockpitPoint{100, 199}));
}

TEST_F(Arcs, TheWheelIsLaidInThirtyStepsFromItsTopToItsRight) {
    EXPECT_EQ(lay_wheel({.centre = {140, 190}, .radius = 80, .eccentricity = 0.5}), 31);
    EXPECT_EQ(wheel_marker(0), (CockpitPoint{140, 150}));
    EXPECT_EQ(wheel_marker(15), (CockpitPoint{197, 162}));
    EXPECT_EQ(wheel_marker(30), (CockpitPoint{220, 190}));
}

TEST_F(Arcs, LayingTheWheelAlongItsOwnArcMovesNoMarker) {
    lay_wheel({.centre = {140, 190}, .radius = 77, .eccentricity = 1});
    std::vector<CockpitPoint> before, after;
    for (int marker = 0; marker <= last_marker; ++marker)
        before.push_back(wheel_marker(marker));
    lay_wheel(arc_of_wheel());
    for (int marker = 0; marker <= last_marker; ++marker)
        after.push_back(wheel_marker(marker));
    EXPECT_EQ(before, after);
}
