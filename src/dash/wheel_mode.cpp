// The steering wheel: the markers along its rim that the steering dot passes.
#include "dash/marks.h"
#include "dash/modes.h"
#include "dash/panel.h"
#include "dash/points.h"

#include "drawing/drawing.h"
#include "widgets/widgets.h"

#include <vector>

namespace {

// ODDITY wheel-floor-at-50 (kept): no key moves a marker, or the centre of their arc, above y 50.
constexpr int floor_y = 50;

constexpr PointList markers{
    .edit = &DashScreen::wheel,
    .last = [] { return last_marker; },
    .point = wheel_marker,
    .set_point = set_wheel_marker,
    .highest_y = floor_y,
    .least_radius = 10,
    .most_radius = 200,
    .lay = [](const Arc& arc) { lay_wheel(arc); },
};

// --- drawing -------------------------------------------------------------------------------------------------------

constexpr MarkSizes selected_mark{{-1, 3}, {-1, 3}}, marker_mark{{0, 2}, {0, 3}};
// ODDITY mirrored-marker-smaller (kept): three times its size a marker's image is one pixel smaller than the marker.
constexpr MarkSizes mirrored_mark{{0, 2}, {0, 2}};

void draw_marker(const CockpitView& view, int marker, bool selected) {
    const CockpitPoint at = wheel_marker(marker), mirrored = mirrored_marker(marker);
    if (selected) {
        fill_mark(view, at, selected_mark, mark_colour::selected);
        fill_mark(view, mirrored, selected_mark, mark_colour::selected);
    } else {
        outline_mark(view, at, marker_mark, mark_colour::plain);
        outline_mark(view, mirrored, mirrored_mark, mark_colour::plain);
    }
}

void draw_arc(const CockpitView& view, const Arc& arc) {
    const Point at = view.at(arc.centre);
    draw_circle(screen(), at.x, at.y, view.zoom * arc.radius, mark_colour::arc, arc.eccentricity, 0,
                spoke_angle::half_turn);
}

void draw_view(const DashScreen& state) {
    const CockpitView view = state.view();
    draw_cockpit(view, Steering::straight);
    for (int marker = 0; marker <= last_marker; ++marker)
        draw_marker(view, marker, marker == state.wheel.selected);
    if (state.arcs) draw_arc(view, state.wheel.arc);
}

void draw_panel(const DashScreen& state) {
    const auto& [selected, arc] = state.wheel;
    DRAWSECTION(720, 90, 917, 232, "Steering wheel", false);
    draw_row(edit_columns, {100, "Spoke", std::to_string(selected) + " / " + std::to_string(last_marker)});
    draw_row(edit_columns, {116, "Coors", point_text(wheel_marker(selected))});
    draw_heading(edit_columns, 148, "- ARC -");
    draw_row(edit_columns, {164, "Spokes", std::to_string(state.spokes)});
    draw_row(edit_columns, {180, "Radius", number_text(arc.radius)});
    draw_row(edit_columns, {196, "Coors", point_text(arc.centre)});
    draw_row(edit_columns, {212, "Eccent.", number_text(arc.eccentricity)});
}

// --- mouse ---------------------------------------------------------------------------------------------------------

// All markers first, then their images.
void on_mouse(DashScreen& state, CockpitPoint place) {
    std::vector<CockpitPoint> candidates;
    for (int marker = 0; marker <= last_marker; ++marker)
        candidates.push_back(wheel_marker(marker));
    for (int marker = 0; marker <= last_marker; ++marker)
        candidates.push_back(mirrored_marker(marker));
    const int nearest = nearest_point(candidates, place);
    if (nearest < 0) return;
    state.wheel.selected = nearest % (last_marker + 1);
    state.redraw = true;
}

// --- keys ----------------------------------------------------------------------------------------------------------

// ODDITY wheel-spokes-unused (kept): the number of spokes is shown and changed, but the markers are always laid in 30
// steps.
template <int step>
bool can_step_spokes(const DashScreen& state) {
    return step > 0 ? state.spokes < last_marker : state.spokes > 1;
}

template <int step>
void step_spokes(DashScreen& state) {
    if (can_step_spokes<step>(state)) state.spokes += step;
    state.redraw = true;
}

constexpr KeyBinding<DashScreen> keys[] = {
    {{}, "selects the marker nearest to the pointer, on either side", nullptr, "left button on the cockpit"},
    selection_row<markers, 1>(key::page_up, "next marker; of the arc, a larger radius"),
    selection_row<markers, -1>(key::page_down, "previous marker; of the arc, a smaller radius"),
    move_row<markers, -1, 0>(key::left, "moves the marker, or the arc, one pixel left"),
    move_row<markers, 1, 0>(key::right, "moves it one pixel right"),
    move_row<markers, 0, -1>(key::up, "moves it one pixel up"),
    move_row<markers, 0, 1>(key::down, "moves it one pixel down"),
    {{key::enter}, "lays all markers along the arc", act_by_key<markers, lay_points>},
    {{"+", "="}, "one spoke more, 30 at most", step_spokes<1>, "+ or =", can_step_spokes<1>},
    {{"-"}, "one spoke less", step_spokes<-1>, nullptr, can_step_spokes<-1>},
    {{">", "."}, "of the arc, narrower", act_by_key<markers, widen_arc>, "> or .", can_by_key<markers, can_widen_arc>},
    {{"<", ","},
     "of the arc, flatter",
     act_by_key<markers, narrow_arc>,
     "< or comma",
     can_by_key<markers, can_narrow_arc>},
};

} // namespace

const DashMode wheel_mode{.key_heading = "At the steering wheel:",
                          .view_title = "Dash view",
                          .draw_view = draw_view,
                          .draw_panel = draw_panel,
                          .on_mouse = on_mouse,
                          .keys = keys};
