#include "editor3d/visual_model.h"

#include "model/shape_parts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

namespace {

bool becomes_pieces(const SHAPEMODEL& model, const SHAPEPRIM& prim) {
    const bool kind = prim.type == primitive_type::line || is_polygon(prim) || prim.type == primitive_type::sphere;
    return kind && has_its_vertices(model, prim);
}

// Takes pieces until the table is full.
class PieceTable {
public:
    explicit PieceTable(VISUALMODEL& visual) : visual_(visual) { visual_.ntris = 0; }

    // Field by field: records that are put together elsewhere and copied cost more than all else here.
    void add(std::uint8_t type, const SHAPEPRIM& prim, std::size_t index, int paint_job,
             const std::array<std::uint16_t, 3>& corners) {
        if (visual_.ntris == visual_.tris.size()) return;
        VISUALPRIM& piece = visual_.tris[visual_.ntris++];
        piece.type = type;
        for (std::size_t i = 0; i < corners.size(); ++i)
            piece.corner[i] = static_cast<std::int16_t>(corners[i]);
        piece.prim = static_cast<std::int16_t>(index);
        piece.material = prim.material[static_cast<std::size_t>(paint_job)];
        piece.flags = prim.flags;
    }

private:
    VISUALMODEL& visual_;
};

void add_pieces(PieceTable& pieces, const SHAPEPRIM& prim, std::size_t index, int paint_job) {
    const auto corners = corners_of(prim);
    if (corners.size() == 2) return pieces.add(prim.type, prim, index, paint_job, {corners[0], corners[1], 0});
    for (std::size_t i = 1; i + 1 < corners.size(); ++i)
        pieces.add(primitive_type::triangle, prim, index, paint_job, {corners[0], corners[i], corners[i + 1]});
}

} // namespace

void simplify_model(const SHAPEMODEL& model, int paint_job, VISUALMODEL& visual) {
    visual.nverts = 0;
    for (const SHAPEVERTEX& vertex : vertices_in_use(model)) {
        visual.verts[visual.nverts] = {vertex.x, vertex.y, vertex.z, static_cast<std::int16_t>(visual.nverts)};
        ++visual.nverts;
    }
    PieceTable pieces(visual);
    // ODDITY wheels-never-shaded (kept): the first four primitives have no place in the shaded view, whether they are
    // wheels or not.
    for (std::size_t i = car_layout::first_body_primitive; i < primitives_in_use(model).size(); ++i) {
        const SHAPEPRIM& prim = model.prims[i];
        if (becomes_pieces(model, prim)) add_pieces(pieces, prim, i, paint_job);
    }
}

namespace {

std::span<VISUALVERTEX> vertices_of(VISUALMODEL& visual) { return std::span(visual.verts).first(visual.nverts); }

void put_in_perspective(VISUALVERTEX& vertex) {
    const double distance = eye_distance - vertex.y;
    if (distance == 0) return;
    vertex.x = eye_distance * vertex.x / distance;
    vertex.z = eye_distance * vertex.z / distance;
}

} // namespace

void rotate_visual_model(VISUALMODEL& visual, bool perspective, double yaw, double pitch) {
    const double sin_yaw = std::sin(yaw), cos_yaw = std::cos(yaw);
    const double sin_pitch = std::sin(pitch), cos_pitch = std::cos(pitch);
    for (VISUALVERTEX& vertex : vertices_of(visual)) {
        const double x = vertex.x * cos_yaw + vertex.y * sin_yaw;
        const double y = vertex.y * cos_yaw - vertex.x * sin_yaw;
        vertex.x = x;
        vertex.y = y * cos_pitch + vertex.z * sin_pitch;
        vertex.z = vertex.z * cos_pitch - y * sin_pitch;
        if (perspective) put_in_perspective(vertex);
    }
}

