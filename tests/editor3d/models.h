// Models put together by tests.
#pragma once

#include "model/car.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <vector>

inline std::uint16_t add_vertex(SHAPEMODEL& model, double x, double y, double z) {
    model.verts[model.nverts] = {x, y, z};
    return model.nverts++;
}

inline SHAPEPRIM& add_prim(SHAPEMODEL& model, int type, const std::vector<int>& vertices, int material = 0) {
    SHAPEPRIM& prim = model.prims[model.nprims++];
    prim.type = static_cast<std::uint8_t>(type);
    std::ranges::transform(vertices, prim.vertex.begin(), [](int v) { return static_cast<std::uint16_t>(v); });
    prim.material.fill(static_cast<std::uint16_t>(material));
    return prim;
}

// The four primitives that every model begins with and that the shaded view does not show: points here.
inline void add_first_four(SHAPEMODEL& model) {
    for (int i = 0; i < 4; ++i)
        add_prim(model, primitive_type::point, {0});
}
