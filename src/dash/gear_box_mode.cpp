// The gear box: where the knob stands in each gear, and the gate between them.
#include "dash/marks.h"
#include "dash/modes.h"
#include "dash/panel.h"

#include "model/bitmap_table.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <vector>

namespace {

constexpr MarkSizes knob_mark{{-1, 1}, {-1, 2}};

// The gear that is edited: the last one when the count went down with another car, the first one without gears.
int current_gear(const DashScreen& state) {
    return state.gear == tabs ? tabs : std::min(state.gear, std::max(gear_count(), 1));
}
int worked_on(const DashScreen& state) { return state.gear == tabs ? gate : current_gear(state); }

// The gear box, or, without one, the canvas.
const BitmapRecord& gear_box() { return BITMAP[RBM("gbox")]; }
CockpitPoint on_canvas(int gear) { return bitmap_position("gbox") + knob(gear); }

// --- drawing -------------------------------------------------------------------------------------------------------

void draw_gear(const CockpitView& view, int gear, bool current) {
    outline_mark(view, on_canvas(gear), knob_mark, current ? mark_colour::current_gear : mark_colour::plain);
    const Point at = view.at(on_canvas(gear));
    const std::string number = std::to_string(gear);
    draw_text(screen(), at.x - 2, at.y + 5, number, mark_colour::shadow);
    draw_text(screen(), at.x - 3, at.y + 4, number, mark_colour::number);
}

// A line down and one across the whole gear box.
void draw_gate(const CockpitView& view, bool current) {
    const std::uint32_t colour = current ? mark_colour::current_gear : mark_colour::centre;
    const Point box = view.at(bitmap_position("gbox")), at = view.at(on_canvas(gate));
    const int width = view.zoom * gear_box().width, height = view.zoom * gear_box().height;
    draw_line(screen(), at.x, box.y, at.x, box.y + height - 1, colour);
    draw_line(screen(), box.x, at.y, box.x + width - 1, at.y, colour);
}

void draw_view(const DashScreen& state) {
    const CockpitView view = state.view();
    draw_cockpit(view, Steering::straight);
    draw_bitmap(view, "gbox");
    for (int gear = 1; gear <= gear_count(); ++gear)
        draw_gear(view, gear, gear == current_gear(state));
    draw_gate(view, state.gear == tabs);
}

std::string gear_text(int gear) {
    return gear == tabs ? "Tabs" : "Gear " + std::to_string(gear) + "/" + std::to_string(gear_count());
}

void draw_panel(const DashScreen& state) {
    DRAWSECTION(720, 90, 917, 296, "Gear box", false);
    draw_row(edit_columns, {100, "Editing", gear_text(current_gear(state))});
}

// --- mouse ---------------------------------------------------------------------------------------------------------

void on_mouse(DashScreen& state, CockpitPoint place) {
    std::vector<CockpitPoint> knobs;
    for (int gear = 1; gear <= gear_count(); ++gear)
        knobs.push_back(on_canvas(gear));
    const int nearest = nearest_point(knobs, place);
    if (nearest < 0) return;
    state.gear = nearest + 1;
    state.redraw = true;
}

// --- keys ----------------------------------------------------------------------------------------------------------

void next_gear(DashScreen& state) {
    const int gear = current_gear(state);
    if (gear == tabs)
        state.gear = 1;
    else
        state.gear = gear < gear_count() ? gear + 1 : tabs;
    state.redraw = true;
}

void previous_gear(DashScreen& state) {
    const int gear = current_gear(state);
    if (gear == tabs)
        state.gear = std::max(gear_count(), 1);
    else
        state.gear = gear > 1 ? gear - 1 : tabs;
    state.redraw = true;
}

bool has_room_for_a_gear(const DashScreen&) { return gear_count() < most_gears; }
bool has_a_gear(const DashScreen&) { return gear_count() > 0; }

void more_gears(DashScreen& state) {
    if (has_room_for_a_gear(state)) set_gear_count(gear_count() + 1);
    state.redraw = true;
}

void fewer_gears(DashScreen& state) {
    if (!has_a_gear(state)) return;
    set_gear_count(gear_count() - 1);
    state.gear = gear_count() == 0 ? tabs : std::min(state.gear, gear_count());
    state.redraw = true;
}

// Stops at the edges of the gear box; what lies outside only comes back.
int stepped(int at, int step, int size) {
    const bool room = step < 0 ? at > 0 : at < size - 1;
    return room ? at + step : at;
}

CockpitPoint moved_knob(const DashScreen& state, int across, int down) {
    CockpitPoint at = knob(worked_on(state));
    if (across != 0) at.x = stepped(at.x, across, gear_box().width);
    if (down != 0) at.y = stepped(at.y, down, gear_box().height);
    return at;
}

template <int across, int down>
bool can_move_knob(const DashScreen& state) {
    return !(moved_knob(state, across, down) == knob(worked_on(state)));
}

template <int across, int down>
void move_knob(DashScreen& state) {
    set_knob(worked_on(state), moved_knob(state, across, down));
    state.redraw = true;
}

// ODDITY page-keys-differ-by-mode (kept): Page Up goes on to the next gear or point, but to the previous bitmap.
constexpr KeyBinding<DashScreen> keys[] = {
    {{}, "selects the knob of the gear nearest to the pointer", nullptr, "left button on the cockpit"},
    {{key::page_up}, "next gear, after the last one the gate", next_gear},
    {{key::page_down}, "previous gear, before the first one the gate", previous_gear},
    {{key::left}, "moves the knob, or the gate, one pixel left", move_knob<-1, 0>, nullptr, can_move_knob<-1, 0>},
    {{key::right}, "moves it one pixel right", move_knob<1, 0>, nullptr, can_move_knob<1, 0>},
    {{key::up}, "moves it one pixel up", move_knob<0, -1>, nullptr, can_move_knob<0, -1>},
    {{key::down}, "moves it one pixel down", move_knob<0, 1>, nullptr, can_move_knob<0, 1>},
    {{"+", "="}, "one gear more, 6 at most", more_gears, "+ or =", has_room_for_a_gear},
    {{"-"}, "one gear less", fewer_gears, nullptr, has_a_gear},
};

} // namespace

const DashMode gear_box_mode{.key_heading = "At the gear box:",
                             .view_title = "Dash view",
                             .draw_view = draw_view,
                             .draw_panel = draw_panel,
                             .on_mouse = on_mouse,
                             .keys = keys};
