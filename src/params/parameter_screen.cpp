#include "params/parameter_screen.h"

#include "params/specifications.h"
#include "params/target_edit.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace {

constexpr int highest_zoom = 4;
constexpr int most_torque = 255;

void draw_layout(const ParameterScreen& state, Canvas& canvas) {
    clear_work_area(canvas);
    draw_text(canvas, 16, 16, "= PHYSICAL PARAMETERS =", colour::title);
    draw_section(canvas, {10, 50, 300, 195}, "General", false);
    draw_section(canvas, {320, 50, 510, 180}, "Grip", false);
    draw_section(canvas, {530, 50, 720, 195}, "Gears", false);
    if (state.mysterious)
        draw_section(canvas, {740, 50, 948, 324}, "Mysterious", false);
    else
        draw_section(canvas, {740, 50, 948, 144}, "RPM", false);
    draw_section(canvas, {10, 220, 720, 570}, "Torque curve", false);
    draw_section(canvas, {740, 345, 948, 570}, "Specifications", false);
}

} // namespace

std::span<const RowRange> shown_rows(const ParameterScreen& state) {
    static constexpr std::array<RowRange, 1> with_mysterious{{{1, 35}}};
    static constexpr std::array<RowRange, 2> with_rpm{{{1, 18}, {34, 39}}};
    // ODDITY rpm-column-never-shown (kept): nothing ever selects the layout with the RPM rows; these four values are
    // edited through the graph's markers alone.
    if (!state.mysterious) return with_rpm;
    return with_mysterious;
}

