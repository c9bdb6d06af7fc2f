#include "app/check_places.h"

#include "dash/dash_screen.h"
#include "model/items.h"
#include "params/parameter_screen.h"
#include "params/parameter_table.h"
#include "widgets/menu_bar.h"
#include "widgets/screen_loop.h"
#include "window/input.h"

#include <string>

namespace {

constexpr Point inside_description{800, 400};

using Events = std::vector<InputEvent>;

void press(Events& events, Key key, int times = 1) {
    for (int i = 0; i < times; ++i)
        for (const auto kind : {InputEvent::Kind::key_down, InputEvent::Kind::key_up}) {
            InputEvent& event = events.emplace_back();
            event.kind = kind;
            event.key = key;
        }
}

void type(Events& events, char character) {
    InputEvent& event = events.emplace_back();
    event.kind = InputEvent::Kind::text;
    event.text = std::string(1, character);
}

void click(Events& events, Point at) {
    for (const auto kind : {InputEvent::Kind::mouse_move, InputEvent::Kind::button_down, InputEvent::Kind::button_up}) {
        InputEvent& event = events.emplace_back();
        event.kind = kind;
        event.x = at.x;
        event.y = at.y;
        event.button = 1;
    }
}

WayToPlace way_to_slot(int slot) {
    WayToPlace way{screen_number::editor_3d};
    type(way.events, static_cast<char>('1' + slot));
    return way;
}

// The mode is kept between visits: as many steps as it is away.
WayToPlace way_to_mode(int mode) {
    WayToPlace way{screen_number::dash_manager};
    press(way.events, Key::tab, (mode + dash_mode::count - OPMODE) % dash_mode::count);
    return way;
}

// Of the digits only one is an item, which shows the one that is typed.
WayToPlace way_to_bitmap(const std::string& id) {
    WayToPlace way = way_to_mode(dash_mode::images);
    const bool is_digit = id.starts_with("dig");
    if (is_digit) type(way.events, id.back());
    for (int item = 1; item <= dash_items; ++item)
        if (DASHITEM[item].id == id || (is_digit && item == dash_items)) {
            press(way.events, Key::page_down, item - 1);
            break;
        }
    return way;
}

WayToPlace way_to_point(int mode, int number) {
    WayToPlace way = way_to_mode(mode);
    press(way.events, Key::page_up, number);
    return way;
}

// The first gear is worked on after the entry.
WayToPlace way_to_gear(int gear) {
    WayToPlace way = way_to_mode(dash_mode::gear_box);
    if (gear == 0)
        press(way.events, Key::page_down);
    else
        press(way.events, Key::page_up, gear - 1);
    return way;
}

bool is_wanted(const PARAMINPUT& row, const CheckPlace& place) {
    switch (place.spot) {
    case CheckSpot::name: return row.type == target_type::car_name;
    case CheckSpot::sign_name: return row.type == target_type::sign_name;
    default: break;
    }
    const bool is_number = row.type == target_type::byte || row.type == target_type::word;
    return is_number && row.offset == place.number;
}

WayToPlace way_to_row(const CheckPlace& place) {
    WayToPlace way{screen_number::parameters};
    for (const RowRange& rows : shown_rows(ParameterScreen()))
        for (int row = rows.first; row <= rows.last; ++row)
            if (is_wanted(PTARGET[row], place)) {
                click(way.events, {PTARGET[row].value_x + 4, PTARGET[row].value_y + 8});
                return way;
            }
    return way;
}

WayToPlace way_to_description() {
    WayToPlace way{screen_number::parameters};
    click(way.events, inside_description);
    return way;
}

} // namespace

WayToPlace way_to(const CheckPlace& place) {
    switch (place.spot) {
    case CheckSpot::model: return way_to_slot(place.number);
    case CheckSpot::bitmap: return way_to_bitmap(place.id);
    case CheckSpot::speedometer_tip: return way_to_point(dash_mode::speedometer, place.number);
    case CheckSpot::tachometer_tip: return way_to_point(dash_mode::tachometer, place.number);
    case CheckSpot::knob: return way_to_gear(place.number);
    case CheckSpot::parameter:
    case CheckSpot::name:
    case CheckSpot::sign_name: return way_to_row(place);
    case CheckSpot::description: return way_to_description();
    case CheckSpot::engine_speed:
    case CheckSpot::torque_curve: break;
    }
    return {screen_number::parameters};
}

void go_to_place(const CheckPlace& place) {
    if (!wait_for_release()) return;
    const WayToPlace way = way_to(place);
    CURMENU = way.screen;
    leave_screens();
    do_next(way.events);
}
