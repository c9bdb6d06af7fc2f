// Where a point of a view's plane lies on the screen.
#pragma once

// The first coordinate of the plane runs to the right, the second one up.
struct ViewMapping {
    double origin_x = 0, origin_y = 0; // the screen point of the model's origin, in pixels
    double zoom = 1;                   // pixels per model unit

    double x(double across) const { return origin_x + across * zoom; }
    double y(double up) const { return origin_y - up * zoom; }
};
