#include "model/shading.h"

#include "support/models.h"

#include <gtest/gtest.h>
#include <limits>

namespace {
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

// Counter-clockwise seen from above.
constexpr std::array<SHAPEVERTEX, 3> looking_up = {{{0, 0, 1}, {1, 0, 1}, {0, 1, 1}}};
constexpr std::array<SHAPEVERTEX, 3> looking_down = {{{0, 0, 1}, {0, 1, 1}, {1, 0, 1}}};

std::uint16_t shade_of_triangle(const std::array<SHAPEVERTEX, 3>& corners) {
    SHAPEMODEL model = model_with_wheels();
    const SHAPEPRIM& triangle = add_triangle(model, corners, 55);
    shade_by_facing(model, 0);
    return triangle.material[0];
}
} // namespace

TEST(Shade, AFaceStraightDownIs203AndOneStraightUpIs200) {
    EXPECT_EQ(shade_of_triangle(looking_down), 203);
    EXPECT_EQ(shade_of_triangle(looking_up), 200);
}

TEST(Shade, FollowsHowFarTheFaceLooksDown) {
    const auto shade_at = [](double downwards) {
        return shade_of(std::sqrt(1 - downwards * downwards), 0, -downwards);
    };
    EXPECT_EQ(shade_at(-1), 200);
    EXPECT_EQ(shade_at(0), 200);
    EXPECT_EQ(shade_at(0.249), 200);
    EXPECT_EQ(shade_at(0.251), 201);
    EXPECT_EQ(shade_at(0.599), 201);
    EXPECT_EQ(shade_at(0.601), 202);
    EXPECT_EQ(shade_at(0.849), 202);
    EXPECT_EQ(shade_at(0.851), 203);
    EXPECT_EQ(shade_at(1), 203);
}

TEST(Shade, TheBoundsThemselvesBelongToTheShadeBelow) {
    EXPECT_EQ(shade_of(std::sqrt(15.0), 0, -1), 201) << "exactly a quarter";
    EXPECT_EQ(shade_of(4, 0, -3), 201) << "exactly 0.6";
    // 0.85 has no exact normal of whole numbers: the nearest one on either side.
    EXPECT_EQ(shade_of(std::sqrt(1 - 0.85 * 0.85), 0, std::nextafter(-0.85, -1)), 203);
    EXPECT_EQ(shade_of(std::sqrt(1 - 0.85 * 0.85) * 1.0000001, 0, -0.85), 202);
}

TEST(Shade, WhatHasNoDirectionIs200) {
    EXPECT_EQ(shade_of_triangle({{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}}), 200);
    EXPECT_EQ(shade_of_triangle({{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}}), 200);
    EXPECT_EQ(shade_of_triangle({{{infinite, 0, 0}, {0, infinite, 0}, {0, 0, infinite}}}), 200);
    EXPECT_EQ(shade_of_triangle({{{not_a_number, 0, 0}, {0, 1, 0}, {1, 0, 0}}}), 200);
}

TEST(ShadeByFacing, OnlyPolygonsBehindTheWheelsAreShaded) {
    SHAPEMODEL model;
    for (int type = 0; type < 256; ++type)
        add_primitive(model, type, {0, 1, 2, 0, 1, 2, 0, 1, 2, 0}, 55);
    std::swap(model.prims[3], model.prims[40]); // a triangle behind, another kind in front
    model.prims[1].type = primitive_type::triangle;
    for (const SHAPEVERTEX& vertex : looking_down)
        add_vertex(model, vertex.x, vertex.y, vertex.z);
    shade_by_facing(model, 0);
    for (std::size_t i = 0; i < 256; ++i) {
        const bool shaded = i == 40 || (i >= 4 && i <= 10);
        EXPECT_EQ(model.prims[i].material[0], shaded ? 203 : 55) << i;
    }
}

TEST(ShadeByFacing, TheFirstThreeCornersDecide) {
    SHAPEMODEL model = model_with_wheels();
    for (const SHAPEVERTEX& vertex : looking_down)
        add_vertex(model, vertex.x, vertex.y, vertex.z);
    add_vertex(model, 5, 5, -100);
    const SHAPEPRIM& polygon = add_primitive(model, 4, {32, 33, 34, 35}, 55);
    shade_by_facing(model, 0);
    EXPECT_EQ(polygon.material[0], 203);
}

TEST(ShadeByFacing, OtherPaintJobsStay) {
    SHAPEMODEL model = model_with_wheels();
    const SHAPEPRIM& triangle = add_triangle(model, looking_down, 55);
    shade_by_facing(model, 16);
    for (std::size_t job = 0; job < 17; ++job)
        EXPECT_EQ(triangle.material[job], job == 16 ? 203 : 55);
    const SHAPEMODEL before = model;
    shade_by_facing(model, 17);
    EXPECT_TRUE(model == before) << "there is no such paint job";
}

TEST(ShadeByFacing, APolygonWithAnIndexPastTheVerticesKeepsItsMaterial) {
    for (const int index : {35, 511, 512, 65535}) {
        SHAPEMODEL model = model_with_wheels();
        SHAPEPRIM& triangle = add_triangle(model, looking_down, 55);
        triangle.vertex[1] = static_cast<std::uint16_t>(index);
        shade_by_facing(model, 0);
        EXPECT_EQ(triangle.material[0], 55) << index;
    }
}
