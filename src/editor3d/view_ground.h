// What lies under the model in a view: the grid, and the car's collision box and wheel positions from the parameters.
#pragma once

#include "drawing/canvas.h"
#include "editor3d/view_mapping.h"
#include "editor3d/wireframe.h"

#include <cstdint>

namespace ground_colour {
constexpr std::uint32_t origin = 0xFFFAFAFA;
constexpr std::uint32_t axis = 0xFF787878;
constexpr std::uint32_t unit = 0xFF464646;
constexpr std::uint32_t half_unit = 0xFF3C2828;
constexpr std::uint32_t physical_data = 0xFFFA7800;
} // namespace ground_colour

// Ten by ten model units around the origin, a line every half unit.
void draw_grid(Canvas& canvas, const ViewMapping& mapping);

// From PAR. From the top: the collision box, the circle of its radius, a dot for each wheel; otherwise the collision
// box as it stands on the ground.
void draw_physical_data(Canvas& canvas, Plane plane, const ViewMapping& mapping);
