// The sample cars' models are closed: no sky shows through a seam, from wherever a car is looked at.
#include "editor3d/views.h"
#include "formats/shape_file.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/shape_parts.h"
#include "widgets/widgets.h"
#include "window/window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

// A model as the shaded view draws it: the body from the fifth primitive on.
struct NamedModel {
    std::string name;
    SHAPEMODEL shape;
};

NamedModel piece_of_a_crash(const std::string& name, const SHAPEMODEL& piece) {
    NamedModel model{name, piece};
    std::ranges::copy_n(piece.prims.begin(), piece.nprims, model.shape.prims.begin() + car_layout::wheels);
    std::ranges::fill_n(model.shape.prims.begin(), car_layout::wheels, SHAPEPRIM{});
    model.shape.nprims = static_cast<std::uint16_t>(piece.nprims + car_layout::wheels);
    return model;
}

using Edge = std::pair<std::uint16_t, std::uint16_t>; // a face runs from the first vertex to the second

std::vector<Edge> edges_of(const SHAPEPRIM& face) {
    const auto corners = corners_of(face);
    std::vector<Edge> edges;
    for (std::size_t i = 0; i < corners.size(); ++i)
        edges.emplace_back(corners[i], corners[(i + 1) % corners.size()]);
    return edges;
}

bool is_face(const SHAPEPRIM& primitive) { return is_polygon(primitive); }
bool has_one_side(const SHAPEPRIM& face) { return (face.flags & 1) == 0; }
bool has_corner(const SHAPEPRIM& face, std::uint16_t vertex) {
    return std::ranges::find(corners_of(face), vertex) != corners_of(face).end();
}

// How far a vertex lies from an edge, or nothing near when it lies beside neither end.
double distance(const SHAPEMODEL& shape, std::uint16_t vertex, const Edge& edge) {
    const SHAPEVERTEX &p = shape.verts[vertex], &a = shape.verts[edge.first], &b = shape.verts[edge.second];
    const std::array<double, 3> along{b.x - a.x, b.y - a.y, b.z - a.z}, to{p.x - a.x, p.y - a.y, p.z - a.z};
    double product = 0, length = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        product += along[i] * to[i];
        length += along[i] * along[i];
    }
    const double share = product / length;
    constexpr double far = 1e9, end = 1e-6;
    if (share < end || share > 1 - end) return far;
    return std::hypot(to[0] - share * along[0], to[1] - share * along[1], to[2] - share * along[2]);
}

// --- what is seen --------------------------------------------------------------------------------------------------

constexpr double yaw_step = 2 * 0.196349375, pitch_step = 4 * 0.0981746875; // of keys
constexpr int yaws = 16;

// Every primitive in a colour of its own, its number.
void colour_by_primitive(SHAPEMODEL& shape) {
    ASSERT_LE(shape.nprims, MATERIAL.size());
    for (std::size_t i = 0; i < shape.nprims; ++i) {
        shape.prims[i].material.fill(static_cast<std::uint16_t>(i));
        MATERIAL[i].colour = 0xFF000000 | static_cast<std::uint32_t>(i);
    }
}

// Which primitive each pixel of the shaded view shows, none outside the car: as much of the view as the car takes, and
// a rim of ground around it.
class Picture {
public:
    static constexpr int ground = -1;

    Picture() {
        UPDATE3DWINDOW(view_3d);
        const WINDOW3D& view = W3D[view_3d];
        left_ = view.left + 2;
        width_ = view.right - 2 - left_ + 1;
        top_ = view.top + 8;
        int bottom = view.bottom - 2;
        while (top_ < bottom && is_empty(top_ + 1))
            ++top_;
        while (bottom > top_ && is_empty(bottom - 1))
            --bottom;
        height_ = bottom - top_ + 1;
        shown_.reserve(static_cast<std::size_t>(width_ * height_));
        for (int y = top_; y <= bottom; ++y)
            for (const std::uint32_t colour : row(y))
                shown_.push_back((colour & 0xFFFF00) == 0 ? static_cast<int>(colour & 0xFF) : ground);
    }

    // The spots of ground that the car encloses and that no square of three pixels fits into, in words.
    std::vector<std::string> thin_spots() {
        std::vector<std::string> spots;
        take_ground_around();
        for (int at = 0; at < width_ * height_; ++at) {
            if (shown(at) != ground) continue;
            std::set<int> faces;
            const std::vector<int> spot = take_spot(at, faces);
            if (!holds_a_square(spot)) spots.push_back(in_words(spot, faces));
        }
        return spots;
    }

private:
    static constexpr int taken = -2;

    std::vector<std::uint32_t> row(int y) const {
        std::vector<std::uint32_t> colours(static_cast<std::size_t>(width_));
        const Image& image = screen().image();
        std::memcpy(colours.data(), image.bytes().data() + image.pitch() * static_cast<std::size_t>(y) + left_ * 4,
                    colours.size() * 4);
        return colours;
    }
    bool is_empty(int y) const {
        return row(y) == std::vector<std::uint32_t>(static_cast<std::size_t>(width_), colour::background);
    }
    int shown(int at) const { return shown_[static_cast<std::size_t>(at)]; }

