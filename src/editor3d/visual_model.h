// The model as the 3D view draws it: lines, triangles and spheres, turned towards the eye, what faces away removed, the
// far pieces first. Three steps from a shape model to that order; where it lands on the screen is the views' business.
//
// After the turn x runs across the screen, z up it, and y towards the eye.
#pragma once

#include "model/car.h"

#include <cstdint>

// How far the eye stands from the origin, along y, in model units.
constexpr double eye_distance = 5;

// Fills `visual` with all vertices of a model and with the pieces of its primitives from the fifth on, with the
// materials of a paint job. A polygon becomes triangles around its first corner; points, wheels and unknown kinds have
// no piece. A primitive with an index past the vertices is left out, and so are the pieces that `visual` has no room
// for.
void simplify_model(const SHAPEMODEL& model, int paint_job, VISUALMODEL& visual);

// Turns every vertex about the vertical axis by `yaw`, then about the horizontal one by `pitch`, both in radians. With
// `perspective` x and z grow with the nearness to the eye; a vertex exactly beside the eye keeps them.
void rotate_visual_model(VISUALMODEL& visual, bool perspective, double yaw, double pitch);

// Takes the triangles that face away out of the count, then orders the pieces that remain by their depth, the far ones
// first; equal depths keep their order.
void sort_visual_primitives(VISUALMODEL& visual);

// Whether a vertex that was turned lies in front of the eye. A piece of which one does not cannot be drawn in
// perspective.
inline bool in_front_of_eye(const VISUALVERTEX& vertex) { return vertex.y < eye_distance; }

// The same on the tables: from slot `model` of CAR, 0 .. 4, into VCAR, and on VCAR in place.
void SIMPLIFYMODEL(std::uint8_t model, std::uint8_t paint_job);
void ROTATEVISUALMODEL(std::uint8_t perspective, double yaw, double pitch);
void SORTVISUALPRIMITIVES();
