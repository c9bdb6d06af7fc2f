// The shape of a polygon in space: its area, whether it is flat, whether it is convex.
#pragma once

#include "model/shape.h"

struct PolygonShape {
    double area = 0;
    double off_plane = 0; // how far the farthest corner lies from the plane of the mean normal
    double inward = 0;    // how far the farthest corner lies on the wrong side of an edge
    double extent = 0;    // the longest distance from the first corner
};

// Of a polygon that has its vertices. Without an area only that is told.
PolygonShape polygon_shape(const SHAPEMODEL& model, const SHAPEPRIM& polygon);
