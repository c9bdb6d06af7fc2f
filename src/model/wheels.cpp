#include "model/wheels.h"

#include "model/shape_parts.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr std::uint32_t always_shown = 0xFFFFFFFF;
constexpr std::uint16_t tyre_material = 38;
constexpr std::size_t painted_jobs = 16;

constexpr std::array<SHAPEVERTEX, car_layout::wheels> standard_centres = {
    {{-0.6, -1.3, 0.22}, {0.6, -1.3, 0.22}, {0.6, 1.3, 0.22}, {-0.6, 1.3, 0.22}}};
constexpr double standard_width = 0.2, standard_radius1 = 0.22, standard_radius2 = 0.18;

bool is_whole_wheel(const SHAPEMODEL& model, const SHAPEPRIM& primitive) {
    return primitive.type == primitive_type::wheel && has_its_vertices(model, primitive);
}

void for_each_wheel(SHAPEMODEL& model, auto&& change) {
    for (const SHAPEPRIM& primitive : primitives_in_use(model))
        if (is_whole_wheel(model, primitive)) change(primitive);
}

void move_away_from_axis(double& coordinate, double side, double distance) {
    if (side > 0) coordinate += distance;
    if (side < 0) coordinate -= distance;
}

// ODDITY shared-wheel-vertex-moves-twice (kept): every wheel moves its six vertices, so that one that two of them use
// moves with both.
void move_wheel(SHAPEMODEL& model, const SHAPEPRIM& wheel, double dx, double dy, double dz) {
    const SHAPEVERTEX before = model.verts[wheel.vertex[0]];
    for (const std::uint16_t index : corners_of(wheel)) {
        SHAPEVERTEX& vertex = model.verts[index];
        move_away_from_axis(vertex.x, before.x, dx);
        move_away_from_axis(vertex.y, before.y, dy);
        vertex.z += dz;
    }
}

double distance(const SHAPEVERTEX& a, const SHAPEVERTEX& b) {
    const double x = a.x - b.x, y = a.y - b.y, z = a.z - b.z;
    return std::sqrt(x * x + y * y + z * z);
}

struct WheelShape {
    double inner_x, outer_x, y, z, radius1, radius2;
};

WheelShape grown(const SHAPEMODEL& model, const SHAPEPRIM& wheel, const WheelGrowth& growth) {
    const auto point = [&](std::size_t i) -> const SHAPEVERTEX& { return model.verts[wheel.vertex[i]]; };
    const double x = point(0).x, other_x = point(3).x;
    const double width = std::abs(x - other_x) + growth.width;
    const double inner = x <= 0 ? std::max(x, other_x) : std::min(x, other_x);
    return {.inner_x = inner,
            .outer_x = x <= 0 ? inner - width : inner + width,
            .y = point(0).y,
            .z = point(0).z,
            .radius1 = distance(point(1), point(0)) + growth.radius1,
            .radius2 = distance(point(2), point(0)) + growth.radius2};
}

// The three points of a face, through the primitive's indices from `first` on.
void set_face(SHAPEMODEL& model, const SHAPEPRIM& wheel, std::size_t first, double x, const WheelShape& shape) {
    const auto set = [&](std::size_t i, double y, double z) {
        SHAPEVERTEX& vertex = model.verts[wheel.vertex[first + i]];
        vertex.x = x;
        vertex.y = y;
        vertex.z = z;
    };
    set(0, shape.y, shape.z);
    set(1, shape.y + shape.radius1, shape.z);
    set(2, shape.y, shape.z + shape.radius2);
}

// ODDITY wheel-on-axis-keeps-larger-x-first (kept): only wheels at a negative x change their faces over, so that one
// whose P0 lies exactly at 0 begins with the face of the larger x, unlike all others.
void grow(SHAPEMODEL& model, const SHAPEPRIM& wheel, const WheelGrowth& growth) {
    const bool outer_first = model.verts[wheel.vertex[0]].x < 0;
    const WheelShape shape = grown(model, wheel, growth);
    set_face(model, wheel, 0, outer_first ? shape.outer_x : shape.inner_x, shape);
    set_face(model, wheel, 3, outer_first ? shape.inner_x : shape.outer_x, shape);
}
} // namespace

void move_wheels(SHAPEMODEL& model, double dx, double dy, double dz) {
    for_each_wheel(model, [&](const SHAPEPRIM& wheel) { move_wheel(model, wheel, dx, dy, dz); });
}

void resize_wheel(SHAPEMODEL& model, std::size_t primitive, const WheelGrowth& growth) {
    const auto primitives = primitives_in_use(model);
    if (primitive < primitives.size() && is_whole_wheel(model, primitives[primitive]))
        grow(model, primitives[primitive], growth);
}

void resize_wheels(SHAPEMODEL& model, double dwidth, double dradius1, double dradius2) {
    for_each_wheel(model, [&](const SHAPEPRIM& wheel) { grow(model, wheel, {dwidth, dradius1, dradius2}); });
}

// ODDITY wheels-painted-for-sixteen (kept): the material is set for sixteen paint jobs, as many as can be added here; a
// file's seventeenth keeps what it had.
void make_wheel(SHAPEMODEL& model, std::size_t wheel, double x, double y, double z) {
    SHAPEPRIM& primitive = model.prims[wheel];
    primitive.type = primitive_type::wheel;
    primitive.flags = 0;
    primitive.cull1 = primitive.cull2 = always_shown;
    std::fill_n(primitive.material.begin(), painted_jobs, tyre_material);
    const std::size_t first = car_layout::first_wheel_vertex + wheel * car_layout::wheel_vertices;
    for (std::size_t i = 0; i < car_layout::wheel_vertices; ++i) {
        primitive.vertex[i] = static_cast<std::uint16_t>(first + i);
        model.verts[first + i] = {x, y, z};
    }
}

void generate_wheels(SHAPEMODEL& model) {
    for (std::size_t wheel = 0; wheel < car_layout::wheels; ++wheel)
        make_wheel(model, wheel, standard_centres[wheel].x, standard_centres[wheel].y, standard_centres[wheel].z);
    model.nprims = std::max<std::uint16_t>(model.nprims, car_layout::wheels);
    model.nverts = std::max<std::uint16_t>(model.nverts, car_layout::first_body_vertex);
    resize_wheels(model, standard_width, standard_radius1, standard_radius2);
}
