#include "model/gauges.h"

#include "model/bitmap_table.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr int centre_x = 0, centre_y = 2, count_word = 4, tips = 6; // of a gauge, from its offset
constexpr int too_far = 8;

int wrapped(int value) { return static_cast<std::int16_t>(value); }
int signed_word(int offset) { return wrapped(par_word(offset)); }

CockpitPoint word_point(int offset) { return {signed_word(offset), signed_word(offset + 2)}; }
void set_word_point(int offset, CockpitPoint at) {
    set_par_word(offset, static_cast<std::uint16_t>(at.x));
    set_par_word(offset + 2, static_cast<std::uint16_t>(at.y));
}

CockpitPoint byte_point(int offset) { return {par_byte(offset), par_byte(offset + 1)}; }
void set_byte_point(int offset, CockpitPoint at) {
    set_par_byte(offset, static_cast<std::uint8_t>(at.x));
    set_par_byte(offset + 1, static_cast<std::uint8_t>(at.y));
}

int tip_offset(const Gauge& gauge, int tip) { return gauge.offset + tips + 2 * tip; }
int marker_offset(int marker) { return par_offset::steering_markers + 2 * marker; }
int knob_offset(int gear) { return par_offset::knobs + 4 * gear; }

// Each list keeps inside its room in PAR.
static_assert(par_offset::steering_markers + 2 * (last_marker + 1) == par_offset::speedometer);
static_assert(par_offset::speedometer + tips + 2 * (most_speedometer_points + 1) == par_offset::tachometer);
static_assert(par_offset::tachometer + tips + 2 * (most_tachometer_points + 1) <= parameter_bytes);

int distance(CockpitPoint a, CockpitPoint b) { return std::abs(a.x - b.x) + std::abs(a.y - b.y); }

} // namespace

CockpitPoint operator+(CockpitPoint a, CockpitPoint b) { return {wrapped(a.x + b.x), wrapped(a.y + b.y)}; }
CockpitPoint operator-(CockpitPoint a, CockpitPoint b) { return {wrapped(a.x - b.x), wrapped(a.y - b.y)}; }

CockpitPoint bitmap_position(std::string_view id) {
    const BitmapRecord& bitmap = BITMAP[RBM(id)];
    return {bitmap.absolute_x, bitmap.absolute_y};
}

int point_count(const Gauge& gauge) { return std::min<int>(par_word(gauge.offset + count_word), gauge.most_points); }
void set_point_count(const Gauge& gauge, int count) {
    set_par_word(gauge.offset + count_word, static_cast<std::uint16_t>(count));
}

CockpitPoint gauge_centre(const Gauge& gauge) { return word_point(gauge.offset + centre_x); }
void set_gauge_centre(const Gauge& gauge, CockpitPoint centre) { set_word_point(gauge.offset + centre_x, centre); }

CockpitPoint needle_tip(const Gauge& gauge, int tip) { return byte_point(tip_offset(gauge, tip)); }
void set_needle_tip(const Gauge& gauge, int tip, CockpitPoint at) { set_byte_point(tip_offset(gauge, tip), at); }

CockpitPoint wheel_marker(int marker) { return byte_point(marker_offset(marker)); }
void set_wheel_marker(int marker, CockpitPoint at) { set_byte_point(marker_offset(marker), at); }
CockpitPoint mirrored_marker(int marker) {
    const CockpitPoint at = wheel_marker(marker);
    return {2 * wheel_marker(0).x - at.x, at.y};
}

int gear_count() { return std::min<int>(par_byte(par_offset::gear_count), most_gears); }
void set_gear_count(int gears) { set_par_byte(par_offset::gear_count, static_cast<std::uint8_t>(gears)); }

CockpitPoint knob(int gear) { return word_point(knob_offset(gear)); }
void set_knob(int gear, CockpitPoint at) { set_word_point(knob_offset(gear), at); }

int nearest_point(std::span<const CockpitPoint> candidates, CockpitPoint place) {
    int best = -1, best_distance = too_far;
    for (int i = 0; i < static_cast<int>(candidates.size()); ++i) {
        const int here = distance(candidates[static_cast<std::size_t>(i)], place);
        if (here >= best_distance) continue;
        best = i;
        best_distance = here;
    }
    return best;
}
