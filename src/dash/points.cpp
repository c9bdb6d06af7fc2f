#include "dash/points.h"

#include <algorithm>

namespace {

constexpr double eccentricity_step = 1.05, least_eccentricity = 0.5, most_eccentricity = 2;

bool has_room_for_radius(const Arc& arc, const PointList& list, int step) {
    return step > 0 ? arc.radius < list.most_radius : arc.radius > list.least_radius;
}

void step_radius(Arc& arc, const PointList& list, int step) {
    if (has_room_for_radius(arc, list, step)) arc.radius += step;
}

// What already lies outside the bounds is only moved towards them.
CockpitPoint moved(CockpitPoint at, int across, int down, int highest_y) {
    if (across < 0 ? at.x > 0 : at.x < largest_arc_centre.x) at.x += across;
    if (down < 0 ? at.y > highest_y : at.y < largest_arc_centre.y) at.y += down;
    return at;
}

} // namespace

int selected_point(const DashScreen& state, const PointList& list) {
    return std::min((state.*list.edit).selected, list.last());
}

void step_selection(DashScreen& state, const PointList& list, int step) {
    PointEdit& edit = state.*list.edit;
    if (state.arcs)
        step_radius(edit.arc, list, step);
    else
        edit.selected = std::clamp(selected_point(state, list) + step, 0, list.last());
    state.redraw = true;
}

void move_point(DashScreen& state, const PointList& list, int across, int down) {
    Arc& arc = (state.*list.edit).arc;
    const int index = selected_point(state, list);
    if (state.arcs)
        arc.centre = moved(arc.centre, across, down, list.highest_y);
    else
        list.set_point(index, moved(list.point(index), across, down, list.highest_y));
    state.redraw = true;
}

bool can_step_selection(const DashScreen& state, const PointList& list, int step) {
    if (state.arcs) return has_room_for_radius((state.*list.edit).arc, list, step);
    const int selected = selected_point(state, list);
    return step > 0 ? selected < list.last() : selected > 0;
}

bool can_move_point(const DashScreen& state, const PointList& list, int across, int down) {
    const CockpitPoint at = state.arcs ? (state.*list.edit).arc.centre : list.point(selected_point(state, list));
    return !(moved(at, across, down, list.highest_y) == at);
}

bool can_widen_arc(const DashScreen& state, const PointList& list) {
    return state.arcs && (state.*list.edit).arc.eccentricity < most_eccentricity;
}

bool can_narrow_arc(const DashScreen& state, const PointList& list) {
    return state.arcs && (state.*list.edit).arc.eccentricity > least_eccentricity;
}

void widen_arc(DashScreen& state, const PointList& list) {
    if (can_widen_arc(state, list)) (state.*list.edit).arc.eccentricity *= eccentricity_step;
    state.redraw = true;
}

void narrow_arc(DashScreen& state, const PointList& list) {
    if (can_narrow_arc(state, list)) (state.*list.edit).arc.eccentricity /= eccentricity_step;
    state.redraw = true;
}

void lay_points(DashScreen& state, const PointList& list) {
    list.lay((state.*list.edit).arc);
    state.redraw = true;
}