namespace {

bool dragging(const ParameterScreen& state) { return state.graph.dragged != 0; }

// The strip tells of the selected point as long as one was selected.
void tell_selected_point(const ParameterScreen& state) {
    if (!state.point_chosen) return;
    const int point = state.graph.selected;
    set_screen_fact(std::to_string(point * rpm_per_point) + " RPM, torque " + std::to_string(torque(point)));
}

void redraw(ParameterScreen& state) {
    if (!state.redraw && !state.repaint) return;
    if (state.repaint || state.overdrawn) {
        draw_layout(state, screen());
        EDITSPECS(-1);
        forget_drawn_targets();
    }
    for (const RowRange& rows : shown_rows(state))
        draw_targets(rows.first, rows.last, !dragging(state));
    draw_torque_graph(screen(), state.graph);
    tell_selected_point(state);
    state.redraw = false;
    state.overdrawn = reaches_outside(state.graph);
}

void select_point(ParameterScreen& state, int point) {
    state.graph.selected = std::clamp(point, 0, torque_points - 1);
    state.point_chosen = state.redraw = true;
}

void hover(TorqueGraph& graph, int point) {
    const ScreenLock lock;
    draw_hovered_point(screen(), graph, point);
    draw_hovered_values(screen(), point);
    graph.hovered_speed = point * rpm_per_point;
}

// A hand moves faster than the mouse reports: what lies between two reports of a stroke is painted too.
void paint(const ParameterScreen& state, const MouseState& now) {
    const MouseState& before = state.input.before;
    if (before.buttons == 1 && over_curve(before.x, before.y))
        set_torque_between(before.at(), now.at(), state.graph.zoom);
    set_torque(point_at(now.x), torque_at(now.y, state.graph.zoom));
}

void on_curve(ParameterScreen& state) {
    const MouseState& now = state.input.mouse;
    const int point = point_at(now.x);
    // ODDITY hover-readout-vanishes (kept): a redraw of the graph takes the highlight and the values away, and only
    // another point brings them back; the first point shows nothing when it is the first one pointed at.
    if (point * rpm_per_point != state.graph.hovered_speed) hover(state.graph, point);
    if (now.buttons == 1) paint(state, now);
    if (now.buttons == 1 || now.buttons == 2) select_point(state, point);
}

void on_marker_strip(ParameterScreen& state) {
    TorqueGraph& graph = state.graph;
    const int speed = dragged_speed(state.input.mouse.x);
    const bool pressed = state.input.mouse.buttons == 1 && state.input.before.buttons != 1;
    if (pressed) graph.dragged = marker_near(speed);
    if (pressed && graph.dragged == 0) say("No mark within 1000 RPM");
    if (graph.dragged == 0) return;
    set_marker_speed(graph.dragged, speed);
    state.redraw = true;
}

// Its speed goes from below the graph.
void end_drag(ParameterScreen& state) {
    if (!dragging(state)) return;
    state.graph.dragged = 0;
    state.redraw = true;
}

// Whether the left button opens what the pointer reaches with it: not where a stroke of the curve or a drag ends.
bool opens(const ParameterScreen& state) {
    return !over_curve(state.input.pressed_at.x, state.input.pressed_at.y) && !dragging(state);
}

void on_mouse(ParameterScreen& state) {
    if (!state.input.moved() && !state.input.buttons_changed()) return;
    const MouseState& now = state.input.mouse;
    if (now.buttons != 1) end_drag(state);
    if (over_curve(now.x, now.y) && !dragging(state)) on_curve(state);
    if (over_marker_strip(now.x, now.y)) on_marker_strip(state);
    if (over_specifications(now.x, now.y) && now.buttons == 1 && opens(state)) EDITSPECS(0);
}

template <int marker>
void set_marker_here(ParameterScreen& state) {
    const Point at = state.input.mouse.at();
    if (!over_curve(at.x, at.y)) return say("The mark goes to the pointer: point at the curve");
    set_marker_speed(marker, keyed_speed(at.x));
    state.redraw = true;
}

void next_zoom(ParameterScreen& state) {
    state.graph.zoom = state.graph.zoom % highest_zoom + 1;
    state.redraw = true;
}

template <int step>
void step_point(ParameterScreen& state) {
    select_point(state, state.graph.selected + step);
}

template <int step>
void step_torque(ParameterScreen& state) {
    set_torque(state.graph.selected, torque(state.graph.selected) + step);
    state.point_chosen = state.redraw = true;
}

bool is_over_curve(const ParameterScreen& state) { return over_curve(state.input.mouse.x, state.input.mouse.y); }
bool has_previous(const ParameterScreen& state) { return state.graph.selected > 0; }
bool has_next(const ParameterScreen& state) { return state.graph.selected + 1 < torque_points; }
bool can_rise(const ParameterScreen& state) { return torque(state.graph.selected) < most_torque; }
bool can_fall(const ParameterScreen& state) { return torque(state.graph.selected) > 0; }

constexpr KeyBinding<ParameterScreen> keys[] = {
    {{}, "edits it; Powergear: next class", nullptr, "click on a value"},
    {{}, "sets the torque there, as long as it is down", nullptr, "left button on the curve"},
    {{}, "selects the point", nullptr, "right button on the curve"},
    {{}, "drags the engine speed", nullptr, "left button on a mark below the graph"},
    {{"i", "I"}, "idle speed at the pointer", set_marker_here<1>, "I over the curve", is_over_curve},
    {{"d", "D"}, "downshift speed at the pointer", set_marker_here<2>, "D over the curve", is_over_curve},
    {{"u", "U"}, "upshift speed at the pointer", set_marker_here<3>, "U over the curve", is_over_curve},
    {{"m", "M"}, "maximum engine speed at the pointer", set_marker_here<4>, "M over the curve", is_over_curve},
    {{key::left}, "previous point of the curve", step_point<-1>, nullptr, has_previous},
    {{key::right}, "next point of the curve", step_point<1>, nullptr, has_next},
    {{key::up}, "torque of the selected point, one more", step_torque<1>, nullptr, can_rise},
    {{key::down}, "torque of the selected point, one less", step_torque<-1>, nullptr, can_fall},
    {{"z", "Z"}, "next zoom of the torque axis, 1 to 4", next_zoom, "Z"},
    {{}, "edits the description", nullptr, "click on the Specifications box"},
    {{key::escape, key::close_window}, "ends the program", end_program<ParameterScreen>},
};

void maintain_targets(ParameterScreen& state) {
    if (dragging(state)) return;
    for (const RowRange& rows : shown_rows(state))
        MAINTAINTARGETS(rows.first, rows.last, opens(state));
}

// The graph is handled in the pass after the one that read the mouse, when the rows and the menu bar have seen it.
constexpr Step order[] = {Step::redraw, Step::mouse, Step::read, Step::menu_bar, Step::widgets, Step::key};

} // namespace

const Screen<ParameterScreen> parameter_screen{
    .order = order,
    .redraw = redraw,
    .on_mouse = on_mouse,
    .widgets = maintain_targets,
    .keys = keys,
    .stays_at_end = true,
};

void EDITPARAMS() {
    ParameterScreen state;
    run_screen(state, parameter_screen);
}

std::vector<KeyHelpTable> parameter_screen_keys() {
    return {key_help("", keys), target_entry_keys(), specification_keys()};
}
