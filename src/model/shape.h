// The record of one model of a car, and the scale of each slot.
//
// Axes of a model: x across the car, y along it, z upwards; lengths in model units (file integer x the slot's scale).
#pragma once

#include <array>
#include <bit>
#include <cstdint>

constexpr int shape_capacity = 512;        // vertices, and primitives, of one model
constexpr int max_primitive_vertices = 12; // vertex indices that a primitive has room for
constexpr int max_paint_jobs = 17;         // materials that a primitive has room for
constexpr int car_slots = 5;               // showroom, game, intro and two auxiliary ones
constexpr int explosion_models = 4;

struct SHAPEVERTEX {
    double x = 0, y = 0, z = 0;
    std::uint8_t mark = 0; // cleared by the project reader, otherwise unused

    // To the last bit: not-a-number equals itself, and the zeros of either sign differ, as they do in a project file.
    bool operator==(const SHAPEVERTEX& other) const {
        const auto bits = [](double coordinate) { return std::bit_cast<std::uint64_t>(coordinate); };
        return bits(x) == bits(other.x) && bits(y) == bits(other.y) && bits(z) == bits(other.z) && mark == other.mark;
    }
};

struct SHAPEPRIM {
    std::uint8_t type = 0;                                      // see primitive_vertex_count
    std::array<std::uint16_t, max_primitive_vertices> vertex{}; // indices into verts; may point past nverts
    std::array<std::uint16_t, max_paint_jobs> material{};       // one a paint job, 0 .. 255
    std::uint32_t cull1 = 0, cull2 = 0;                         // the game's culling masks, kept unchanged
    std::uint8_t flags = 0;                                     // bit 0: drawn from both sides
    std::uint8_t mark = 0;                                      // not 0: highlighted in the wireframe views

    bool operator==(const SHAPEPRIM&) const = default;
};

// The kinds of primitive that have a name; 3 .. 10 are polygons of that many corners.
namespace primitive_type {
constexpr std::uint8_t empty = 0, point = 1, line = 2, triangle = 3, largest_polygon = 10, sphere = 11, wheel = 12;
}

struct SHAPEMODEL {
    std::uint16_t nverts = 0;
    std::array<SHAPEVERTEX, shape_capacity> verts{};
    std::uint16_t nprims = 0;
    std::array<SHAPEPRIM, shape_capacity> prims{};

    bool operator==(const SHAPEMODEL&) const = default;
};

// Model units per file integer. 0: showroom; 1: game and explosion models; 2: intro; 3: the parameter block's lengths.
//
// ODDITY scales-differ-per-slot (kept): each model has its own grid of integers in the game's file, so that the same
// length is another number in each. One scale for all would move the vertices of every car that exists.
constexpr std::array<double, 4> CARSCALE = {0.002, 0.04, 0.05, 0.000625};

// How many vertex indices a primitive of this type uses, in every format: 1 .. 10 as many as the type says, 11 (sphere)
// two, 12 (wheel) six, anything else none.
constexpr int primitive_vertex_count(int type) {
    if (type >= 1 && type <= primitive_type::largest_polygon) return type;
    if (type == primitive_type::sphere) return 2;
    if (type == primitive_type::wheel) return 6;
    return 0;
}
