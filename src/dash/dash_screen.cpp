#include "dash/dash_screen.h"

#include "base/reset.h"
#include "dash/modes.h"
#include "model/items.h"
#include "widgets/widgets.h"

#include <array>
#include <string>

std::uint8_t OPMODE = dash_mode::driving;

namespace {

const ResetWithProgram registered([] { OPMODE = dash_mode::driving; });

// By number.
constexpr std::array<const DashMode*, dash_mode::count> modes = {
    &driving_mode, &images_mode, &wheel_mode, &speedometer_mode, &tachometer_mode, &gear_box_mode,
};
const DashMode& mode() { return mode_of(OPMODE); }

constexpr int left_alone = 1; // of the buttons

// --- drawing -------------------------------------------------------------------------------------------------------

void draw_view(const DashScreen& state) {
    if (state.zoom == small_zoom) DRAWSECTION(47, 90, 692, 502, mode().view_title, false);
    const ClipGuard clip(screen(), state.view().area);
    mode().draw_view(state);
}

void redraw(DashScreen& state) {
    if (!state.redraw && !state.repaint) return;
    clear_work_area();
    draw_text(screen(), 16, 16, "= DASH MANAGER =", colour::title);
    draw_view(state);
    if (mode().draw_panel) mode().draw_panel(state);
    state.redraw = false;
}

// --- mouse and held keys -------------------------------------------------------------------------------------------

// A drag pauses outside the view and ends with the release.
void on_mouse(DashScreen& state) {
    if (state.input.mouse.buttons != left_alone) return state.drag.reset();
    const auto place = state.view().canvas_point(state.input.mouse.at());
    if (place && mode().on_mouse) mode().on_mouse(state, *place);
}

Steering held_steering() {
    const bool left = key_held(scancode::cursor_left), right = key_held(scancode::cursor_right);
    if (left == right) return Steering::straight;
    return left ? Steering::left : Steering::right;
}

void steer(DashScreen& state) {
    if (OPMODE != dash_mode::driving || state.steering == held_steering()) return;
    state.steering = held_steering();
    state.redraw = true;
}

// --- keys of all modes ---------------------------------------------------------------------------------------------

void step_mode(DashScreen& state, int step) {
    OPMODE = static_cast<std::uint8_t>((OPMODE + step) % dash_mode::count);
    state.drag.reset();
    state.redraw = true;
}

void previous_mode(DashScreen& state) { step_mode(state, dash_mode::count - 1); }
void next_mode(DashScreen& state) {
    if (state.input.qualifiers.control) return previous_mode(state);
    step_mode(state, 1);
}

void toggle_arcs(DashScreen& state) {
    state.arcs = !state.arcs;
    state.redraw = true;
}

void toggle_zoom(DashScreen& state) {
    state.zoom = other_zoom(state.zoom);
    state.redraw = true;
}

constexpr KeyBinding<DashScreen> keys[] = {
    {{key::tab}, "next mode: driving test, images, wheel, speedometer, tachometer, gear box", next_mode},
    {{key::shift_tab}, "previous mode", previous_mode, "Shift+Tab, Ctrl+Tab"},
    {{" "}, "the keys act on the arc, or on the selected point again", toggle_arcs, "blank"},
    {{"q", "Q"}, "shows the cockpit twice or three times its size", toggle_zoom, "Q"},
    {{key::escape, key::close_window}, "ends the program", end_program<DashScreen>},
};

std::span<const KeyBinding<DashScreen>> keys_of_mode(const DashScreen&) { return mode().keys; }
const char* heading_of_mode(const DashScreen&) { return mode().key_heading; }

bool take_drop(DashScreen& state) { return mode().on_drop && mode().on_drop(state); }

constexpr Step order[] = {Step::redraw, Step::read, Step::menu_bar, Step::widgets, Step::key, Step::mouse};

} // namespace

const DashMode& mode_of(std::uint8_t number) { return *modes[number % dash_mode::count]; }

const Screen<DashScreen> dash_screen{
    .order = order,
    .redraw = redraw,
    .on_mouse = on_mouse,
    .widgets = steer,
    .keys = keys,
    .mode_keys = keys_of_mode,
    .mode_heading = heading_of_mode,
    .on_drop = take_drop,
};

void DASHMANAGER() {
    UPDATEDASHITEMS();
    DashScreen state;
    run_screen(state, dash_screen);
}

// The two gauges have the same.
std::vector<KeyHelpTable> dash_screen_keys() {
    std::vector<KeyHelpTable> tables{key_help("", keys)};
    for (const DashMode* const one : modes)
        if (one->key_heading != tables.back().heading) tables.push_back(key_help(one->key_heading, one->keys));
    return tables;
}
