#include "model/shading.h"

#include "model/shape_parts.h"

#include <cmath>

namespace {
std::uint16_t shade_of_polygon(const SHAPEMODEL& model, const SHAPEPRIM& polygon) {
    const SHAPEVERTEX& a = model.verts[polygon.vertex[0]];
    const SHAPEVERTEX& b = model.verts[polygon.vertex[1]];
    const SHAPEVERTEX& c = model.verts[polygon.vertex[2]];
    const double x1 = b.x - a.x, y1 = b.y - a.y, z1 = b.z - a.z;
    const double x2 = c.x - a.x, y2 = c.y - a.y, z2 = c.z - a.z;
    return shade_of(y1 * z2 - z1 * y2, z1 * x2 - x1 * z2, x1 * y2 - y1 * x2);
}
} // namespace

std::uint16_t shade_of(double x, double y, double z) {
    // Without a length this is not a number, which is in no range.
    const double downwards = -z / std::sqrt(x * x + y * y + z * z);
    if (downwards > 0.85) return 203;
    if (downwards > 0.6) return 202;
    if (downwards >= 0.25) return 201;
    return 200;
}

void shade_by_facing(SHAPEMODEL& model, std::size_t paint_job) {
    if (paint_job >= max_paint_jobs) return;
    for (SHAPEPRIM& primitive : body_primitives(model))
        if (is_polygon(primitive) && has_its_vertices(model, primitive))
            primitive.material[paint_job] = shade_of_polygon(model, primitive);
}
