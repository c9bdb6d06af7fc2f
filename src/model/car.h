// The car's shapes: the model records, the five car slots, the four explosion models, the clipboard and the renderer's
// working copies, with the scale of each slot. Everything here is fixed in size and lives for the whole run; the
// readers overwrite it in place.
//
// Axes of a model: x across the car, y along it, z upwards; lengths in model units (file integer x the slot's scale).
#pragma once

#include <array>
#include <cstdint>

constexpr int shape_capacity = 512;        // vertices, and primitives, of one model
constexpr int max_primitive_vertices = 12; // vertex indices that a primitive has room for
constexpr int max_paint_jobs = 17;         // materials that a primitive has room for
constexpr int car_slots = 5;               // showroom, game, intro and two auxiliary ones
constexpr int explosion_models = 4;

struct SHAPEVERTEX {
    double x = 0, y = 0, z = 0;
    std::uint8_t mark = 0; // cleared by the project reader, otherwise unused

    bool operator==(const SHAPEVERTEX&) const = default;
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

// The renderer's triangulated model.
struct VISUALVERTEX {
    double x = 0, y = 0, z = 0;
    std::int16_t source = 0; // vertex of the SHAPEMODEL
};
struct VISUALPRIM {
    std::uint8_t type = 0; // 2 line, 3 triangle, 11 sphere
    std::array<std::int16_t, 3> corner{};
    std::int16_t prim = 0; // primitive of the SHAPEMODEL
    std::uint16_t material = 0;
    std::uint8_t flags = 0;
};
struct VISUALMODEL {
    std::uint16_t nverts = 0;
    std::array<VISUALVERTEX, 1024> verts{};
    std::uint16_t ntris = 0;
    std::array<VISUALPRIM, 1024> tris{};
};

extern std::array<SHAPEMODEL, car_slots> CAR; // 0 showroom, 1 game, 2 intro, 3 and 4 auxiliary
extern std::array<SHAPEMODEL, explosion_models> CEXP;
extern SHAPEMODEL CARCLIP; // the 3D editor's clipboard
extern SHAPEMODEL WFCAR;   // working copy of the wireframe views
extern VISUALMODEL VCAR;

// Model units per file integer. 0: showroom; 1: game and explosion models; 2: intro; 3: the parameter block's lengths.
//
// ODDITY scales-differ-per-slot (kept): each model has its own grid of integers in the game's file, so that the same
// length is another number in each. One scale for all would move the vertices of every car that exists.
constexpr std::array<double, 4> CARSCALE = {0.002, 0.04, 0.05, 0.000625};

extern std::int8_t CURMODEL;   // 0 .. 4
extern std::uint8_t PAINTJOBS; // 1 .. 17
extern std::uint8_t CURPJ;     // 0 .. PAINTJOBS - 1

// How many vertex indices a primitive of this type uses, in every format: 1 .. 10 as many as the type says, 11 (sphere)
// two, 12 (wheel) six, anything else none.
constexpr int primitive_vertex_count(int type) {
    if (type >= 1 && type <= primitive_type::largest_polygon) return type;
    if (type == primitive_type::sphere) return 2;
    if (type == primitive_type::wheel) return 6;
    return 0;
}

// Holds the rule that follows every load: PAINTJOBS is 1 .. 17 and CURPJ below it.
void settle_paint_jobs();

// Back to the state at start-up: empty models, PAINTJOBS 7, CURMODEL and CURPJ 0.
void reset_car();
