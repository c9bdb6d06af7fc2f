// Points along an arc: the places of needle tips and of the steering wheel's markers.
#pragma once

#include <cstdint>
#include <span>

struct SpokePoint {
    std::int16_t x = 0, y = 0;
    bool operator==(const SpokePoint&) const = default;
};
struct SpokeCentre {
    std::uint16_t x = 0, y = 0;
};

// ODDITY angles-of-five-decimals (kept): the Dash manager has pi to five decimals. Stored cars depend on the points
// that come of it.
namespace spoke_angle {
constexpr double quarter_turn = 1.570795, half_turn = 3.14159, whole_turn = 6.28318;
}

// Lays points 0 .. n along an elliptic arc and returns how many it wrote, which may be fewer than n + 1; the others
// stay as they were. Angles are radians, counter-clockwise from the right (y grows downwards, so it is subtracted). The
// run goes from `start` to `end`, with a direction below 0 from `end` to `start`, in n steps of equal size. The longer
// half-axis is always `radius`: an eccentricity below 1 flattens the arc, one of 1 or more narrows it. Coordinates are
// rounded to the nearest whole number, halves to the even one.
//
// With n below 1 nothing is written. Points that `points` has no room for are left out, a coordinate beyond 16 bits is
// the nearest one that they hold, and what is no number at all leaves its point as it was.
int GENERATESPOKES(std::span<SpokePoint> points, int n, SpokeCentre centre, int direction, double radius, double start,
                   double end, double eccentricity);
