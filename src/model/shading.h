// Shading a body by where its faces look.
#pragma once

#include "model/shape.h"

#include <cstddef>
#include <cstdint>

// The material of a polygon that looks in the direction of the normal (x, y, z): 200 (upwards, sideways and where there
// is no direction) to 203 (downwards).
std::uint16_t shade_of(double x, double y, double z);

// Gives every polygon behind the wheels the shade of its first three corners, in this paint job only. A polygon with an
// index past the vertices keeps its material.
void shade_by_facing(SHAPEMODEL& model, std::size_t paint_job);
