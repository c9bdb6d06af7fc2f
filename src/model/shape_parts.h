// What of a model's tables is in use, and where the parts of a car model stand in them.
#pragma once

#include "model/shape.h"

#include <cstddef>
#include <cstdint>
#include <span>

// The order that every car model keeps (the models of an explosion have neither box nor wheels).
namespace car_layout {
constexpr std::size_t box_vertices = 8; // vertices 0 .. 7: the bounding box
constexpr std::size_t wheels = 4;       // primitives 0 .. 3
constexpr std::size_t wheel_vertices = 6;
constexpr std::size_t first_wheel_vertex = box_vertices;
constexpr std::size_t first_body_vertex = first_wheel_vertex + wheels * wheel_vertices; // 32
constexpr std::size_t first_body_primitive = wheels;
} // namespace car_layout

// The vertices and primitives in use. A count above the table's size counts as the size.
std::span<SHAPEVERTEX> vertices_in_use(SHAPEMODEL& model);
std::span<const SHAPEVERTEX> vertices_in_use(const SHAPEMODEL& model);
std::span<SHAPEPRIM> primitives_in_use(SHAPEMODEL& model);
std::span<const SHAPEPRIM> primitives_in_use(const SHAPEMODEL& model);
// The primitives behind the wheels.
std::span<SHAPEPRIM> body_primitives(SHAPEMODEL& model);
std::span<const SHAPEPRIM> body_primitives(const SHAPEMODEL& model);

// A polygon of 3 to 10 corners.
bool is_polygon(const SHAPEPRIM& primitive);
// The vertex indices that the primitive's type uses.
std::span<const std::uint16_t> corners_of(const SHAPEPRIM& primitive);
// Whether all of them are vertices in use. Whoever looks up a primitive's vertices asks this first and leaves out the
// primitive otherwise.
bool has_its_vertices(const SHAPEMODEL& model, const SHAPEPRIM& primitive);
