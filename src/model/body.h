// The body of a car model and the bounding box around it.
#pragma once

#include "model/shape.h"

// Moves the box and the body by (dx, dy, dz), and with them the vertices 8 .. 19 unless primitive 0 is a wheel, and 20
// .. 31 unless primitive 2 is one: wheels stay where they are.
void move_body(SHAPEMODEL& model, double dx, double dy, double dz);

// Sets vertices 0 .. 7 to the box around all others. It stands on height 0. Coordinates that are not a number do not
// count.
void fit_bounding_box(SHAPEMODEL& model);
