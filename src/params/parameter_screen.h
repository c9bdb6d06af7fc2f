// The Physical parameters screen: the edit targets in their sections, the torque graph and the description text.
#pragma once

#include "params/torque_graph.h"
#include "widgets/screen_loop.h"

#include <span>
#include <vector>

struct ParameterScreen : ScreenState {
    bool redraw = true;        // the graph, and the rows that changed
    bool overdrawn = false;    // the graph reaches over other sections: the next redraw takes in everything
    bool mysterious = true;    // the right-hand column: "Mysterious", or "RPM"
    bool point_chosen = false; // a point of the curve was selected in this visit
    TorqueGraph graph;
};
extern const Screen<ParameterScreen> parameter_screen;

struct RowRange {
    int first, last;
};
// The rows of the parameter table that the screen shows.
std::span<const RowRange> shown_rows(const ParameterScreen& state);

// Runs until the person picks another screen in the menu bar (CURMENU has changed), or presses Escape or closes the
// window (CURMENU is 255).
void EDITPARAMS();
std::vector<KeyHelpTable> parameter_screen_keys();
