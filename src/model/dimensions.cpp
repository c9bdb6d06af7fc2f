#include "model/dimensions.h"

#include "base/rounding.h"
#include "model/shape_parts.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double box_unit = CARSCALE[1];   // model units per unit of the collision box
constexpr double wheel_unit = CARSCALE[3]; // model units per unit of a wheel's position
constexpr double radius_allowance = 1.05;

constexpr int wheel_across(int wheel) { return par_offset::wheels + 6 * wheel; }
constexpr int wheel_along(int wheel) { return wheel_across(wheel) + 4; }

struct Extent {
    double min = 0, max = 0;

    void include(double value) {
        if (value < min) min = value;
        if (value > max) max = value;
    }
    double reach() const { return std::max(std::abs(min), max); }
};

void store_wheel(const SHAPEMODEL& model, int wheel, ParameterBlock& par) {
    const SHAPEPRIM& primitive = model.prims[static_cast<std::size_t>(wheel)];
    const SHAPEVERTEX& near = model.verts[primitive.vertex[0]];
    const SHAPEVERTEX& far = model.verts[primitive.vertex[3]];
    set_word(par, wheel_across(wheel), rounded_word((near.x + far.x) / (2 * wheel_unit)));
    set_word(par, wheel_along(wheel), rounded_word(far.y / wheel_unit));
}

void mirror_wheel(ParameterBlock& par, int from, int to) {
    set_word(par, wheel_across(to), word_of(par, wheel_across(from)));
    set_word(par, wheel_along(to), static_cast<std::uint16_t>(-word_of(par, wheel_along(from))));
}

bool is_whole_wheel(const SHAPEMODEL& model, std::size_t primitive) {
    const auto primitives = primitives_in_use(model);
    return primitive < primitives.size() && primitives[primitive].type == primitive_type::wheel &&
           has_its_vertices(model, primitives[primitive]);
}
} // namespace

// ODDITY radius-of-plain-maxima (kept): the radius takes the greatest x and y, not the farthest from the middle, so
// that a model that lies more to the other side gets a smaller one than its box needs.
CollisionBox collision_box(const SHAPEMODEL& model) {
    Extent x, y, z;
    for (const SHAPEVERTEX& vertex : vertices_in_use(model)) {
        x.include(vertex.x);
        y.include(vertex.y);
        z.include(vertex.z);
    }
    const double radius = std::sqrt(z.max * z.max + x.max * x.max + y.max * y.max) * radius_allowance;
    return {x.reach() / box_unit, z.max / box_unit, y.reach() / box_unit, radius / box_unit};
}

void store_dimensions(const SHAPEMODEL& model, ParameterBlock& par) {
    const CollisionBox box = collision_box(model);
    set_word(par, par_offset::collision_half_width, rounded_word(box.half_width));
    set_word(par, par_offset::collision_half_length, rounded_word(box.half_length));
    set_word(par, par_offset::collision_height, rounded_word(box.height));
    set_word(par, par_offset::collision_radius, rounded_word(box.radius));
}

bool store_wheel_positions(const SHAPEMODEL& model, ParameterBlock& par) {
    if (!is_whole_wheel(model, 0) || !is_whole_wheel(model, 1)) return false;
    store_wheel(model, 0, par);
    store_wheel(model, 1, par);
    mirror_wheel(par, 1, 2);
    mirror_wheel(par, 0, 3);
    return true;
}
