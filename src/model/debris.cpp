#include "model/debris.h"

#include "model/shape_parts.h"

#include <algorithm>

namespace {
constexpr std::uint8_t most_corners = 5;
constexpr std::uint32_t always_shown = 0xFFFFFFFF;

bool fits(const SHAPEMODEL& source, const SHAPEPRIM& primitive) {
    return primitive.type >= primitive_type::line && primitive.type <= most_corners &&
           has_its_vertices(source, primitive);
}

std::size_t random_index(std::size_t count, const UnitRandom& random) {
    return std::min(static_cast<std::size_t>(random() * static_cast<double>(count)), count - 1);
}
} // namespace

bool has_debris(const SHAPEMODEL& source) {
    return std::ranges::any_of(primitives_in_use(source),
                               [&](const SHAPEPRIM& primitive) { return fits(source, primitive); });
}

std::optional<std::size_t> pick_debris(const SHAPEMODEL& source, const UnitRandom& random, const TimeIsUp& time_is_up) {
    if (!has_debris(source)) return {};
    const auto primitives = primitives_in_use(source);
    while (!time_is_up()) {
        const std::size_t index = random_index(primitives.size(), random);
        if (fits(source, primitives[index])) return index;
    }
    return {};
}

void make_debris(const SHAPEMODEL& source, std::size_t primitive, std::size_t paint_jobs, SHAPEMODEL& piece) {
    const SHAPEPRIM& from = source.prims[primitive];
    SHAPEPRIM& to = piece.prims[0];
    const auto corners = corners_of(from);
    piece.nprims = 1;
    piece.nverts = static_cast<std::uint16_t>(corners.size());
    to.type = from.type;
    to.flags = to.mark = 0;
    to.cull1 = to.cull2 = always_shown;
    std::copy_n(from.material.begin(), std::min(paint_jobs, from.material.size()), to.material.begin());
    for (std::size_t i = 0; i < corners.size(); ++i) {
        to.vertex[i] = static_cast<std::uint16_t>(i);
        piece.verts[i] = source.verts[corners[i]];
    }
}
