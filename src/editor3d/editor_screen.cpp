#include "editor3d/editor_screen.h"

#include "base/file_io.h"
#include "base/random.h"
#include "editor3d/info_panel.h"
#include "editor3d/material_dump.h"
#include "editor3d/paint_job_panel.h"
#include "editor3d/views.h"
#include "model/car.h"
#include "model/generators.h"
#include "model/paint_jobs.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

namespace {

constexpr double zoom_step = 1.1, least_zoom = 1, greatest_zoom = 10000;
constexpr double yaw_step = 0.196349375, pitch_step = 0.0981746875; // 3.14159 / 16 and / 32, exactly so
constexpr double snap_doubles_below = 1.0, snap_halves_above = 0.01;
constexpr double debris_seconds = 2;

// --- redraw ---------------------------------------------------------------------------------------------------------

void redraw_view(EditorScreen& state, int view) { state.views.set(static_cast<std::size_t>(view - 1)); }
void redraw_views(EditorScreen& state) { state.views.set(); }
void redraw_views_and_panel(EditorScreen& state) {
    redraw_views(state);
    state.panel = true;
}

void draw_frame(const WINDOW3D& view, bool highlighted) {
    DRAWSECTION(view.left, view.top, view.right, view.bottom, view.caption, highlighted);
}

void draw_layout(EditorScreen& state) {
    clear_work_area();
    draw_text(screen(), 16, 16, "= 3D EDITOR =", colour::title);
    for (int view = 1; view <= views; ++view)
        draw_frame(W3D[view], view == state.hovered);
    redraw_views_and_panel(state);
}

void redraw(EditorScreen& state) {
    if (state.repaint) draw_layout(state);
    for (int view = 1; view <= views; ++view)
        if (state.views[static_cast<std::size_t>(view - 1)] && W3D[view].enabled != 0)
            UPDATE3DWINDOW(static_cast<std::uint8_t>(view));
    if (state.panel) draw_info_panel(state.mode, state.snap);
    state.views.reset();
    state.panel = false;
}

// --- mouse ----------------------------------------------------------------------------------------------------------

int view_at(Point at) {
    for (int view = 1; view <= views; ++view) {
        const WINDOW3D& frame = W3D[view];
        if (frame.enabled != 0 && Rectangle{frame.left, frame.top, frame.right, frame.bottom}.contains(at)) return view;
    }
    return 0;
}

void hover(EditorScreen& state, Point at) {
    state.hovered = view_at(at);
    // ODDITY highlight-stays (kept): a pointer that leaves the views, or comes back to the same one, redraws nothing;
    // the caption that was highlighted stays so.
    if (state.hovered == 0) return;
    const WINDOW3D& view = W3D[state.hovered];
    state.x = (at.x - view.origin_x) / view.zoom;
    state.y = (view.origin_y - at.y) / view.zoom;
    if (state.hovered == state.last_hovered) return;
    state.last_hovered = state.hovered;
    state.repaint = true;
}

void zoom(EditorScreen& state, int steps) {
    if (state.hovered == 0 || steps == 0) return;
    double& zoom = W3D[state.hovered].zoom;
    zoom = std::clamp(zoom * std::pow(zoom_step, steps), least_zoom, greatest_zoom);
    redraw_view(state, state.hovered);
}

void on_mouse(EditorScreen& state) {
    const Input& input = state.input;
    const int wheel_steps = input.mouse.wheel - input.before.wheel;
    if (!input.moved() && wheel_steps == 0) return;
    hover(state, input.mouse.at());
    zoom(state, wheel_steps);
}

// --- what does something now ----------------------------------------------------------------------------------------

bool can_double(const EditorScreen& state) { return state.snap < snap_doubles_below; }
bool can_halve(const EditorScreen& state) { return state.snap > snap_halves_above; }
bool has_another_job(const EditorScreen&) { return PAINTJOBS > 1; }
bool has_room_for_a_job(const EditorScreen&) { return PAINTJOBS < most_added_paint_jobs; }
bool is_over_3d(const EditorScreen& state) { return state.hovered == view_3d; }

// --- keys -----------------------------------------------------------------------------------------------------------

void turn(EditorScreen& state) {
    const std::string& typed = state.input.key;
    if (typed == key::right) CURYAW += yaw_step;
    if (typed == key::left) CURYAW -= yaw_step;
    if (typed == key::up) CURPITCH += pitch_step;
    if (typed == key::down) CURPITCH -= pitch_step;
    redraw_view(state, view_3d);
}

void arrow(EditorScreen& state) {
    if (state.hovered == 0 || state.hovered == view_3d) return turn(state);
    if (const ArrowRow* const row = arrow_row(state.input.key, state.hovered)) move_by(*row, state.mode, state.snap);
    redraw_views(state);
}

void next_mode(EditorScreen& state) {
    const int step = state.input.qualifiers.control ? move_modes - 1 : 1;
    state.mode = static_cast<MoveMode>((static_cast<int>(state.mode) + step) % move_modes);
    state.panel = true;
}

void double_snap(EditorScreen& state) {
    if (!can_double(state)) return;
    state.snap *= 2;
    state.panel = true;
}

void halve_snap(EditorScreen& state) {
    if (!can_halve(state)) return;
    state.snap /= 2;
    state.panel = true;
}

void show_paint_job(EditorScreen& state, int paint_job) {
    CURPJ = static_cast<std::uint8_t>(paint_job);
    redraw_views_and_panel(state);
}

void next_paint_job(EditorScreen& state) { show_paint_job(state, CURPJ + 1 < PAINTJOBS ? CURPJ + 1 : 0); }
void previous_paint_job(EditorScreen& state) { show_paint_job(state, CURPJ > 0 ? CURPJ - 1 : PAINTJOBS - 1); }

void add_job(EditorScreen& state) {
    if (!add_paint_job()) return say(std::to_string(most_added_paint_jobs) + " paint jobs at most");
    redraw_views_and_panel(state);
}

void remove_job(EditorScreen& state) {
    if (!remove_current_paint_job()) return say("The only paint job stays");
    redraw_views_and_panel(state);
}

void show_slot(EditorScreen& state, int slot) {
    CURMODEL = static_cast<std::int8_t>(slot);
    redraw_views_and_panel(state);
}

void next_slot(EditorScreen& state) { show_slot(state, (CURMODEL + 1) % car_slots); }
void numbered_slot(EditorScreen& state) { show_slot(state, state.input.key.front() - '1'); }

void copy(EditorScreen&) {
    CARCLIP = shown_slot();
    say(slot_label(CURMODEL) + " copied");
}

bool is_empty(const SHAPEMODEL& model) { return model.nverts == 0 && model.nprims == 0; }

// ODDITY counts-wait-for-the-panel (kept): the info panel keeps the counts of vertices and primitives until something
// asks for it anew, here and when wheels are generated.
void paste(EditorScreen& state) {
    shown_slot() = CARCLIP;
    redraw_views(state);
    if (is_empty(*CARCLIP)) say("The clipboard is empty, and now " + slot_label(CURMODEL) + " is, too");
}

void open_panel(EditorScreen& state) {
    if (is_over_3d(state)) PJSELECTION();
}

void shade(EditorScreen& state) {
    AUTOSHADE();
    redraw_view(state, view_3d);
}

void generate_info(EditorScreen& state) {
    const bool complete = GENERATEINFO(true, true);
    redraw_views(state);
    say(complete
            ? "Dimensions and wheel positions taken from the Game model"
            : "Dimensions taken from the Game model; its first two primitives are not both wheels, the positions stay");
}

std::string debris_message(const DebrisReport& report) {
    if (report.nothing_fits)
        return "No explosion models: the Game model has no line and no polygon of up to five corners";
    if (report.pieces < explosion_models)
        return "Time is up: " + std::to_string(report.pieces) + " explosion models made";
    return "Four explosion models made from the Game model";
}

void generate_debris(EditorScreen&) {
    const double begin = timer();
    say(debris_message(GENERATEDEBRIS(random_unit, [begin] { return timer() - begin >= debris_seconds; })));
}

void generate_wheels_here(EditorScreen& state) {
    GENERATEWHEELS(CURMODEL);
    redraw_views(state);
}

void dump_materials(EditorScreen&) {
    const std::string name = "coso.txt";
    const std::string text = material_dump(*shown_slot());
    const bool saved = save_file(name, std::as_bytes(std::span(text))) == SaveOutcome::saved;
    say(name + (saved ? " written" : " is not writable"));
}

constexpr KeyBinding<EditorScreen> keys[] = {
    {{}, "chooses the view that the cursor keys act in", nullptr, "pointer in a view"},
    {{}, "zooms it, 1 to 10,000 pixels a model unit", nullptr, "wheel over a view"},
    {{key::left, key::right, key::up, key::down}, "move, resize and turn, see below", arrow, "cursor keys"},
    {{key::tab}, "next move mode; with Ctrl the previous one", next_mode},
    {{"*"}, "doubles the move snap, up to 1.6", double_snap, nullptr, can_double},
    {{"/"}, "halves the move snap, down to 0.00625", halve_snap, nullptr, can_halve},
    {{"m", "M"}, "next model slot", next_slot, "M"},
    {{"1", "2", "3", "4", "5"}, "model slot of this number", numbered_slot, "1 to 5"},
    {{"p", "P", "."}, "next paint job", next_paint_job, "P, .", has_another_job},
    {{","}, "previous paint job", previous_paint_job, nullptr, has_another_job},
    {{key::ctrl<'P'>}, "adds a paint job, a copy of the shown one, 16 at most", add_job, nullptr, has_room_for_a_job},
    {{key::ctrl<'O'>}, "removes the shown paint job", remove_job, nullptr, has_another_job},
    {{key::enter}, "opens the paint-job panel", open_panel, "Enter over the 3D view", is_over_3d},
    {{key::ctrl<'C'>}, "copies the model", copy},
    {{key::ctrl<'V'>}, "replaces the model by the copy", paste},
    {{key::ctrl<'A'>}, "shades the model's faces by where they look", shade},
    {{key::ctrl<'W'>}, "generates four standard wheels", generate_wheels_here},
    {{key::ctrl<'B'>}, "takes dimensions and wheel positions from the Game model into the parameters", generate_info},
    {{key::ctrl<'D'>}, "makes the four explosion models from pieces of the Game model", generate_debris},
    {{"`"}, "writes the first four primitives' materials to coso.txt", dump_materials},
    {{key::escape, key::close_window}, "ends the program", end_program<EditorScreen>},
};

constexpr Step order[] = {Step::redraw, Step::read, Step::mouse, Step::menu_bar, Step::key};

std::vector<KeyHelpTable> arrows_now(const EditorScreen& state) {
    return {arrow_key_help_now(state.mode, state.hovered)};
}

} // namespace

const Screen<EditorScreen> editor_screen{
    .order = order,
    .redraw = redraw,
    .on_mouse = on_mouse,
    .keys = keys,
    .further_keys = arrows_now,
};

void EDIT3D() {
    // ODDITY slot-begins-at-showroom (kept): every visit begins with the first slot, while paint job, turn and zooms
    // are as the last one left them.
    CURMODEL = 0;
    EditorScreen state;
    run_screen(state, editor_screen);
}

std::vector<KeyHelpTable> editor_screen_keys() {
    return {key_help("", keys), arrow_key_help(), paint_job_panel_keys()};
}
