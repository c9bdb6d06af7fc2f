#include "params/parameter_screen.h"

#include "params/specifications.h"
#include "params/target_edit.h"
#include "widgets/menu_bar.h"
#include "widgets/widgets.h"
#include "window/window.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr int highest_zoom = 4;

void draw_right_column(bool mysterious) {
    if (mysterious)
        DRAWSECTION(740, 50, 948, 324, "Mysterious", false);
    else
        DRAWSECTION(740, 50, 948, 144, "RPM", false);
}

void draw_layout(const ParameterScreen& state) {
    clear_work_area();
    draw_text(screen(), 16, 16, "= PHYSICAL PARAMETERS =", colour::title);
    DRAWSECTION(10, 50, 300, 195, "General", false);
    DRAWSECTION(320, 50, 510, 180, "Grip", false);
    DRAWSECTION(530, 50, 720, 195, "Gears", false);
    draw_right_column(state.mysterious);
    DRAWSECTION(10, 220, 720, 570, "Torque curve", false);
    DRAWSECTION(740, 345, 948, 570, "Specifications", false);
    EDITSPECS(-1);
    forget_drawn_targets();
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

} // namespace

void draw(ParameterScreen& state) {
    if (!state.redraw) return;
    const ScreenLock lock;
    if (state.repaint) draw_layout(state);
    for (const RowRange& rows : shown_rows(state))
        draw_targets(rows.first, rows.last, !dragging(state));
    draw_torque_graph(screen(), state.graph);
    state.redraw = false;
    // What was drawn over other sections must go with the next change.
    state.repaint = reaches_outside(state.graph);
}

namespace {

void select_point(ParameterScreen& state, int point) {
    state.graph.selected = std::clamp(point, 0, torque_points - 1);
    state.redraw = true;
}

// Two frames, as the boxes and the values lie far apart: what is shown is one rectangle a frame.
void hover(TorqueGraph& graph, int point) {
    {
        const ScreenLock lock;
        draw_hovered_point(screen(), graph, point);
    }
    const ScreenLock lock;
    draw_hovered_values(screen(), point);
    graph.hovered_speed = point * rpm_per_point;
}

// The buttons that act: none in a press that was spent on ending an edit.
int buttons(const ParameterScreen& state) { return state.press == Press::spent ? 0 : state.now.buttons; }

void on_curve(ParameterScreen& state) {
    const int point = point_at(state.now.x);
    // ODDITY hover-readout-vanishes (kept): a redraw of the graph takes the highlight and the values away, and only
    // another point brings them back; the first point shows nothing when it is the first one pointed at.
    if (point * rpm_per_point != state.graph.hovered_speed) hover(state.graph, point);
    if (buttons(state) == 1) set_torque(point, torque_at(state.now.y, state.graph.zoom));
    if (buttons(state) == 1 || buttons(state) == 2) select_point(state, point);
}

void on_marker_strip(ParameterScreen& state) {
    TorqueGraph& graph = state.graph;
    const int speed = dragged_speed(state.now.x);
    if (buttons(state) == 1 && state.last.buttons != 1) graph.dragged = marker_near(speed);
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

void follow_press(ParameterScreen& state) {
    const MouseState& now = state.now;
    const bool left_went_down = (now.buttons & ~state.last.buttons & 1) != 0;
    if (left_went_down && state.press != Press::spent)
        state.press = over_curve(now.x, now.y) ? Press::stroke : Press::plain;
    if (now.buttons == 0) state.press = Press::plain;
    if (now.buttons != 1) end_drag(state);
}

// Whether the left button opens what the pointer reaches with it.
bool opens(const ParameterScreen& state) { return state.press == Press::plain && !dragging(state); }

// A press in the field that was edited did nothing but end the edit; anywhere else it acts where it is.
void after_edit(ParameterScreen& state, EditEnd end, bool pointer_in_field) {
    state.mouse_waits = true;
    state.pressed_anew = end == EditEnd::pressed;
    if (state.pressed_anew && pointer_in_field) state.press = Press::spent;
}

void edit_specifications(ParameterScreen& state) {
    const EditEnd end = EDITSPECS(0);
    after_edit(state, end, over_specifications(mouse().x, mouse().y));
}

} // namespace

void on_mouse(ParameterScreen& state) {
    const MouseState& now = state.now;
    follow_press(state);
    if (over_curve(now.x, now.y) && !dragging(state)) on_curve(state);
    if (over_marker_strip(now.x, now.y)) on_marker_strip(state);
    if (over_specifications(now.x, now.y) && now.buttons == 1 && opens(state)) edit_specifications(state);
}

namespace {

template <int marker>
void set_marker_here(ParameterScreen& state) {
    if (!over_curve(state.now.x, state.now.y)) return;
    set_marker_speed(marker, keyed_speed(state.now.x));
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
    state.redraw = true;
}

void leave(ParameterScreen& state) {
    CURMENU = screen_number::quit;
    state.leave = true;
}

} // namespace

std::span<const ParameterKey> parameter_keys() {
    static const std::array<ParameterKey, 11> keys{{
        {"i", "I", "idle speed at the pointer", set_marker_here<1>},
        {"d", "D", "downshift speed at the pointer", set_marker_here<2>},
        {"u", "U", "upshift speed at the pointer", set_marker_here<3>},
        {"m", "M", "maximum speed at the pointer", set_marker_here<4>},
        {"z", "Z", "next zoom of the torque axis", next_zoom},
        {key::right, "", "next point of the curve", step_point<1>},
        {key::left, "", "previous point of the curve", step_point<-1>},
        {key::up, "", "more torque at the selected point", step_torque<1>},
        {key::down, "", "less torque at the selected point", step_torque<-1>},
        {key::escape, "", "end the program", leave},
        {key::close_window, "", "end the program", leave},
    }};
    return keys;
}

void on_key(ParameterScreen& state, const std::string& typed) {
    if (typed.empty()) return;
    for (const ParameterKey& binding : parameter_keys())
        if (typed == binding.key || typed == binding.or_key) binding.action(state);
}

namespace {

void maintain_targets(ParameterScreen& state) {
    if (dragging(state)) return;
    for (const RowRange& rows : shown_rows(state)) {
        if (MAINTAINTARGETS(rows.first, rows.last, opens(state)) == 0) continue;
        const auto [row, end] = last_target_edit();
        after_edit(state, end, over_target(PTARGET[row], mouse().x, mouse().y));
    }
}

bool moved(const ParameterScreen& state) {
    return state.now.x != state.last.x || state.now.y != state.last.y || state.now.buttons != state.last.buttons;
}

void next_mouse(ParameterScreen& state) {
    state.last = state.now;
    state.now = std::exchange(state.mouse_waits, false) ? mouse() : read_mouse();
    if (std::exchange(state.pressed_anew, false)) state.last.buttons = 0;
}

// False when the screen is left.
bool pass(ParameterScreen& state) {
    draw(state);
    if (moved(state)) on_mouse(state);
    next_mouse(state);
    const std::string typed = read_key();
    if (MAINTAINMENU(false) < 0) {
        clear_work_area();
        return false;
    }
    maintain_targets(state);
    on_key(state, typed);
    return !state.leave;
}

} // namespace

void EDITPARAMS() {
    ParameterScreen state;
    while (pass(state)) {
    }
}
