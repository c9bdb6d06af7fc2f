#include "editor3d/material_dump.h"

#include <cstdint>
#include <span>

namespace {
constexpr std::size_t dumped_primitives = 4, dumped_materials = 16;
}

std::string material_dump(const SHAPEMODEL& model) {
    std::string text;
    for (const SHAPEPRIM& prim : std::span(model.prims).first(dumped_primitives)) {
        for (const std::uint16_t material : std::span(prim.material).first(dumped_materials))
            text += std::to_string(static_cast<std::int16_t>(material)) + ' ';
        text += '\n';
    }
    return text;
}
