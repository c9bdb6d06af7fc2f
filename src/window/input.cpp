#include "window/input.h"

#include "window/backend.h"
#include "window/key_translation.h"
#include "window/window.h"

#include <algorithm>
#include <deque>
#include <set>
#include <utility>
#include <vector>

namespace {

// Fruitless looks before reading waits: three passes of a screen that reads the mouse and a key in each.
constexpr int patience = 6;
constexpr int longest_wait = 250; // milliseconds

// The keys that qualify others.
struct Qualifiers {
    bool control = false, shift_left = false, shift_right = false;
};

// One step of the queue: a key, or a state of the mouse when the key is empty.
struct Step {
    std::string key;
    Qualifiers qualifiers; // held with the key
    MouseState state;
    bool may_merge = false; // a mere move or turn of the wheel without a button
    bool wheel_turned = false;

    bool is_key() const { return !key.empty(); }
};

struct InputState {
    std::deque<Step> queue;
    MouseState current; // what the reader was told last
    MouseState newest;  // at the end of the queue
    std::set<Key> held;
    Qualifiers with_key; // of the key read last
    bool key_was_read = false;
    bool mouse_stepped = false; // by the last read_mouse(), and no key asked for since
    int fruitless = 0;
};

InputState input;

bool held(Key key) { return input.held.contains(key); }

Qualifiers qualifiers_now() {
    return {held(Key::control_left) || held(Key::control_right), held(Key::shift_left), held(Key::shift_right)};
}

bool is_mouse_step(const Step& step) { return !step.is_key(); }

void queue_key(const std::string& key, const Modifiers& modifiers) {
    Qualifiers with = qualifiers_now();
    with.control = with.control || modifiers.control;
    Step step;
    step.key = key;
    step.qualifiers = with;
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

void queue_close_request() {
    if (!close_requested()) queue_key(key::close_window, {});
}

void take_key_event(const InputEvent& event) {
    if (event.kind == InputEvent::Kind::key_down) input.held.insert(event.key);
    for (const std::string& key : key_strings(event))
        queue_key(key, event.modifiers);
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

void wait_for_events() {
    if (!backend()) return;
    show_screen();
    backend()->wait(longest_wait);
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

// Takes the next state of the mouse, past keys that nobody has read yet. False when there is none.
bool step_mouse_past_keys() {
    const auto next = std::find_if(input.queue.begin(), input.queue.end(), is_mouse_step);
    if (next == input.queue.end()) return false;
    input.current = next->state;
    input.queue.erase(next);
    return true;
}

} // namespace

MouseState read_mouse() {
    refill();
    const bool mouse_is_next = !input.queue.empty() && is_mouse_step(input.queue.front());
    input.mouse_stepped = mouse_is_next && step_mouse_past_keys();
    return input.current;
}

const MouseState& mouse() { return input.current; }

std::string read_key() {
    refill();
    const bool mouse_first = std::exchange(input.mouse_stepped, false);
    input.key_was_read = !mouse_first && !input.queue.empty() && input.queue.front().is_key();
    if (!input.key_was_read) return {};
    const Step step = std::move(input.queue.front());
    input.queue.pop_front();
    input.with_key = step.qualifiers;
    return step.key;
}

void put_key_back(const std::string& key) {
    if (key.empty()) return;
    Step step;
    step.key = key;
    step.qualifiers = input.key_was_read ? input.with_key : qualifiers_now();
    input.queue.push_front(step);
}

bool key_held(int scancode) {
    const Qualifiers qualifiers = input.key_was_read ? input.with_key : qualifiers_now();
    switch (scancode) {
    case scancode::control: return qualifiers.control;
    case scancode::shift_left: return qualifiers.shift_left;
    case scancode::shift_right: return qualifiers.shift_right;
    // The keypad's 4 and 6 bear the same scancodes.
    case scancode::cursor_left: return held(Key::left) || held(Key::keypad_4);
    case scancode::cursor_right: return held(Key::right) || held(Key::keypad_6);
    default: return false;
    }
}

void wait_until_buttons_released() {
    input.mouse_stepped = false; // whoever waits has acted on the step
    while (input.current.buttons != 0) {
        if (step_mouse_past_keys()) continue;
        if (close_requested() || !backend()) return;
        if (!poll_events()) wait_for_events();
    }
}

bool close_requested() {
    return std::any_of(input.queue.begin(), input.queue.end(),
                       [](const Step& step) { return step.key == key::close_window; });
}

double timer() { return backend() ? backend()->seconds() : 0; }

void reset_input() { input = InputState{}; }
