// Mouse, keys and the clock, read without waiting.
//
// What a person does is one queue, in the order in which it was done. A loop reads once a pass: read_input() takes one
// step of the queue, the next state of the mouse or the next key, so that a pass acts on one thing that was done. So no
// click, key or stroke is lost or overtaken by another, however long a redraw takes. While a button is down every
// position that was reported is a state of its own; otherwise only the latest counts.
//
// What a button does belongs to where it went down. A press that began in the work area does nothing on the menu bar,
// one that began on the bar nothing in the work area, and one that is spent nothing anywhere, until no button is down:
// what a loop reads has only the buttons that act in the work area, and the menu bar asks for its own.
//
// When nothing at all has happened for a moment, reading waits inside the platform for the next event, without a limit
// unless an alarm is set; nothing else in the program waits.
#pragma once

#include "drawing/canvas.h"
#include "window/input_event.h"
#include "window/key_strings.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

struct MouseState {
    int x = -1, y = -1; // -1, -1 outside the picture
    int wheel = 0;      // grows when turned away from the person
    int buttons = 0;    // 1 left, 2 right, added

    Point at() const { return {x, y}; }
    bool operator==(const MouseState&) const = default;
};

// The keys that qualify others.
struct Qualifiers {
    bool control = false, shift_left = false, shift_right = false;

    bool shift() const { return shift_left || shift_right; }
    bool operator==(const Qualifiers&) const = default;
};

// One thing that was done, or none: then the mouse is as before and there is no key.
struct Input {
    MouseState mouse;         // as it is now
    MouseState before;        // as the loop that reads saw it last
    std::string key;          // "" when none was pressed; one character, or character 255 and the scancode's character
    Qualifiers qualifiers;    // held with the key, or now when there is none
    std::string dropped{};    // the path of a file that was dropped on the window; the key then says so
    Point pressed_at{-1, -1}; // where the left button that is down went down
    bool menu_bar_pressed = false; // a button went down on the menu bar, whose own it is

    bool mouse_changed() const { return mouse != before; }
    bool moved() const { return mouse.at() != before.at(); }
    bool buttons_changed() const { return mouse.buttons != before.buttons; }
    // Whether a button went down, on the menu bar or elsewhere.
    bool pressed() const { return menu_bar_pressed || (mouse.buttons & ~before.buttons) != 0; }
    bool left_pressed() const { return (mouse.buttons & ~before.buttons & 1) != 0; }
};

// What comes next. When the mouse has changed since this loop saw it, in a loop inside it or before it began, that
// comes first.
Input read_input();
// What was read last is read again next, as after this loop's end by the loop around it.
void unread_input();

// What is done here and now, by the program for the person: it is read behind what is unread.
void do_next(std::span<const InputEvent> events);

// The mouse that the last step led to, with the buttons that act in the work area, and with those that act on the menu
// bar. Widgets use these: in one pass all see the same.
MouseState mouse();
MouseState bar_mouse();
// From now on the buttons that are down do nothing until none is.
void spend_press();

// A loop that reads, for as long as it lives: it remembers how this loop saw the mouse. The loop around it sees what
// changed meanwhile as a change of its own.
class InputScope {
public:
    enum class Start : std::uint8_t {
        here, // the mouse as it is now is known
        anew  // it is the first thing to be read: as one that came from outside, with wheel and buttons as they are
    };
    explicit InputScope(Start start);
    ~InputScope();
    InputScope(const InputScope&) = delete;
    InputScope& operator=(const InputScope&) = delete;

private:
    const MouseState around_;
};

// True while the key is down: 29 Control (either), 42 and 54 the Shift keys, 75 cursor left, 77 cursor right. A cursor
// key also counts as down in the pass that reads it, so that a tap which is over by then is seen once. After
// read_input() has returned a key, Control and the Shift keys are as they were when that key was pressed, until the
// next call: a combination typed while the program was busy stays a combination.
bool key_held(int scancode);

namespace scancode {
constexpr int control = 29, shift_left = 42, shift_right = 54, cursor_left = 75, cursor_right = 77;
}

// The one wait for a button: steps the mouse on, past keys, which stay unread and are acted on afterwards, until no
// button is down. False when the window is asked to close while one is; that stays unread behind the keys before it,
// and the press is spent. Without a backend: false.
bool wait_for_release();

// The window while the program waits for something that is not done in it, for as long as this lives: go_on() shows
// what was drawn and takes over what is done meanwhile, which stays unread.
class BusyInput {
public:
    BusyInput();
    // False once Escape is pressed, which is used up by this, or the window is asked to close, which is not.
    bool go_on();

private:
    std::size_t seen_; // steps of the queue that are no business of this one
    int close_requests_;
};

// Seconds since an arbitrary start.
double timer();
// The timer() at which reading returns even if nothing has happened, for what changes with time; it is
// over then. None: never.
void set_alarm(std::optional<double> at);
// Another one beside it: whichever is the earlier.
void alarm_no_later_than(double at);

// Nothing read, nothing held, mouse outside.
void reset_input();
