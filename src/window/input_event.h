// What a person does, in words that no windowing library has: the events that a backend hands over.
#pragma once

#include <cstdint>
#include <string>

enum class Key : std::uint16_t {
    other,
    a,
    b,
    c,
    d,
    e,
    f,
    g,
    h,
    i,
    j,
    k,
    l,
    m,
    n,
    o,
    p,
    q,
    r,
    s,
    t,
    u,
    v,
    w,
    x,
    y,
    z, // by the layout's meaning
    escape,
    enter,
    backspace,
    tab,
    home,
    up,
    page_up,
    left,
    right,
    end,
    down,
    page_down,
    insert,
    delete_,
    f1,
    f2,
    f3,
    f4,
    f5,
    f6,
    f7,
    f8,
    f9,
    f10,
    f11,
    f12,
    keypad_0,
    keypad_1,
    keypad_2,
    keypad_3,
    keypad_4,
    keypad_5,
    keypad_6,
    keypad_7,
    keypad_8,
    keypad_9,
    keypad_period,
    keypad_enter,
    control_left,
    control_right,
    shift_left,
    shift_right,
};

struct Modifiers {
    bool control = false, shift = false, num_lock = false;
    bool alt = false; // the left one; the right one chooses characters on many layouts

    bool operator==(const Modifiers&) const = default;
};

struct InputEvent {
    enum class Kind : std::uint8_t {
        key_down,    // key, modifiers; repeats of a held key included
        key_up,      // key
        text,        // text (UTF-8), modifiers
        mouse_move,  // x, y in the picture's pixels; -1, -1 outside it
        button_down, // x, y, button (1 left, 2 right)
        button_up,
        wheel,         // x, y, wheel: notches, positive away from the person
        close_request, // the window's close button, a termination signal
        focus_lost,    // held keys are up from now on
        file_dropped,  // text: the path of a file or directory that was let go over the window
    };

    Kind kind = Kind::mouse_move;
    Key key = Key::other;
    Modifiers modifiers;
    std::string text;
    int x = -1, y = -1;
    int button = 0;
    int wheel = 0;
};
