// The loop inside a screen's step, for what takes all input until it is done: a value that is typed, a panel.
//
// It sees one input a pass, mouse and keys alike. The window's close request ends it and stays unread, so that every
// loop around it ends in turn; a file that is dropped on the window does the same. Waiting for a button's release is
// wait_for_release() (window/input.h).
#pragma once

#include "widgets/key_scope.h"
#include "window/input.h"

#include <cstdint>
#include <functional>

// What became of an input.
enum class Answer : std::uint8_t {
    nothing,  // it changed nothing that is shown
    changed,  // draw again
    done,     // the loop ends
    hand_back // the loop ends, and the input is the next that the loop around it reads
};

// Draws, then hands on one input after another, drawing again whenever one changed something, until one is answered
// with an end. A drawing is one frame. False when the window's close request ended it.
//
// With `keys`, the keys that hold everywhere act here as well (screen_loop.h), and may leave the screen: then it ends
// as by the close request. Without, every key is its own.
bool run_nested(const std::function<void()>& draw, const std::function<Answer(const Input&)>& answer,
                const KeyScope::Tables& keys = {});
// Whether one runs: the keys of the screen around it are out of reach.
bool nested_loop_runs();
