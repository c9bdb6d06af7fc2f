// Models built by hand.
#pragma once

#include "model/shape_parts.h"
#include "model/wheels.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

inline std::uint16_t add_vertex(SHAPEMODEL& model, double x, double y, double z) {
    model.verts.at(model.nverts) = {x, y, z};
    return model.nverts++;
}

inline SHAPEPRIM& add_primitive(SHAPEMODEL& model, int type, const std::vector<int>& vertices,
                                std::uint16_t material = 0) {
    SHAPEPRIM& primitive = model.prims.at(model.nprims++);
    primitive.type = static_cast<std::uint8_t>(type);
    std::ranges::transform(vertices, primitive.vertex.begin(), [](int v) { return static_cast<std::uint16_t>(v); });
    primitive.material.fill(material);
    return primitive;
}

// The box, all at the origin, and the four standard wheels: what every car model begins with.
inline SHAPEMODEL model_with_wheels() {
    SHAPEMODEL model;
    generate_wheels(model);
    return model;
}

// Points, at the place of the wheels: the first four primitives, which the shaded view never shows.
inline void add_first_four(SHAPEMODEL& model) {
    for (int i = 0; i < 4; ++i)
        add_primitive(model, primitive_type::point, {0});
}

// A triangle behind what the model holds, its corners one after the other.
inline SHAPEPRIM& add_triangle(SHAPEMODEL& model, const std::array<SHAPEVERTEX, 3>& corners,
                               std::uint16_t material = 0) {
    const int first = model.nverts;
    for (const SHAPEVERTEX& corner : corners)
        add_vertex(model, corner.x, corner.y, corner.z);
    return add_primitive(model, primitive_type::triangle, {first, first + 1, first + 2}, material);
}

inline const SHAPEVERTEX& wheel_point(const SHAPEMODEL& model, std::size_t wheel, std::size_t point) {
    return model.verts[model.prims[wheel].vertex[point]];
}
