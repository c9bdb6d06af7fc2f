#include "model/body.h"

#include "support/models.h"

#include <gtest/gtest.h>
#include <limits>

namespace {
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

// 40 vertices, each at a place of its own, and four primitives of these types.
SHAPEMODEL model_of(std::array<int, 4> types) {
    SHAPEMODEL model;
    for (int i = 0; i < 40; ++i)
        add_vertex(model, i, 100 + i, -i);
    for (const int type : types)
        add_primitive(model, type, {});
    return model;
}

// Which vertices moving the body by (1, 2, 4) moved by just that; the others must have stayed.
std::string moved(const SHAPEMODEL& before) {
    SHAPEMODEL model = before;
    move_body(model, 1, 2, 4);
    std::string result;
    for (std::size_t i = 0; i < shape_capacity; ++i) {
        SHAPEVERTEX expected = before.verts[i];
        if (model.verts[i] == expected) {
            result += '.';
            continue;
        }
        expected.x += 1;
        expected.y += 2;
        expected.z += 4;
        EXPECT_TRUE(model.verts[i] == expected) << i;
        result += 'm';
    }
    return result.substr(0, result.find_last_not_of('.') + 1);
}

std::string run(std::size_t count, char what) { return std::string(count, what); }

void expect_box(const SHAPEMODEL& model, double min_x, double max_x, double min_y, double max_y, double max_z) {
    const std::array<SHAPEVERTEX, 8> box = {{{min_x, max_y, 0},
                                             {max_x, max_y, 0},
                                             {min_x, min_y, 0},
                                             {max_x, min_y, 0},
                                             {min_x, max_y, max_z},
                                             {max_x, max_y, max_z},
                                             {min_x, min_y, max_z},
                                             {max_x, min_y, max_z}}};
    for (std::size_t i = 0; i < box.size(); ++i) {
        EXPECT_EQ(model.verts[i].x, box[i].x) << i;
        EXPECT_EQ(model.verts[i].y, box[i].y) << i;
        EXPECT_EQ(model.verts[i].z, box[i].z) << i;
    }
}

SHAPEMODEL model_with_body(std::initializer_list<SHAPEVERTEX> body) {
    SHAPEMODEL model;
    model.nverts = 8;
    for (const SHAPEVERTEX& vertex : body)
        add_vertex(model, vertex.x, vertex.y, vertex.z);
    return model;
}
} // namespace

TEST(MoveBody, WithoutWheelsEveryVertexMoves) { EXPECT_EQ(moved(model_of({3, 3, 3, 3})), run(40, 'm')); }

TEST(MoveBody, WheelsStayWhileBoxAndBodyMove) {
    EXPECT_EQ(moved(model_of({12, 12, 12, 12})), run(8, 'm') + run(24, '.') + run(8, 'm'));
}

TEST(MoveBody, OnlyTheFirstPrimitiveOfEachAxleDecides) {
    EXPECT_EQ(moved(model_of({12, 3, 3, 3})), run(8, 'm') + run(12, '.') + run(20, 'm'));
    EXPECT_EQ(moved(model_of({3, 12, 12, 3})), run(20, 'm') + run(12, '.') + run(8, 'm'));
    EXPECT_EQ(moved(model_of({3, 12, 3, 12})), run(40, 'm'));
}

TEST(MoveBody, PlacesOfBoxAndWheelsMoveAlsoWhereTheCountIsLower) {
    SHAPEMODEL model = model_of({3, 3, 3, 3});
    model.nverts = 5;
    EXPECT_EQ(moved(model), run(32, 'm'));
}

TEST(MoveBody, FullTablesAndCountsPastThemMoveToTheLastVertex) {
    for (const std::uint16_t count : std::initializer_list<std::uint16_t>{512, 513, 65535}) {
        SHAPEMODEL model = model_of({3, 3, 3, 3});
        model.nverts = count;
        EXPECT_EQ(moved(model), run(512, 'm')) << count;
    }
}

TEST(MoveBody, CoordinatesThatAreNoNumbersStayNone) {
    SHAPEMODEL model = model_of({3, 3, 3, 3});
    model.verts[33] = {not_a_number, infinite, -infinite};
    move_body(model, 1, 1, 1);
    EXPECT_NE(model.verts[33].x, model.verts[33].x);
    EXPECT_EQ(model.verts[33].y, infinite);
    EXPECT_EQ(model.verts[33].z, -infinite);
}

TEST(FitBoundingBox, GoesAroundWheelsAndBody) {
    SHAPEMODEL model = model_with_wheels();
    add_vertex(model, 0.5, 2.5, 1.25);
    add_vertex(model, -0.9, -2, 0.5);
    fit_bounding_box(model);
    expect_box(model, -0.9, 0.6 + 0.2, -2, 2.5, 1.25);
}

// ODDITY box-contains-origin
TEST(FitBoundingBox, ABodyWhollyAboveOneGetsABoxFromZero) {
    SHAPEMODEL model = model_with_body({{2, 3, 1.5}, {4, 5, 2}});
    fit_bounding_box(model);
    expect_box(model, 0, 4, 0, 5, 2);
}

// ODDITY box-contains-origin
TEST(FitBoundingBox, ABodyWhollyBelowTheRoadGetsAFlatOne) {
    SHAPEMODEL model = model_with_body({{-2, -3, -1.5}, {-4, -5, -2}});
    fit_bounding_box(model);
    expect_box(model, -4, 0, -5, 0, 0);
}

TEST(FitBoundingBox, TheOldBoxDoesNotCountAndMarksAndCountsStay) {
    SHAPEMODEL model = model_with_body({{1, 1, 1}});
    model.verts[5] = {9, 9, 9, 7};
    fit_bounding_box(model);
    expect_box(model, 0, 1, 0, 1, 1);
    EXPECT_EQ(model.verts[5].mark, 7);
    EXPECT_EQ(model.nverts, 9);
}

TEST(FitBoundingBox, OfNothingIsAPoint) {
    SHAPEMODEL model;
    model.verts[3] = {1, 2, 3};
    fit_bounding_box(model);
    expect_box(model, 0, 0, 0, 0, 0);
    EXPECT_EQ(model.nverts, 0);
}

TEST(FitBoundingBox, WhatIsNoNumberDoesNotCountAndInfinityIsABound) {
    SHAPEMODEL model = model_with_body({{not_a_number, not_a_number, not_a_number}, {1, -infinite, infinite}});
    fit_bounding_box(model);
    expect_box(model, 0, 1, -infinite, 0, infinite);
}

TEST(FitBoundingBox, CountsPastTheTableCountAsTheTable) {
    SHAPEMODEL model;
    model.nverts = 65535;
    model.verts[511] = {1, 2, 3};
    fit_bounding_box(model);
    expect_box(model, 0, 1, 0, 2, 3);
}
