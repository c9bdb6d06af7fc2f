// The Physical parameters screen: the edit targets in their sections, the torque graph and the description text.
#pragma once

#include "params/torque_graph.h"
#include "window/input.h"

#include <cstdint>
#include <span>
#include <string>

// What a button that is held may do, by where it went down.
enum class Press : std::uint8_t {
    plain,  // whatever the pointer reaches reacts
    stroke, // the left button went down on the curve: opens nothing
    spent   // it ended an edit in the field that was edited: nothing reacts until no button is down
};

struct ParameterScreen {
    bool redraw = true;     // the graph, and the rows that changed
    bool repaint = true;    // a redraw takes in everything
    bool mysterious = true; // the right-hand column: "Mysterious", or "RPM"
    bool leave = false;     // the program ends
    TorqueGraph graph;
    MouseState last{0, 0, 0, 0}, now{0, 0, 0, 0};
    Press press = Press::plain;
    bool mouse_waits = false;  // an edit has ended: the mouse as it left it is still to be handled
    bool pressed_anew = false; // and a press that ended it, as one that has just gone down
};

// One row feeds the dispatch and the test that every key does something.
struct ParameterKey {
    std::string key, or_key; // or_key: another key that does the same, or empty
    const char* effect;
    void (*action)(ParameterScreen&);
};
std::span<const ParameterKey> parameter_keys();

struct RowRange {
    int first, last;
};
// The rows of the parameter table that the screen shows.
std::span<const RowRange> shown_rows(const ParameterScreen& state);

// The graph and the rows that changed if a redraw is flagged; everything when a repaint is, too.
void draw(ParameterScreen& state);
// A mouse that differs from the last pass, and a key; "" is none.
void on_mouse(ParameterScreen& state);
void on_key(ParameterScreen& state, const std::string& typed);

// Runs until the person picks another screen in the menu bar (CURMENU has changed), or presses Escape or closes the
// window (CURMENU is 255).
void EDITPARAMS();
