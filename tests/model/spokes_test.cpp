#include "model/spokes.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <limits>
#include <ostream>
#include <vector>

void PrintTo(const SpokePoint& point, std::ostream* out) { *out << '(' << point.x << ", " << point.y << ')'; }

namespace {
using testing::Each;
using testing::ElementsAre;
using Points = std::vector<SpokePoint>;

constexpr double pi = 3.14159265358979;
constexpr SpokePoint untouched{-77, -99};

struct Sweep {
    int n = 1, direction = 1;
    double radius = 10, start = 0, end = 0, eccentricity = 1;
    SpokeCentre centre{100, 100};
    int written = 0;

    Points points(std::size_t room = 130) {
        Points result(room, untouched);
        written = GENERATESPOKES(result, n, centre, direction, radius, start, end, eccentricity);
        return result;
    }
    // Only what was written.
    Points laid() {
        Points result = points();
        result.resize(static_cast<std::size_t>(written));
        return result;
    }
};
} // namespace

TEST(Spokes, OneStepGivesBothEndsOfTheArc) {
    EXPECT_THAT((Sweep{.start = pi / 2, .end = 0}.laid()), ElementsAre(SpokePoint{100, 90}, SpokePoint{110, 100}));
}

TEST(Spokes, AnglesGrowCounterClockwiseFromTheRight) {
    EXPECT_THAT((Sweep{.n = 3, .start = 0, .end = 1.5 * pi + 1e-9}.laid()),
                ElementsAre(SpokePoint{110, 100}, SpokePoint{100, 90}, SpokePoint{90, 100}, SpokePoint{100, 110}));
}

TEST(Spokes, NoSweepGivesThePointOnceForEachStepAndOnceMore) {
    const Points points = Sweep{.n = 5, .start = pi, .end = pi}.laid();
    EXPECT_EQ(points.size(), 6U);
    EXPECT_THAT(points, Each(SpokePoint{90, 100}));
}

TEST(Spokes, ADirectionBelowZeroSweepsFromTheEndToTheStart) {
    Sweep down{.n = 2, .start = pi, .end = 0}, up{.n = 2, .direction = -1, .start = pi, .end = 0};
    EXPECT_THAT(down.laid(), ElementsAre(SpokePoint{90, 100}, SpokePoint{100, 90}, SpokePoint{110, 100}));
    EXPECT_THAT(up.laid(), ElementsAre(SpokePoint{110, 100}, SpokePoint{100, 90}, SpokePoint{90, 100}));
    EXPECT_THAT((Sweep{.n = 2, .direction = 0, .start = pi, .end = 0}.laid()), down.laid());
}

TEST(Spokes, TheLongerHalfAxisIsTheRadius) {
    const auto ends = [](double eccentricity) {
        return Sweep{.n = 1, .radius = 40, .start = pi / 2, .end = 0, .eccentricity = eccentricity}.laid();
    };
    EXPECT_THAT(ends(0.5), ElementsAre(SpokePoint{100, 80}, SpokePoint{140, 100}));
    EXPECT_THAT(ends(1), ElementsAre(SpokePoint{100, 60}, SpokePoint{140, 100}));
    EXPECT_THAT(ends(2), ElementsAre(SpokePoint{100, 60}, SpokePoint{120, 100}));
}

TEST(Spokes, HalvesGoToTheEvenNumber) {
    const auto right = [](std::uint16_t x) { return Sweep{.radius = 0.5, .centre = {x, 50}}.laid().front(); };
    EXPECT_EQ(right(10), (SpokePoint{10, 50}));
    EXPECT_EQ(right(11), (SpokePoint{12, 50}));
}

// ODDITY last-spoke-dropped
TEST(Spokes, ALastPointThatOvershootsByARoundingErrorIsDropped) {
    Sweep run{.n = 48, .start = 225 * pi / 180, .end = -45 * pi / 180};
    const Points points = run.points();
    EXPECT_EQ(run.written, 48);
    EXPECT_NE(points[47], untouched);
    EXPECT_EQ(points[48], untouched);

    Sweep kept{.n = 64, .start = 225 * pi / 180, .end = -45 * pi / 180};
    kept.points();
    EXPECT_EQ(kept.written, 65);
}

TEST(Spokes, PointsBeyondTheLastStayAsTheyWere) {
    Sweep run{.n = 4, .start = 1, .end = 0};
    const Points points = run.points();
    EXPECT_EQ(run.written, 5);
    EXPECT_THAT(Points(points.begin() + 5, points.end()), Each(untouched));
}

TEST(Spokes, WithoutStepsNothingIsWritten) {
    for (const int n : {0, -1, -32768}) {
        Sweep run{.n = n, .start = 1, .end = 0};
        EXPECT_THAT(run.points(), Each(untouched));
        EXPECT_EQ(run.written, 0);
    }
}

TEST(Spokes, PointsWithoutRoomAreLeftOut) {
    Sweep run{.n = 30, .start = 1, .end = 0};
    EXPECT_THAT(run.points(3), testing::Not(testing::Contains(untouched)));
    EXPECT_EQ(run.written, 3);
    run.points(0);
    EXPECT_EQ(run.written, 0);
}

TEST(Spokes, CoordinatesStayWithin16Bits) {
    EXPECT_EQ((Sweep{.radius = 1e300}.laid().front()), (SpokePoint{32767, 100}));
    EXPECT_EQ((Sweep{.radius = 1e300, .start = pi, .end = pi}.laid().front()), (SpokePoint{-32768, -32768}));
    EXPECT_EQ((Sweep{.radius = 0, .centre = {65535, 65535}}.laid().front()), (SpokePoint{32767, 32767}));
}

TEST(Spokes, WhatIsNoNumberStoresNothing) {
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT((Sweep{.radius = nothing}.points()), Each(untouched));
    EXPECT_THAT((Sweep{.start = nothing}.points()), Each(untouched));
}
