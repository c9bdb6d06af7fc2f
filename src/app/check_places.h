// The way to where a finding is mended: the screen, and there what a person would do.
#pragma once

#include "model/finding.h"
#include "window/input_event.h"

#include <cstdint>
#include <vector>

struct WayToPlace {
    std::uint8_t screen = 0;          // its number (widgets/menu_bar.h)
    std::vector<InputEvent> events{}; // keys and clicks after the entry
};
WayToPlace way_to(const CheckPlace& place);

// Leaves every screen that runs and takes that way, once the button that is down is released; unless the window is
// asked to close before.
void go_to_place(const CheckPlace& place);
