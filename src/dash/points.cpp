#include "dash/points.h"

#include <algorithm>

namespace {

constexpr double eccentricity_step = 1.05, least_eccentricity = 0.5, most_eccentricity = 2;

void step_radius(Arc& arc, const PointList& list, int step) {
    const bool room = step > 0 ? arc.radius < list.most_radius : arc.radius > list.least_radius;
    if (room) arc.radius += step;
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

void widen_arc(DashScreen& state, const PointList& list) {
    double& eccentricity = (state.*list.edit).arc.eccentricity;
    if (state.arcs && eccentricity < most_eccentricity) eccentricity *= eccentricity_step;
    state.redraw = true;
}

void narrow_arc(DashScreen& state, const PointList& list) {
    double& eccentricity = (state.*list.edit).arc.eccentricity;
    if (state.arcs && eccentricity > least_eccentricity) eccentricity /= eccentricity_step;
    state.redraw = true;
}

void lay_points(DashScreen& state, const PointList& list) {
    list.lay((state.*list.edit).arc);
    state.redraw = true;
}
