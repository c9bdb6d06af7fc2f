// The info panel of the 3D editor: what is shown, how much of it there is, and what the arrow keys do.
#pragma once

#include "editor3d/arrow_keys.h"

// Draws the frame and the values, on fresh background where the values stand.
void draw_info_panel(MoveMode mode, double snap);
