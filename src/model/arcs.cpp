#include "model/arcs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <vector>

namespace {

constexpr double full_turn = 2 * std::numbers::pi;
constexpr double least_eccentricity = 0.5, most_eccentricity = 2;
// A whole turn begins and ends at one angle; its end is told from its start by this much.
constexpr double hairs_breadth = 1e-4;

std::vector<CockpitPoint> tips_on_canvas(const Gauge& gauge) {
    std::vector<CockpitPoint> tips;
    const CockpitPoint instruments = bitmap_position("ins2");
    for (int tip = 0; tip <= point_count(gauge); ++tip)
        tips.push_back(instruments + needle_tip(gauge, tip));
    return tips;
}

double mean_distance(const std::vector<CockpitPoint>& tips, CockpitPoint centre) {
    double sum = 0;
    for (const CockpitPoint tip : tips)
        sum += std::hypot(tip.x - centre.x, tip.y - centre.y);
    return sum / static_cast<double>(tips.size());
}

bool all_at_one_place(const std::vector<CockpitPoint>& tips) {
    return std::ranges::all_of(tips, [&](CockpitPoint tip) { return tip == tips.front(); });
}

// Within one turn from 0.
double angle_of(CockpitPoint tip, CockpitPoint centre) {
    const double angle = std::atan2(centre.y - tip.y, tip.x - centre.x);
    return angle < 0 ? angle + full_turn : angle;
}

// The way from the first tip to the last, as the tips run; counter-clockwise is positive.
double swept(const std::vector<CockpitPoint>& tips, CockpitPoint centre) {
    double sum = 0;
    for (std::size_t i = 1; i < tips.size(); ++i)
        sum += std::remainder(angle_of(tips[i], centre) - angle_of(tips[i - 1], centre), full_turn);
    return sum;
}

// Laying goes from the start down to the end, in the other direction from the end up to the start.
void follow_tips(Arc& arc, const std::vector<CockpitPoint>& tips) {
    const double way = swept(tips, arc.centre);
    arc.start = angle_of(tips.front(), arc.centre);
    arc.end = angle_of(tips.back(), arc.centre);
    arc.direction = way > 0 ? -1 : 1;
    if (way > 0) std::swap(arc.start, arc.end);
    if (std::abs(way) > full_turn - hairs_breadth) arc.end = arc.start + hairs_breadth;
}

using Points = std::array<SpokePoint, most_tachometer_points + 1>;

SpokeCentre spoke_centre(CockpitPoint centre) {
    return {static_cast<std::uint16_t>(centre.x), static_cast<std::uint16_t>(centre.y)};
}

CockpitPoint cockpit_point(SpokePoint point) { return {point.x, point.y}; }

} // namespace

CockpitPoint arc_centre_at(CockpitPoint place) {
    return {std::clamp(place.x, 0, largest_arc_centre.x), std::clamp(place.y, 0, largest_arc_centre.y)};
}

Arc arc_of(const Gauge& gauge) {
    Arc arc{.centre = arc_centre_at(bitmap_position("ins2") + gauge_centre(gauge))};
    const std::vector<CockpitPoint> tips = tips_on_canvas(gauge);
    if (tips.size() < 2) return arc;
    if (const double radius = mean_distance(tips, arc.centre); radius > 0) arc.radius = radius;
    if (!all_at_one_place(tips)) follow_tips(arc, tips);
    return arc;
}

Arc arc_of_wheel() {
    const CockpitPoint top = wheel_marker(0);
    int left = top.x, right = top.x, highest = top.y, lowest = top.y;
    for (int marker = 1; marker <= last_marker; ++marker) {
        const CockpitPoint at = wheel_marker(marker);
        left = std::min(left, at.x);
        right = std::max(right, at.x);
        highest = std::min(highest, at.y);
        lowest = std::max(lowest, at.y);
    }
    Arc arc{.centre = arc_centre_at({top.x, lowest}), .radius = default_wheel_radius};
    if (right > left) arc.radius = std::max(top.x - left, right - top.x);
    if (right > left && lowest > highest)
        arc.eccentricity =
            std::clamp(static_cast<double>(lowest - highest) / (right - left), least_eccentricity, most_eccentricity);
    return arc;
}

int lay_gauge(const Gauge& gauge, const Arc& arc, CockpitPoint instruments) {
    set_gauge_centre(gauge, arc.centre - instruments);
    const double start = arc.start < arc.end ? arc.start + spoke_angle::whole_turn : arc.start;
    Points points;
    const int laid = GENERATESPOKES(points, point_count(gauge), spoke_centre(arc.centre), arc.direction, arc.radius,
                                    start, arc.end, arc.eccentricity);
    for (int tip = 0; tip < laid; ++tip)
        set_needle_tip(gauge, tip, cockpit_point(points[static_cast<std::size_t>(tip)]) - instruments);
    return laid;
}

int lay_wheel(const Arc& arc) {
    Points points;
    const int laid = GENERATESPOKES(points, last_marker, spoke_centre(arc.centre), 1, arc.radius,
                                    spoke_angle::quarter_turn, 0, arc.eccentricity);
    for (int marker = 0; marker < laid; ++marker)
        set_wheel_marker(marker, cockpit_point(points[static_cast<std::size_t>(marker)]));
    return laid;
}
