// The cockpit put together from its bitmaps, as the game does it: what hides what is laid down by the order, a mask
// clears the place for its owner.
#pragma once

#include "dash/view.h"

#include <string_view>

// A bitmap at its place, in the pixels of the view; nothing when it is not there or has no picture.
void draw_bitmap(const CockpitView& view, int index);
void draw_bitmap(const CockpitView& view, std::string_view id);

// Roof, dashboard and its top, without wheel and instruments.
void draw_body(const CockpitView& view);

enum class Steering { left = -1, straight = 0, right = 1 };
// The body with the wheel and the instruments as they are when steering.
void draw_cockpit(const CockpitView& view, Steering steering);
// The dot that moves along the rim of the wheel; none while its markers are not laid.
void draw_steering_dot(const CockpitView& view, Steering steering);
