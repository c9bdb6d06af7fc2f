#include "window/input.h"

#include "base/reset.h"
#include "window/backend.h"
#include "window/key_translation.h"
#include "window/window.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <set>
#include <utility>
#include <vector>

namespace {

// Fruitless passes before reading waits.
constexpr int patience = 3;
constexpr int left_button = 1;
constexpr Point outside{-1, -1};

// One step of the queue: a key, or a state of the mouse when the key is empty.
struct Step {
    std::string key;
    std::string dropped{};  // the path that goes with key::dropped
    Qualifiers qualifiers;  // held with the key
    Key cause = Key::other; // of a key: what was pressed for it
    MouseState state;
    bool may_merge = false; // a mere move or turn of the wheel without a button
    bool wheel_turned = false;

    bool is_key() const { return !key.empty(); }
};

// Where the buttons act that are down.
enum class Owner : std::uint8_t { work_area, menu_bar, nobody };

// The mouse as its last step left it, and its press.
struct Pointer {
    MouseState state;
    Owner owner = Owner::nobody;
    Point pressed_at = outside; // of the left button

    MouseState seen_by(Owner place) const {
        MouseState seen = state;
        if (owner != place) seen.buttons = 0;
        return seen;
    }
};

// What was read last, and all that reading it changed.
struct Taken {
    Step step;
    Pointer pointer;
    MouseState told;
};

struct InputState {
    std::deque<Step> queue;
    Pointer pointer;
    MouseState told;   // what the loop that reads was told last
    MouseState newest; // at the end of the queue
    std::set<Key> held;
    Qualifiers with_key;    // of the key read last
    Key cause = Key::other; // of the same
    bool key_was_read = false;
    std::optional<Taken> taken;
    int close_requests = 0; // that arrived, also those that found an unread one
    int fruitless = 0;
    std::optional<double> alarm;
};

InputState input;

bool held(Key key) { return input.held.contains(key); }

Qualifiers qualifiers_now() {
    return {held(Key::control_left) || held(Key::control_right), held(Key::shift_left), held(Key::shift_right)};
}

void queue_key(const std::string& key, const Modifiers& modifiers, Key cause) {
    Step step;
    step.key = key;
    step.qualifiers = qualifiers_now();
    step.qualifiers.control = step.qualifiers.control || modifiers.control;
    step.cause = cause;
    input.queue.push_back(step);
}

// A state in which a button changed, or that was reached with a button down: never merged with another.
void queue_state(const MouseState& state) {
    input.newest = state;
    Step step;
    step.state = state;
    input.queue.push_back(step);
}

// The last unread step, when a move without buttons may still change it.
Step* mergeable_step() {
    if (input.queue.empty() || !input.queue.back().may_merge) return nullptr;
    return &input.queue.back();
}

void queue_mergeable_state(const MouseState& state, bool wheel_turned) {
    if (Step* last = mergeable_step()) {
        last->state = state;
        last->wheel_turned = last->wheel_turned || wheel_turned;
        input.newest = state;
        return;
    }
    queue_state(state);
    input.queue.back().may_merge = true;
    input.queue.back().wheel_turned = wheel_turned;
}

void move_mouse(const InputEvent& event) {
    MouseState state = input.newest;
    state.x = event.x;
    state.y = event.y;
    if (state == input.newest) return;
    if (state.buttons != 0) return queue_state(state);
    // A turn of the wheel belongs to the place where it was done.
    if (Step* last = mergeable_step(); last && last->wheel_turned) last->may_merge = false;
    queue_mergeable_state(state, false);
}

void turn_wheel(const InputEvent& event) {
    move_mouse(event);
    MouseState state = input.newest;
    state.wheel += event.wheel;
    if (state == input.newest) return;
    if (state.buttons != 0) return queue_state(state);
    queue_mergeable_state(state, true);
}

void change_button(const InputEvent& event, bool down) {
    if (event.button != 1 && event.button != 2) return;
    MouseState state = input.newest;
    state.x = event.x;
    state.y = event.y;
    state.buttons = down ? state.buttons | event.button : state.buttons & ~event.button;
    if (state.buttons == input.newest.buttons) return move_mouse(event);
    queue_state(state);
}

// The window no longer hears what is let go: nothing may stay stuck.
void let_everything_go() {
    input.held.clear();
    MouseState state = input.newest;
    state.buttons = 0;
    if (state != input.newest) queue_state(state);
}

bool is_close_request(const Step& step) { return step.key == key::close_window; }

void queue_close_request() {
    ++input.close_requests;
    if (!std::ranges::any_of(input.queue, is_close_request)) queue_key(key::close_window, {}, Key::other);
}

void queue_dropped_file(const std::string& path) {
    queue_key(key::dropped, {}, Key::other);
    input.queue.back().dropped = path;
}

void take_key_event(const InputEvent& event) {
    if (event.kind == InputEvent::Kind::key_down) input.held.insert(event.key);
    for (const std::string& key : key_strings(event))
        queue_key(key, event.modifiers, event.key);
}

void take_event(const InputEvent& event) {
    switch (event.kind) {
    case InputEvent::Kind::key_down:
    case InputEvent::Kind::text: return take_key_event(event);
    case InputEvent::Kind::key_up: input.held.erase(event.key); return;
    case InputEvent::Kind::mouse_move: return move_mouse(event);
    case InputEvent::Kind::button_down: return change_button(event, true);
    case InputEvent::Kind::button_up: return change_button(event, false);
    case InputEvent::Kind::wheel: return turn_wheel(event);
    case InputEvent::Kind::close_request: return queue_close_request();
    case InputEvent::Kind::focus_lost: return let_everything_go();
    case InputEvent::Kind::file_dropped: return queue_dropped_file(event.text);
    }
}

// Takes over what has happened. False when that was nothing.
bool poll_events() {
    if (!backend()) return false;
    std::vector<InputEvent> events;
    backend()->poll(events);
    for (const InputEvent& event : events)
        take_event(event);
    if (!events.empty()) input.fruitless = 0;
    return !events.empty();
}

// Until the alarm, rounded up; -1 when none is set.
int milliseconds_to_wait() {
    if (!input.alarm) return -1;
    const double left = (*input.alarm - timer()) * 1000;
    return static_cast<int>(std::ceil(std::clamp(left, 0.0, 1e6)));
}

void wait_for_events() {
    if (!backend()) return;
    show_screen();
    backend()->wait(milliseconds_to_wait());
    if (input.alarm && timer() >= *input.alarm) input.alarm.reset();
    poll_events();
}

// Before every read: when nothing is left to read, looks for more; when there was nothing for a while, waits for it.
void refill() {
    if (!input.queue.empty() || poll_events()) return;
    if (input.fruitless < patience)
        ++input.fruitless;
    else
        wait_for_events();
}

// The pointer after a step, and the press that it begins, goes on with or ends.
void move_pointer(const MouseState& state) {
    Pointer& pointer = input.pointer;
    const int before = pointer.state.buttons;
    if (before == 0) pointer.owner = state.y >= menu_top ? Owner::menu_bar : Owner::work_area;
    if ((state.buttons & ~before & left_button) != 0) pointer.pressed_at = state.at();
    if ((state.buttons & left_button) == 0) pointer.pressed_at = outside;
    pointer.state = state;
}

void take_key(const Step& step) {
    input.key_was_read = true;
    input.with_key = step.qualifiers;
    input.cause = step.cause;
}

// Takes the next step of the queue, if there is one.
void take_step() {
    refill();
    input.key_was_read = false;
    if (input.queue.empty()) return;
    const Step step = std::move(input.queue.front());
    input.queue.pop_front();
    input.taken = Taken{step, input.pointer, input.told};
    if (step.is_key())
        take_key(step);
    else
        move_pointer(step.state);
}

Qualifiers current_qualifiers() { return input.key_was_read ? input.with_key : qualifiers_now(); }

// Whether a key that bears a scancode of its own is down, or is what this pass has read.
bool down_or_read(Key one, Key other) {
    return held(one) || held(other) || (input.key_was_read && (input.cause == one || input.cause == other));
}

} // namespace

