// The 3D editor's screen: the four views, the info panel, and the keys that move, paint and generate.
#pragma once

#include "editor3d/arrow_keys.h"
#include "widgets/screen_loop.h"

#include <bitset>
#include <vector>

struct EditorScreen : ScreenState {
    int hovered = 0;      // the view under the pointer, 0 for none
    int last_hovered = 0; // the one that it was found in last, 0 for none yet: its caption is the highlighted one
    double x = 0, y = 0;  // the pointer in the hovered view, in model units
    MoveMode mode = MoveMode::car;
    double snap = 0.1;    // the step of every move, in model units
    std::bitset<4> views; // to be redrawn, the first view at bit 0
    bool panel = false;   // the info panel is to be redrawn
};
extern const Screen<EditorScreen> editor_screen;

// Runs until the person picks another screen in the menu bar (CURMENU has changed), or presses Escape or closes the
// window (CURMENU is 255). Begins with slot 0; paint job, turn and zooms are as the last visit left them.
void EDIT3D();
std::vector<KeyHelpTable> editor_screen_keys();
