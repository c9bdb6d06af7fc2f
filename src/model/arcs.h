// The arcs along which the points of a gauge or of the steering wheel are laid, and what an arc is like to begin with:
// it follows the points that are there, so that laying them anew bends a good gauge as little as rounding does.
#pragma once

#include "model/bitmap_table.h"
#include "model/gauges.h"
#include "model/spokes.h"

// The centre is in canvas pixels, 0 .. 255 and 0 .. 199; angles are radians. The wheel's markers lie on a quarter of
// the ellipse, from its top to its right, and use neither the angles nor the direction.
struct Arc {
    CockpitPoint centre;
    double radius = 30;
    double eccentricity = 1;
    double start = 3.92699, end = 5.49779;
    int direction = 1; // below 1: counter-clockwise
};
constexpr double default_wheel_radius = 60;

// An arc's centre as near to a place as it may be.
constexpr CockpitPoint largest_arc_centre{255, canvas_height - 1};
CockpitPoint arc_centre_at(CockpitPoint place);

// Centre of the gauge, mean distance of its tips, their first and last angle and the sense in which they run. A gauge
// of fewer than two tips, or of tips at one place, keeps the defaults above for its angles; one without points, or with
// all of them at its centre, for its radius.
Arc arc_of(const Gauge& gauge);
// Marker 0's x and the largest y of the markers, their largest horizontal distance from marker 0, and the ratio of
// their vertical to their horizontal extent, within 0.5 to 2. Markers without extent give the default radius and 1.
Arc arc_of_wheel();

// Stores the arc's centre as the gauge's and lays its tips; returns how many were laid. With a point count of 0 none
// is.
int lay_gauge(const Gauge& gauge, const Arc& arc, CockpitPoint instruments);
// Lays the markers, from the top of the wheel to its right; returns how many were laid.
int lay_wheel(const Arc& arc);
