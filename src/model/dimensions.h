// The words of the parameter block that follow from the in-game model: dimensions and wheel positions.
//
// All are rounded to the nearest whole number, halves to the even one, and stored as their low 16 bits: negative ones
// modulo 65536, 0 for what is not a number.
#pragma once

#include "model/parameters.h"
#include "model/shape.h"

// Of the box that a crash is measured by, in the parameter block's units, not rounded.
struct CollisionBox {
    double half_width = 0, height = 0, half_length = 0, radius = 0;
};
CollisionBox collision_box(const SHAPEMODEL& model);

// Half-width, height, half-length and radius of the collision box, from all vertices of the model.
void store_dimensions(const SHAPEMODEL& model, ParameterBlock& par);

// Across and along of the four wheels, from primitives 0 and 1 of the model; the other two mirror them front to back.
// Where one of the two is no wheel, or has an index past the vertices, nothing is stored and the result is false.
bool store_wheel_positions(const SHAPEMODEL& model, ParameterBlock& par);