    void take_ground_around() {
        std::set<int> faces;
        const int last_row = (height_ - 1) * width_;
        for (int x = 0; x < width_; ++x)
            for (const int at : {x, last_row + x})
                if (shown(at) == ground) take_spot(at, faces);
        for (int at = 0; at <= last_row; at += width_)
            for (const int side : {at, at + width_ - 1})
                if (shown(side) == ground) take_spot(side, faces);
    }
    // All ground that hangs together with a pixel, corners included; `faces` gets what lies around it.
    std::vector<int> take_spot(int first, std::set<int>& faces) {
        std::vector<int> spot{first};
        int* const all = shown_.data();
        all[first] = taken;
        for (std::size_t i = 0; i < spot.size(); ++i) {
            const int x = spot[i] % width_, y = spot[i] / width_;
            for (int above = y > 0 ? -1 : 0; above <= (y < height_ - 1 ? 1 : 0); ++above)
                for (int beside = x > 0 ? -1 : 0; beside <= (x < width_ - 1 ? 1 : 0); ++beside) {
                    int& pixel = all[spot[i] + above * width_ + beside];
                    if (pixel == taken) continue;
                    if (pixel != ground) {
                        faces.insert(pixel);
                        continue;
                    }
                    pixel = taken;
                    spot.push_back(spot[i] + above * width_ + beside);
                }
        }
        return spot;
    }
    bool holds_a_square(const std::vector<int>& spot) const {
        const std::set<int> pixels(spot.begin(), spot.end());
        return std::ranges::any_of(spot, [&](int at) {
            for (int i = 0; i < 9; ++i)
                if (!pixels.contains(at + i / 3 * width_ + i % 3)) return false;
            return true;
        });
    }
    std::string in_words(const std::vector<int>& spot, const std::set<int>& faces) const {
        std::string words = std::to_string(spot.size()) + " pixels at " + std::to_string(left_ + spot[0] % width_) +
                            ", " + std::to_string(top_ + spot[0] / width_) + " between the faces";
        for (const int face : faces)
            words += " " + std::to_string(face - static_cast<int>(car_layout::wheels) + 1);
        return words;
    }

    int left_, top_, width_, height_;
    std::vector<int> shown_;
};

} // namespace

class ClosedBody : public testing::TestWithParam<const char*> {
protected:
    static constexpr std::size_t bodies = 3;
    std::vector<NamedModel> models;

    void SetUp() override {
        INIT3DWINDOWS();
        ASSERT_TRUE(LOAD3SH(KAROSMIT_DATA_DIR "garage/st" + std::string(GetParam()) + ".3sh", all_shapes).succeeded());
        for (std::size_t i = 0; i < bodies; ++i)
            models.push_back({"car" + std::to_string(i), *CAR[i]});
        for (std::size_t i = 0; i < explosion_models; ++i)
            models.push_back(piece_of_a_crash("exp" + std::to_string(i), *CEXP[i]));
    }
};

INSTANTIATE_TEST_SUITE_P(All, ClosedBody, testing::Values("vela", "brux", "tarn"),
                         [](const auto& car) { return std::string(car.param); });

// What is thin and stands free, such as a mirror, has two sides.
TEST_P(ClosedBody, EveryEdgeOfAFaceWithOneSideMeetsAnotherFace) {
    for (const auto& [name, shape] : models) {
        std::map<Edge, int> faces_at;
        for (const SHAPEPRIM& face : body_primitives(shape))
            for (const auto& [a, b] : edges_of(face))
                if (is_face(face)) ++faces_at[std::minmax(a, b)];
        for (std::size_t i = 0; i < body_primitives(shape).size(); ++i) {
            const SHAPEPRIM& face = body_primitives(shape)[i];
            if (!is_face(face) || !has_one_side(face)) continue;
            for (const auto& [a, b] : edges_of(face))
                EXPECT_GE(faces_at[std::minmax(a, b)], 2)
                    << name << ", face " << i + 1 << ", from " << a << " to " << b;
        }
    }
}

TEST_P(ClosedBody, NoVertexOfAFaceLiesInsideAnotherFacesEdge) {
    constexpr double touching = 1e-6;
    for (const auto& [name, shape] : models) {
        std::set<std::uint16_t> vertices;
        for (const SHAPEPRIM& face : body_primitives(shape))
            if (is_face(face)) vertices.insert(corners_of(face).begin(), corners_of(face).end());
        for (std::size_t i = 0; i < body_primitives(shape).size(); ++i) {
            const SHAPEPRIM& face = body_primitives(shape)[i];
            if (!is_face(face)) continue;
            for (const Edge& edge : edges_of(face))
                for (const std::uint16_t vertex : vertices) {
                    if (has_corner(face, vertex)) continue;
                    EXPECT_GT(distance(shape, vertex, edge), touching)
                        << name << ", face " << i + 1 << ", vertex " << vertex;
                }
        }
    }
}

// The pieces of a crash are open sheets: what is thin between two parts of one may be where it ends.
TEST_P(ClosedBody, NoGroundShowsThroughASeamFromAnySide) {
    models.resize(bodies);
    for (auto& [name, shape] : models) {
        colour_by_primitive(shape);
        CAR[0] = shape;
        for (int yaw = 0; yaw < yaws; ++yaw)
            for (const double pitch : {-0.75, 0.25, 1.25}) {
                CURYAW = yaw * yaw_step;
                CURPITCH = pitch * pitch_step;
                for (const std::string& spot : Picture().thin_spots())
                    ADD_FAILURE() << name << ", yaw " << CURYAW << ", pitch " << CURPITCH << ": " << spot;
            }
    }
}
