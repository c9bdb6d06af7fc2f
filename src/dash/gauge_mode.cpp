// Speedometer and tachometer: their centres and the tips of their needles.
#include "dash/marks.h"
#include "dash/modes.h"
#include "dash/panel.h"
#include "dash/points.h"

#include "drawing/drawing.h"
#include "widgets/widgets.h"

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace {

CockpitPoint instruments() { return bitmap_position("ins2"); }

template <const Gauge& gauge, PointEdit DashScreen::*edit>
constexpr PointList tips{
    .edit = edit,
    .last = [] { return point_count(gauge); },
    .point = [](int tip) { return needle_tip(gauge, tip); },
    .set_point = [](int tip, CockpitPoint at) { set_needle_tip(gauge, tip, at); },
    .highest_y = 0,
    .least_radius = 8,
    .most_radius = 150,
    .lay = [](const Arc& arc) { lay_gauge(gauge, arc, instruments()); },
};

// --- drawing -------------------------------------------------------------------------------------------------------

constexpr MarkSizes tip_mark{{0, 2}, {0, 3}};
// ODDITY selected-tip-larger (kept): three times its size a selected tip's mark is two pixels larger than a selected
// marker's of the wheel.
constexpr MarkSizes selected_mark{{-1, 3}, {-1, 5}};

void draw_tips(const CockpitView& view, const Gauge& gauge, int selected) {
    for (int tip = 0; tip <= point_count(gauge); ++tip) {
        const CockpitPoint at = instruments() + needle_tip(gauge, tip);
        if (tip == selected)
            fill_mark(view, at, selected_mark, mark_colour::selected);
        else
            outline_mark(view, at, tip_mark, mark_colour::plain);
    }
}

void draw_centre(const CockpitView& view, const Gauge& gauge) {
    const Point at = view.at(instruments() + gauge_centre(gauge));
    const int far = view.zoom == small_zoom ? 2 : 4, rise = view.zoom == small_zoom ? 1 : 3;
    draw_line(screen(), at.x - 1, at.y - 1, at.x + far, at.y + far, mark_colour::centre);
    draw_line(screen(), at.x - 1, at.y + 2, at.x + far, at.y - rise, mark_colour::centre);
}

// ODDITY gauge-arc-other-side (kept): the arc is drawn from the start to the negative end, counter-clockwise, which is
// the side that laying the tips leaves free.
// ODDITY gauge-arc-joined (kept): a negative angle also draws the line from the centre to its end of the arc, so that
// one end of the arc is joined to the centre.
void draw_arc(const CockpitView& view, const Arc& arc) {
    const Point at = view.at(arc.centre);
    draw_circle(screen(), at.x, at.y, view.zoom * arc.radius, mark_colour::arc, arc.eccentricity,
                arc.direction * arc.start, -(arc.direction * arc.end));
}

template <const Gauge& gauge, PointEdit DashScreen::*edit>
void draw_view(const DashScreen& state) {
    const CockpitView view = state.view();
    draw_cockpit(view, Steering::straight);
    draw_tips(view, gauge, selected_point(state, tips<gauge, edit>));
    draw_centre(view, gauge);
    if (state.arcs) draw_arc(view, (state.*edit).arc);
}

std::string degrees_text(double angle) { return number_text(std::abs(180 * angle / spoke_angle::half_turn)); }

void draw_arc_rows(const Arc& arc) {
    draw_row(edit_columns, {196, "Radius", number_text(arc.radius)});
    draw_row(edit_columns, {212, "Coors", point_text(arc.centre)});
    draw_row(edit_columns, {228, "Eccent.", number_text(arc.eccentricity)});
    draw_row(edit_columns, {244, "Direct.", arc.direction < 1 ? "CCW" : "CW"});
    draw_row(edit_columns, {260, "Start", degrees_text(arc.start)});
    draw_row(edit_columns, {276, "End", degrees_text(arc.end)});
}

template <const Gauge& gauge, PointEdit DashScreen::*edit>
void draw_panel(const DashScreen& state) {
    const int selected = selected_point(state, tips<gauge, edit>);
    const std::string count = std::to_string(point_count(gauge));
    DRAWSECTION(720, 90, 917, 296, std::string(gauge.title), false);
    draw_row(edit_columns, {100, "Spoke", std::to_string(selected) + " / " + count});
    draw_row(edit_columns, {116, "Coors", point_text(needle_tip(gauge, selected))});
    draw_row(edit_columns,
             {132, gauge.maximum_label, number_text(point_count(gauge) * gauge.per_point) + std::string(gauge.unit)});
    draw_heading(edit_columns, 164, "- ARC -");
    draw_row(edit_columns, {180, "Spokes", count});
    draw_arc_rows((state.*edit).arc);
}

// --- mouse ---------------------------------------------------------------------------------------------------------

template <const Gauge& gauge, PointEdit DashScreen::*edit>
void on_mouse(DashScreen& state, CockpitPoint place) {
    std::vector<CockpitPoint> candidates;
    for (int tip = 0; tip <= point_count(gauge); ++tip)
        candidates.push_back(instruments() + needle_tip(gauge, tip));
    const int nearest = nearest_point(candidates, place);
    if (nearest < 0) return;
    (state.*edit).selected = nearest;
    state.redraw = true;
}

// --- keys ----------------------------------------------------------------------------------------------------------

constexpr double angle_step = 0.05;

int sign(double value) { return value > 0 ? 1 : value < 0 ? -1 : 0; }

// The angle that "+" and "-" change: of the two the one that is behind in the direction of the sweep.
double& stepped_angle(Arc& arc) { return arc.direction * sign(arc.start - arc.end) < 1 ? arc.start : arc.end; }

void step_angle(double& angle, int step) {
    angle += step * angle_step;
    if (angle > spoke_angle::whole_turn) angle -= spoke_angle::whole_turn;
    if (angle < 0) angle += spoke_angle::whole_turn;
}

template <const Gauge& gauge, int step>
bool can_step_count_or_angle(const DashScreen& state) {
    return state.arcs || (step > 0 ? point_count(gauge) < gauge.most_points : point_count(gauge) > 0);
}

template <const Gauge& gauge, PointEdit DashScreen::*edit, int step>
void step_count_or_angle(DashScreen& state) {
    PointEdit& edited = state.*edit;
    if (state.arcs) {
        step_angle(stepped_angle(edited.arc), step);
    } else if (can_step_count_or_angle<gauge, step>(state)) {
        set_point_count(gauge, point_count(gauge) + step);
        edited.selected = selected_point(state, tips<gauge, edit>);
    }
    state.redraw = true;
}

template <const Gauge& gauge>
bool has_points(const DashScreen&) {
    return point_count(gauge) > 0;
}

template <PointEdit DashScreen::*edit>
void reverse(DashScreen& state) {
    if (state.arcs) (state.*edit).arc.direction *= -1;
    state.redraw = true;
}

template <PointEdit DashScreen::*edit>
void swap_ends(DashScreen& state) {
    if (state.arcs) std::swap((state.*edit).arc.start, (state.*edit).arc.end);
    state.redraw = true;
}

// ODDITY centre-key-other-view (kept): at each zoom the key takes the pointer as if the cockpit stood where it stands
// at the other one.
std::optional<CockpitPoint> centre_here(const DashScreen& state) {
    const CockpitView view{state.zoom, view_at(other_zoom(state.zoom)).area};
    return view.canvas_point(state.input.mouse.at());
}
bool is_over_cockpit(const DashScreen& state) { return centre_here(state).has_value(); }

template <const Gauge& gauge>
void put_centre_here(DashScreen& state) {
    const auto place = centre_here(state);
    if (!place) return;
    set_gauge_centre(gauge, *place - instruments());
    state.redraw = true;
}

template <const Gauge& gauge, PointEdit DashScreen::*edit, const PointList& list = tips<gauge, edit>>
constexpr KeyBinding<DashScreen> gauge_keys[] = {
    {{}, "selects the needle tip nearest to the pointer", nullptr, "left button on the cockpit"},
    selection_row<list, 1>(key::page_up, "next tip; of the arc, a larger radius"),
    selection_row<list, -1>(key::page_down, "previous tip; of the arc, a smaller radius"),
    move_row<list, -1, 0>(key::left, "moves the tip, or the arc, one pixel left"),
    move_row<list, 1, 0>(key::right, "moves it one pixel right"),
    move_row<list, 0, -1>(key::up, "moves it one pixel up"),
    move_row<list, 0, 1>(key::down, "moves it one pixel down"),
    {{key::enter},
     "lays all tips along the arc, whose centre becomes the gauge's",
     act_by_key<list, lay_points>,
     nullptr,
     has_points<gauge>},
    {{"+", "="},
     "one point more; of the arc, an angle raised",
     step_count_or_angle<gauge, edit, 1>,
     "+ or =",
     can_step_count_or_angle<gauge, 1>},
    {{"-"},
     "one point less; of the arc, an angle lowered",
     step_count_or_angle<gauge, edit, -1>,
     nullptr,
     can_step_count_or_angle<gauge, -1>},
    {{">", "."}, "of the arc, narrower", act_by_key<list, widen_arc>, "> or .", can_by_key<list, can_widen_arc>},
    {{"<", ","}, "of the arc, flatter", act_by_key<list, narrow_arc>, "< or comma", can_by_key<list, can_narrow_arc>},
    {{"d", "D"}, "of the arc, the other direction", reverse<edit>, "D", edits_arc},
    {{"o", "O"}, "of the arc, start and end change places", swap_ends<edit>, "O", edits_arc},
    {{"c", "C"}, "the gauge's centre goes to the pointer", put_centre_here<gauge>, "C", is_over_cockpit},
};

template <const Gauge& gauge, PointEdit DashScreen::*edit>
constexpr DashMode gauge_mode{
    .key_heading = "At speedometer and tachometer:",
    .view_title = "Dash view",
    .draw_view = draw_view<gauge, edit>,
    .draw_panel = draw_panel<gauge, edit>,
    .on_mouse = on_mouse<gauge, edit>,
    .keys = gauge_keys<gauge, edit>,
};

} // namespace

const DashMode speedometer_mode = gauge_mode<speedometer, &DashScreen::speed>;
const DashMode tachometer_mode = gauge_mode<tachometer, &DashScreen::revolutions>;
