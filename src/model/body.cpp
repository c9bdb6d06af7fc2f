#include "model/body.h"

#include "model/shape_parts.h"

#include <algorithm>

namespace {
constexpr std::size_t second_axle = 20; // first vertex of wheels 2 and 3

bool is_wheel(const SHAPEPRIM& primitive) { return primitive.type == primitive_type::wheel; }

struct Box {
    double min_x = 0, max_x = 0, min_y = 0, max_y = 0, max_z = 0;
};

void widen(double& least, double& greatest, double value) {
    if (value < least) least = value;
    if (value > greatest) greatest = value;
}

// ODDITY box-contains-origin (kept): every bound starts from 0, so that the box stands on the road below the car's
// origin however far away the body is.
Box box_around(std::span<const SHAPEVERTEX> vertices) {
    Box box;
    for (const SHAPEVERTEX& vertex : vertices) {
        widen(box.min_x, box.max_x, vertex.x);
        widen(box.min_y, box.max_y, vertex.y);
        box.max_z = vertex.z > box.max_z ? vertex.z : box.max_z;
    }
    return box;
}
} // namespace

void move_body(SHAPEMODEL& model, double dx, double dy, double dz) {
    const auto move = [&](std::size_t first, std::size_t end) {
        for (std::size_t i = first; i < end; ++i) {
            model.verts[i].x += dx;
            model.verts[i].y += dy;
            model.verts[i].z += dz;
        }
    };
    move(0, car_layout::box_vertices);
    if (!is_wheel(model.prims[0])) move(car_layout::first_wheel_vertex, second_axle);
    if (!is_wheel(model.prims[2])) move(second_axle, car_layout::first_body_vertex);
    move(car_layout::first_body_vertex, vertices_in_use(model).size());
}

void fit_bounding_box(SHAPEMODEL& model) {
    const auto vertices = vertices_in_use(model);
    const Box box = box_around(vertices.subspan(std::min(car_layout::box_vertices, vertices.size())));
    for (std::size_t corner = 0; corner < car_layout::box_vertices; ++corner) {
        SHAPEVERTEX& vertex = model.verts[corner];
        vertex.x = corner % 2 == 0 ? box.min_x : box.max_x;
        vertex.y = corner / 2 % 2 == 0 ? box.max_y : box.min_y;
        vertex.z = corner < car_layout::box_vertices / 2 ? 0 : box.max_z;
    }
}
