#include "model/polygon_shape.h"

#include "model/shape_parts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace {

struct Vector {
    double x = 0, y = 0, z = 0;
};
Vector operator-(const Vector& a, const Vector& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vector operator+(const Vector& a, const Vector& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vector operator/(const Vector& a, double b) { return {a.x / b, a.y / b, a.z / b}; }
double dot(const Vector& a, const Vector& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double length(const Vector& a) { return std::sqrt(dot(a, a)); }
Vector cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

struct Corners {
    std::array<Vector, max_primitive_vertices> all{};
    std::size_t count = 0;

    std::span<const Vector> used() const { return std::span(all).first(count); }
};

Corners corners_in(const SHAPEMODEL& model, const SHAPEPRIM& polygon) {
    Corners corners;
    for (const std::uint16_t index : corners_of(polygon)) {
        const SHAPEVERTEX& vertex = model.verts[index];
        corners.all[corners.count++] = {vertex.x, vertex.y, vertex.z};
    }
    return corners;
}

// Twice the area long.
Vector normal_of(std::span<const Vector> corners) {
    Vector sum;
    for (std::size_t i = 1; i + 1 < corners.size(); ++i)
        sum = sum + cross(corners[i] - corners[0], corners[i + 1] - corners[0]);
    return sum;
}

Vector middle_of(std::span<const Vector> corners) {
    Vector sum;
    for (const Vector& corner : corners)
        sum = sum + corner;
    return sum / static_cast<double>(corners.size());
}

double farthest_behind(const Vector& from, const Vector& to, const Vector& normal, std::span<const Vector> corners) {
    const double edge = length(to - from);
    if (edge == 0) return 0;
    const Vector inward = cross(normal, to - from) / edge;
    double farthest = 0;
    for (const Vector& corner : corners)
        farthest = std::max(farthest, -dot(inward, corner - from));
    return farthest;
}

} // namespace

PolygonShape polygon_shape(const SHAPEMODEL& model, const SHAPEPRIM& polygon) {
    const Corners found = corners_in(model, polygon);
    const auto corners = found.used();
    PolygonShape shape;
    if (corners.empty()) return shape;
    for (const Vector& corner : corners)
        shape.extent = std::max(shape.extent, length(corner - corners[0]));
    const Vector normal = normal_of(corners);
    shape.area = length(normal) / 2;
    if (!(shape.area > 0)) return shape;
    const Vector upright = normal / (2 * shape.area), middle = middle_of(corners);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        shape.off_plane = std::max(shape.off_plane, std::abs(dot(upright, corners[i] - middle)));
        const Vector& next = corners[(i + 1) % corners.size()];
        shape.inward = std::max(shape.inward, farthest_behind(corners[i], next, upright, corners));
    }
    return shape;
}