Input read_input() {
    input.taken.reset();
    const int bar_buttons_before = bar_mouse().buttons;
    Input result;
    result.before = input.told;
    if (mouse() == input.told)
        take_step();
    else
        input.key_was_read = false;
    if (input.taken) {
        result.key = input.taken->step.key;
        result.dropped = input.taken->step.dropped;
    }
    result.mouse = input.told = mouse();
    result.qualifiers = current_qualifiers();
    result.pressed_at = input.pointer.pressed_at;
    result.menu_bar_pressed = (bar_mouse().buttons & ~bar_buttons_before) != 0;
    return result;
}

void unread_input() {
    if (!input.taken) return;
    input.queue.push_front(input.taken->step);
    input.pointer = input.taken->pointer;
    input.told = input.taken->told;
    input.key_was_read = false;
    input.taken.reset();
}

void do_next(std::span<const InputEvent> events) {
    for (const InputEvent& event : events)
        take_event(event);
}

MouseState mouse() { return input.pointer.seen_by(Owner::work_area); }

MouseState bar_mouse() { return input.pointer.seen_by(Owner::menu_bar); }

void spend_press() {
    if (input.pointer.state.buttons != 0) input.pointer.owner = Owner::nobody;
}

InputScope::InputScope(Start start) : around_(input.told) {
    input.told = mouse();
    if (start == Start::anew) input.told.x = input.told.y = outside.x;
}

