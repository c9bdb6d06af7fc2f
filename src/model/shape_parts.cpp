#include "model/shape_parts.h"

#include <algorithm>

namespace {
template <typename Table>
auto first_of(Table& table, std::size_t count) {
    return std::span(table).first(std::min(count, table.size()));
}

template <typename Primitives>
Primitives behind_wheels(Primitives all) {
    return all.subspan(std::min(car_layout::first_body_primitive, all.size()));
}
} // namespace

std::span<SHAPEVERTEX> vertices_in_use(SHAPEMODEL& model) { return first_of(model.verts, model.nverts); }
std::span<const SHAPEVERTEX> vertices_in_use(const SHAPEMODEL& model) { return first_of(model.verts, model.nverts); }
std::span<SHAPEPRIM> primitives_in_use(SHAPEMODEL& model) { return first_of(model.prims, model.nprims); }
std::span<const SHAPEPRIM> primitives_in_use(const SHAPEMODEL& model) { return first_of(model.prims, model.nprims); }

std::span<SHAPEPRIM> body_primitives(SHAPEMODEL& model) { return behind_wheels(primitives_in_use(model)); }
std::span<const SHAPEPRIM> body_primitives(const SHAPEMODEL& model) { return behind_wheels(primitives_in_use(model)); }

bool is_polygon(const SHAPEPRIM& primitive) {
    return primitive.type >= primitive_type::triangle && primitive.type <= primitive_type::largest_polygon;
}

std::span<const std::uint16_t> corners_of(const SHAPEPRIM& primitive) {
    return first_of(primitive.vertex, static_cast<std::size_t>(primitive_vertex_count(primitive.type)));
}

bool has_its_vertices(const SHAPEMODEL& model, const SHAPEPRIM& primitive) {
    const std::size_t vertices = vertices_in_use(model).size();
    return std::ranges::all_of(corners_of(primitive), [vertices](std::uint16_t index) { return index < vertices; });
}
