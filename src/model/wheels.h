// The wheels of a car model.
//
// A wheel is a primitive of type 12. Of its six vertices P0 is the centre of the face with the smaller x, P1 is P0
// moved along y by the first radius (the tyre), P2 is P0 moved along z by the second one (the rim); P3, P4 and P5 are
// the same on the face with the larger x. All lengths are model units. A wheel with an index past the vertices is
// passed over.
#pragma once

#include "model/shape.h"

#include <cstddef>

// Moves the wheels in mirror image: x and y of a wheel on the positive side by +dx and +dy, on the negative side by -dx
// and -dy, exactly on the axis not at all; z always by +dz. The side is that of P0 before the wheel moves.
void move_wheels(SHAPEMODEL& model, double dx, double dy, double dz);

// What a wheel grows by.
struct WheelGrowth {
    double width = 0, radius1 = 0, radius2 = 0;
};
// Builds a wheel anew with its width and radii changed by as much, P0's inner x, y and z staying where they are.
void resize_wheel(SHAPEMODEL& model, std::size_t primitive, const WheelGrowth& growth);
// The same for every wheel of the model.
void resize_wheels(SHAPEMODEL& model, double dwidth, double dradius1, double dradius2);

// Makes one of the primitives 0 .. 3 a wheel of no size at a place, the middle of its inner face. The counts stay.
void make_wheel(SHAPEMODEL& model, std::size_t wheel, double x, double y, double z);
// Makes primitives 0 .. 3 the four standard wheels with vertices 8 .. 31, and raises the counts to hold them.
void generate_wheels(SHAPEMODEL& model);