InputScope::~InputScope() { input.told = around_; }

bool key_held(int scancode) {
    switch (scancode) {
    case scancode::control: return current_qualifiers().control;
    case scancode::shift_left: return current_qualifiers().shift_left;
    case scancode::shift_right: return current_qualifiers().shift_right;
    // The keypad's 4 and 6 bear the same scancodes.
    case scancode::cursor_left: return down_or_read(Key::left, Key::keypad_4);
    case scancode::cursor_right: return down_or_read(Key::right, Key::keypad_6);
    default: return false;
    }
}

bool wait_for_release() {
    input.taken.reset(); // whoever waits has acted on it
    auto next = input.queue.begin();
    while (input.pointer.state.buttons != 0) {
        if (next == input.queue.end()) {
            if (!backend()) return false;
            const auto seen = input.queue.size();
            if (!poll_events()) wait_for_events();
            next = input.queue.begin() + static_cast<std::ptrdiff_t>(seen);
        } else if (is_close_request(*next)) {
            spend_press();
            return false;
        } else if (next->is_key()) {
            ++next;
        } else {
            move_pointer(next->state);
            next = input.queue.erase(next);
        }
    }
    return true;
}

BusyInput::BusyInput() : seen_(input.queue.size()), close_requests_(input.close_requests) {}

bool BusyInput::go_on() {
    if (!backend()) return true;
    show_screen();
    backend()->wait(0);
    poll_events();
    const auto first_new = input.queue.begin() + static_cast<std::ptrdiff_t>(std::min(seen_, input.queue.size()));
    const auto escape =
        std::find_if(first_new, input.queue.end(), [](const Step& step) { return step.key == key::escape; });
    const bool escaped = escape != input.queue.end();
    if (escaped) input.queue.erase(escape);
    seen_ = input.queue.size();
    return !escaped && input.close_requests == close_requests_;
}

double timer() { return backend() ? backend()->seconds() : 0; }

void set_alarm(std::optional<double> at) { input.alarm = at; }

void alarm_no_later_than(double at) { input.alarm = std::min(input.alarm.value_or(at), at); }

void reset_input() { input = InputState{}; }

namespace {
const ResetWithProgram registered(reset_input);
}
