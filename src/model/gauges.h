// The cockpit data that a car keeps in PAR: the markers of the steering wheel, the two gauges with their needle tips,
// and the places of the gear knob.
//
// Markers are canvas positions, gauges are relative to "ins2", knobs to "gbox"; without that bitmap to the canvas.
// Words are read as signed: a gauge's centre may lie left of the instruments or above them.
#pragma once

#include "model/parameters.h"

#include <span>
#include <string_view>

// A place on the 320 x 200 canvas, or relative to a bitmap on it, in canvas pixels.
struct CockpitPoint {
    int x = 0, y = 0;
    bool operator==(const CockpitPoint&) const = default;
};
// Sum and difference, wrapped to 16 bits and read as signed.
CockpitPoint operator+(CockpitPoint a, CockpitPoint b);
CockpitPoint operator-(CockpitPoint a, CockpitPoint b);

// Where the bitmap of this id stands on the canvas; (0, 0) without one.
CockpitPoint bitmap_position(std::string_view id);

// --- speedometer and tachometer -------------------------------------------------------------------------------------

// What tells the two gauges apart.
struct Gauge {
    int offset;      // in PAR: centre x, centre y and point count as words, then tips 0 .. count as bytes
    int most_points; // with one more the tips would run into what follows
    std::string_view title, maximum_label, unit;
    double per_point; // what a point is worth, in the unit
};
constexpr Gauge speedometer{par_offset::speedometer, most_speedometer_points, "Speed-o-meter", "Max spd.", " mph", 2.5};
constexpr Gauge tachometer{par_offset::tachometer, most_tachometer_points, "Tach-o-meter", "Max RPM", " rpm", 128};

// The count as it may be used: the gauge's bound where PAR says more. PAR keeps what it says until a count is set.
int point_count(const Gauge& gauge);
void set_point_count(const Gauge& gauge, int count);
CockpitPoint gauge_centre(const Gauge& gauge);
void set_gauge_centre(const Gauge& gauge, CockpitPoint centre);
// Tip 0 .. most_points. Of coordinates the low bytes are kept.
CockpitPoint needle_tip(const Gauge& gauge, int tip);
void set_needle_tip(const Gauge& gauge, int tip, CockpitPoint at);

// --- steering wheel -------------------------------------------------------------------------------------------------

constexpr int last_marker = 30;
// Marker 0 .. last_marker, from the top of the wheel to its side. Of coordinates the low bytes are kept.
CockpitPoint wheel_marker(int marker);
void set_wheel_marker(int marker, CockpitPoint at);
// Its image on the wheel's other side.
CockpitPoint mirrored_marker(int marker);

// --- gear knob ------------------------------------------------------------------------------------------------------

constexpr int gate = 0; // in place of a gear 1 .. most_gears
int gear_count();       // at most most_gears, whatever PAR says
void set_gear_count(int gears);
CockpitPoint knob(int gear);
void set_knob(int gear, CockpitPoint at);

// --- picking --------------------------------------------------------------------------------------------------------

// The index of the candidate that is nearest to a place, by the sum of the differences of x and y, the first of equally
// near ones; -1 when none is nearer than 8.
int nearest_point(std::span<const CockpitPoint> candidates, CockpitPoint place);