namespace {

const VISUALVERTEX& corner_of(const VISUALMODEL& visual, const VISUALPRIM& piece, std::size_t corner) {
    return visual.verts[static_cast<std::size_t>(piece.corner[corner])];
}

bool faces_away(const VISUALMODEL& visual, const VISUALPRIM& piece) {
    if (piece.type != primitive_type::triangle || (piece.flags & 1) != 0) return false;
    const VISUALVERTEX &a = corner_of(visual, piece, 0), &b = corner_of(visual, piece, 1),
                       &c = corner_of(visual, piece, 2);
    return (b.x - a.x) * (c.z - a.z) - (b.z - a.z) * (c.x - a.x) < 0;
}

// The piece that is moved into the place of a removed one is not looked at, and what was removed may be met again and
// take one more piece with it. Which faces are seen depends on both.
//
// ODDITY moved-face-untested (kept): a face that takes a removed one's place stays, even when it faces away itself.
// ODDITY removed-face-takes-another (kept): the scan goes on to the end that it began with, meets a face that it has
// removed, and removes the last kept one in its stead.
void remove_back_faces(VISUALMODEL& visual) {
    const int end = visual.ntris;
    int kept = end;
    for (int i = 0; i < end; ++i) {
        VISUALPRIM& piece = visual.tris[static_cast<std::size_t>(i)];
        if (!faces_away(visual, piece)) continue;
        std::swap(piece, visual.tris[static_cast<std::size_t>(--kept)]);
        if (i >= kept - 1) break;
    }
    visual.ntris = static_cast<std::uint16_t>(kept);
}

constexpr double beyond_all_depths = 1000;

double depth_of_triangle(const VISUALMODEL& visual, const VISUALPRIM& piece) {
    double least = beyond_all_depths, greatest = -beyond_all_depths;
    for (std::size_t i = 0; i < piece.corner.size(); ++i) {
        const double y = corner_of(visual, piece, i).y;
        if (y < least) least = y;
        if (y > greatest) greatest = y;
    }
    return (least + greatest) / 2;
}

double depth_of(const VISUALMODEL& visual, const VISUALPRIM& piece) {
    switch (piece.type) {
    case primitive_type::line: return (corner_of(visual, piece, 0).y + corner_of(visual, piece, 1).y) / 2;
    case primitive_type::triangle: return depth_of_triangle(visual, piece);
    case primitive_type::sphere: return corner_of(visual, piece, 0).y;
    default: return 0;
    }
}

// The pieces' depths with their places; a depth that is not a number counts as 0, so that there is an order at all.
struct Depth {
    double key;
    std::size_t place;
};

void sort_by_depth(VISUALMODEL& visual) {
    const std::size_t count = visual.ntris;
    std::array<Depth, std::tuple_size_v<decltype(visual.tris)>> depths;
    for (std::size_t i = 0; i < count; ++i) {
        const double key = depth_of(visual, visual.tris[i]);
        depths[i] = {std::isnan(key) ? 0 : key, i};
    }
    // By place where the keys are equal: one order only, which is the stable one.
    const auto farther = [](const Depth& a, const Depth& b) {
        return a.key < b.key || (a.key == b.key && a.place < b.place);
    };
    std::sort(depths.begin(), depths.begin() + static_cast<std::ptrdiff_t>(count), farther);
    const auto unsorted = visual.tris;
    for (std::size_t i = 0; i < count; ++i)
        visual.tris[i] = unsorted[depths[i].place];
}

} // namespace

void sort_visual_primitives(VISUALMODEL& visual) {
    remove_back_faces(visual);
    sort_by_depth(visual);
}

void SIMPLIFYMODEL(std::uint8_t model, std::uint8_t paint_job) { simplify_model(*CAR[model], paint_job, VCAR); }

void ROTATEVISUALMODEL(std::uint8_t perspective, double yaw, double pitch) {
    rotate_visual_model(VCAR, perspective != 0, yaw, pitch);
}

void SORTVISUALPRIMITIVES() { sort_visual_primitives(VCAR); }
