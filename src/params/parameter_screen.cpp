#include "params/parameter_screen.h"

#include "app/menu_bar.h"
#include "app/widgets.h"
#include "app/window.h"
#include "params/specifications.h"
#include "params/target_edit.h"

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

std::vector<RowRange> shown_rows(const ParameterScreen& state) {
    // ODDITY rpm-column-never-shown (kept): nothing ever selects the layout with the RPM rows; these four values are
    // edited through the graph's markers alone.
    if (!state.mysterious) return {{1, 18}, {34, 39}};
    return {{1, 35}};
}

void draw(ParameterScreen& state) {
    if (!state.redraw) return;
    const ScreenLock lock;
    if (state.repaint) draw_layout(state);
    for (const RowRange& rows : shown_rows(state))
        draw_targets(rows.first, rows.last);
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

void on_curve(ParameterScreen& state) {
    TorqueGraph& graph = state.graph;
    const int point = point_at(state.now.x);
    if (point * rpm_per_point != graph.hovered_speed) {
        const ScreenLock lock;
        draw_hover(screen(), graph, point);
        graph.hovered_speed = point * rpm_per_point;
    }
    if (state.now.buttons == 1) set_torque(point, torque_at(state.now.y, graph.zoom));
    if (state.now.buttons == 1 || state.now.buttons == 2) select_point(state, point);
}

void on_marker_strip(ParameterScreen& state) {
    TorqueGraph& graph = state.graph;
    const int speed = dragged_speed(state.now.x);
    if (state.now.buttons == 1 && state.last.buttons != 1) graph.dragged = marker_near(speed);
    if (graph.dragged == 0) return;
    set_marker_speed(graph.dragged, speed);
    state.redraw = true;
}

// A button released while something was typed ended the drag unseen; one pressed to end the edit acts where it is.
void after_nested_edit(ParameterScreen& state) {
    state.graph.dragged = 0;
    state.mouse_waits = true;
}

} // namespace

void on_mouse(ParameterScreen& state) {
    const MouseState& now = state.now;
    if (now.buttons != 1) state.graph.dragged = 0;
    if (over_curve(now.x, now.y)) on_curve(state);
    if (over_marker_strip(now.x, now.y)) on_marker_strip(state);
    if (over_specifications(now.x, now.y) && now.buttons == 1) {
        EDITSPECS(0);
        after_nested_edit(state);
    }
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

bool maintain_targets(const ParameterScreen& state) {
    bool edited = false;
    for (const RowRange& rows : shown_rows(state))
        edited = MAINTAINTARGETS(rows.first, rows.last) != 0 || edited;
    return edited;
}

bool moved(const ParameterScreen& state) {
    return state.now.x != state.last.x || state.now.y != state.last.y || state.now.buttons != state.last.buttons;
}

MouseState next_mouse(ParameterScreen& state) {
    return std::exchange(state.mouse_waits, false) ? mouse() : read_mouse();
}

// False when the screen is left.
bool pass(ParameterScreen& state) {
    draw(state);
    if (moved(state)) on_mouse(state);
    state.last = state.now;
    state.now = next_mouse(state);
    const std::string typed = read_key();
    if (MAINTAINMENU(false) < 0) {
        clear_work_area();
        return false;
    }
    if (maintain_targets(state)) after_nested_edit(state);
    on_key(state, typed);
    return !state.leave;
}

} // namespace

void EDITPARAMS() {
    ParameterScreen state;
    while (pass(state)) {
    }
}
