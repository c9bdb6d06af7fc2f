// Mouse, keys and the clock, read without waiting.
//
// What a person does is one queue, in the order in which it was done. A screen reads once a pass: read_mouse() goes one
// step on, to the next state of the mouse that is older than the next unread key; read_key() takes the next key if no
// unread state of the mouse is older and read_mouse() has not just gone a step on, so that a pass acts on one thing
// that was done. So no click, key or stroke is lost or overtaken by another, however long a redraw takes. While a
// button is down every position that was reported is a state of its own; otherwise only the latest counts.
//
// When nothing at all has happened for a moment, reading waits inside the platform for the next event, for at most
// 250 ms; nothing else in the program waits.
#pragma once

#include "window/key_strings.h"

#include <cstdint>
#include <string>

struct MouseState {
    int x = -1, y = -1; // -1, -1 outside the picture
    int wheel = 0;      // grows when turned away from the person
    int buttons = 0;    // 1 left, 2 right, added

    bool operator==(const MouseState&) const = default;
};

// One step on in the queue; the state that it leads to.
MouseState read_mouse();
// The state that the last step led to. Widgets use this: in one pass all see the same.
const MouseState& mouse();
// The next key, "" when there is none. One character, or character 255 and the scancode's character.
std::string read_key();

// Puts a key back as the next one to be read: a loop inside a screen hands the close request on in this way.
void put_key_back(const std::string& key);

// True while the key is down: 29 Control (either), 42 and 54 the Shift keys, 75 cursor left, 77 cursor right. After
// read_key() has returned a key, Control and the Shift keys are as they were when that key was pressed, until the next
// call of read_key(): a combination typed while the program was busy stays a combination.
bool key_held(int scancode);

namespace scancode {
constexpr int control = 29, shift_left = 42, shift_right = 54, cursor_left = 75, cursor_right = 77;
}

// Steps the mouse on, past unread keys (which stay), until no button is down or the window is asked to close.
void wait_until_buttons_released();
// Whether an unread close request waits among the keys.
bool close_requested();

// Seconds since an arbitrary start.
double timer();

// Nothing read, nothing held, mouse outside.
void reset_input();
