#include "editor3d/wireframe.h"

#include "drawing/drawing.h"
#include "model/shape_parts.h"

#include <cmath>
#include <utility>

void turn_onto_plane(SHAPEMODEL& model, Plane plane) {
    if (plane == Plane::top) return;
    for (SHAPEVERTEX& vertex : vertices_in_use(model)) {
        std::swap(vertex.y, vertex.z);
        if (plane == Plane::side) std::swap(vertex.x, vertex.z);
    }
}

namespace {

double distance_in_plane(const SHAPEVERTEX& a, const SHAPEVERTEX& b) { return std::hypot(a.x - b.x, a.y - b.y); }
double distance(const SHAPEVERTEX& a, const SHAPEVERTEX& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

// One primitive, with its vertices looked up.
class WirePrimitive {
public:
    WirePrimitive(Canvas& canvas, const SHAPEMODEL& model, const SHAPEPRIM& prim, const ViewMapping& mapping)
        : canvas_(canvas), model_(model), prim_(prim), mapping_(mapping),
          colour_(prim.mark != 0 ? marked_wireframe_colour : wireframe_colour) {}

    void draw_sides() {
        const std::size_t corners = corners_of(prim_).size();
        draw_pixel(canvas_, x(0), y(0), colour_);
        for (std::size_t i = 1; i < corners; ++i)
            draw_side(i - 1, i);
        if (corners > 2) draw_side(corners - 1, 0);
    }
    void draw_sphere() { draw_circle_through(1); }
    void draw_wheel_from_side() {
        draw_circle_through(1);
        draw_circle_through(2);
    }
    void draw_wheel_box() {
        const double radius = distance(corner(0), corner(1)) * mapping_.zoom;
        draw_box(canvas_, x(0), y(0) - radius, x(3), y(0) + radius, colour_);
    }

private:
    const SHAPEVERTEX& corner(std::size_t i) const { return model_.verts[prim_.vertex[i]]; }
    double x(std::size_t i) const { return mapping_.x(corner(i).x); }
    double y(std::size_t i) const { return mapping_.y(corner(i).y); }
    void draw_side(std::size_t from, std::size_t to) { draw_line(canvas_, x(from), y(from), x(to), y(to), colour_); }
    void draw_circle_through(std::size_t rim) {
        draw_circle(canvas_, x(0), y(0), distance_in_plane(corner(0), corner(rim)) * mapping_.zoom, colour_);
    }

    Canvas& canvas_;
    const SHAPEMODEL& model_;
    const SHAPEPRIM& prim_;
    const ViewMapping& mapping_;
    const std::uint32_t colour_;
};

void draw_primitive(WirePrimitive drawn, const SHAPEPRIM& prim, Plane plane) {
    if (prim.type == primitive_type::line || is_polygon(prim))
        drawn.draw_sides();
    else if (prim.type == primitive_type::sphere)
        drawn.draw_sphere();
    else if (prim.type == primitive_type::wheel)
        plane == Plane::side ? drawn.draw_wheel_from_side() : drawn.draw_wheel_box();
}

} // namespace

void draw_wireframe(Canvas& canvas, const SHAPEMODEL& turned, Plane plane, const ViewMapping& mapping) {
    for (const SHAPEPRIM& prim : primitives_in_use(turned))
        if (has_its_vertices(turned, prim)) draw_primitive({canvas, turned, prim, mapping}, prim, plane);
}
