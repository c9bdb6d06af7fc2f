// Wireframes: a model's primitives as lines in one of the three planes that the editor looks at.
#pragma once

#include "drawing/canvas.h"
#include "editor3d/view_mapping.h"
#include "model/shape.h"

#include <cstdint>

constexpr std::uint32_t wireframe_colour = 0xFF00FA00;
constexpr std::uint32_t marked_wireframe_colour = 0xFFFA00FA;

enum class Plane : std::uint8_t { top, front, side };

// Turns every vertex so that its x is the plane's axis across and its y the plane's axis up: x and y as seen from the
// top, x and z from the front, y and z from the side.
void turn_onto_plane(SHAPEMODEL& model, Plane plane);

// Draws all primitives of a model that was turned onto the plane, the marked ones in their own colour: lines and
// polygons by their sides, spheres as circles, wheels as boxes, from the side as two circles. A primitive with an index
// past the vertices is left out, and so is a line to a vertex that is nowhere.
void draw_wireframe(Canvas& canvas, const SHAPEMODEL& turned, Plane plane, const ViewMapping& mapping);
