#include "model/wheels.h"

#include "support/models.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

void expect_point(const SHAPEVERTEX& point, double x, double y, double z) {
    EXPECT_DOUBLE_EQ(point.x, x);
    EXPECT_DOUBLE_EQ(point.y, y);
    EXPECT_DOUBLE_EQ(point.z, z);
}

// Six points of a wheel from face x to face other_x at (y, z), with radii 0.3 and 0.2, as a primitive behind the
// others.
SHAPEPRIM& add_wheel(SHAPEMODEL& model, double x, double other_x, double y = 1, double z = 0.25) {
    const int first = model.nverts;
    for (const double face : {x, other_x}) {
        add_vertex(model, face, y, z);
        add_vertex(model, face, y + 0.3, z);
        add_vertex(model, face, y, z + 0.2);
    }
    return add_primitive(model, primitive_type::wheel, {first, first + 1, first + 2, first + 3, first + 4, first + 5});
}
} // namespace

TEST(GenerateWheels, OnAnEmptySlotGives32VerticesAndFourWheels) {
    const SHAPEMODEL model = model_with_wheels();
    EXPECT_EQ(model.nverts, 32);
    EXPECT_EQ(model.nprims, 4);
    for (std::size_t wheel = 0; wheel < 4; ++wheel) {
        const SHAPEPRIM& primitive = model.prims[wheel];
        EXPECT_EQ(primitive.type, primitive_type::wheel);
        EXPECT_EQ(primitive.flags, 0);
        EXPECT_EQ(primitive.cull1, 0xFFFFFFFF);
        EXPECT_EQ(primitive.cull2, 0xFFFFFFFF);
        for (std::size_t i = 0; i < 6; ++i)
            EXPECT_EQ(primitive.vertex[i], 8 + 6 * wheel + i);
    }
}

TEST(GenerateWheels, EveryWheelIsTwentyWideWithItsInnerFaceAtSixtyAndTheSmallerXFirst) {
    const SHAPEMODEL model = model_with_wheels();
    const double rear = -1.3, front = 1.3;
    const std::array<std::array<double, 3>, 4> faces = {
        {{-0.8, -0.6, rear}, {0.6, 0.8, rear}, {0.6, 0.8, front}, {-0.8, -0.6, front}}};
    for (std::size_t wheel = 0; wheel < 4; ++wheel) {
        const auto [x, other_x, y] = faces[wheel];
        expect_point(wheel_point(model, wheel, 0), x, y, 0.22);
        expect_point(wheel_point(model, wheel, 1), x, y + 0.22, 0.22);
        expect_point(wheel_point(model, wheel, 2), x, y, 0.22 + 0.18);
        expect_point(wheel_point(model, wheel, 3), other_x, y, 0.22);
        expect_point(wheel_point(model, wheel, 4), other_x, y + 0.22, 0.22);
        expect_point(wheel_point(model, wheel, 5), other_x, y, 0.22 + 0.18);
    }
}

// ODDITY wheels-painted-for-sixteen
TEST(GenerateWheels, AreTyreBlackInSixteenPaintJobsAndTheSeventeenthStays) {
    SHAPEMODEL model;
    model.prims[2].material[16] = 99;
    generate_wheels(model);
    for (std::size_t job = 0; job < 16; ++job)
        EXPECT_EQ(model.prims[2].material[job], 38);
    EXPECT_EQ(model.prims[2].material[16], 99);
    EXPECT_EQ(model.prims[3].material[16], 0);
}

TEST(GenerateWheels, KeepABodyAndLargerCounts) {
    SHAPEMODEL model = model_with_wheels();
    add_triangle(model, {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, 55);
    const SHAPEMODEL before = model;
    model.prims[1].type = primitive_type::line;
    model.verts[13] = {9, 9, 9, 9};
    generate_wheels(model);
    EXPECT_TRUE(model == before);
    EXPECT_EQ(model.nverts, 35);
    EXPECT_EQ(model.nprims, 5);
}

TEST(GenerateWheels, AlsoGrowFurtherWheelsOfTheModel) {
    SHAPEMODEL model = model_with_wheels();
    add_wheel(model, 2, 2.5);
    generate_wheels(model);
    EXPECT_DOUBLE_EQ(wheel_point(model, 4, 3).x, 2.7);
    EXPECT_DOUBLE_EQ(wheel_point(model, 0, 3).x - wheel_point(model, 0, 0).x, 0.8 - 0.6);
}

TEST(MoveWheels, APositiveDxTakesBothSidesFurtherOut) {
    SHAPEMODEL model = model_with_wheels();
    const SHAPEMODEL before = model;
    move_wheels(model, 0.1, 0, 0);
    for (std::size_t i = 8; i < 32; ++i) {
        EXPECT_EQ(model.verts[i].x, before.verts[i].x + (before.verts[i].x < 0 ? -0.1 : 0.1)) << i;
        EXPECT_EQ(model.verts[i].y, before.verts[i].y);
        EXPECT_EQ(model.verts[i].z, before.verts[i].z);
    }
}

TEST(MoveWheels, APositiveDyLengthensTheWheelbaseAndDzLiftsAll) {
    SHAPEMODEL model = model_with_wheels();
    const SHAPEMODEL before = model;
    move_wheels(model, 0, 0.25, -0.5);
    for (std::size_t i = 8; i < 32; ++i) {
        const double side = before.verts[8 + (i - 8) / 6 * 6].y;
        EXPECT_EQ(model.verts[i].x, before.verts[i].x);
        EXPECT_EQ(model.verts[i].y, before.verts[i].y + (side < 0 ? -0.25 : 0.25)) << i;
        EXPECT_EQ(model.verts[i].z, before.verts[i].z - 0.5);
    }
}

TEST(MoveWheels, AWheelOnTheAxisMovesOnlyUpwards) {
    SHAPEMODEL model;
    add_wheel(model, 0, 0.5, 0);
    const SHAPEMODEL before = model;
    move_wheels(model, 3, 4, 5);
    for (std::size_t i = 0; i < 6; ++i)
        expect_point(model.verts[i], before.verts[i].x, before.verts[i].y, before.verts[i].z + 5);
}

TEST(MoveWheels, TheSideIsThatOfTheFirstPointBeforeTheWheelMoves) {
    SHAPEMODEL model;
    add_wheel(model, 0.25, -5, 0.25); // its other points lie on the other side
    move_wheels(model, -1, -1, 0);    // and it crosses the axis
    expect_point(model.verts[0], -0.75, -0.75, 0.25);
    expect_point(model.verts[3], -6, -0.75, 0.25);
    expect_point(model.verts[4], -6, -0.45, 0.25);
}

// ODDITY shared-wheel-vertex-moves-twice
TEST(MoveWheels, AVertexOfTwoWheelsMovesTwice) {
    SHAPEMODEL model;
    add_wheel(model, 1, 2);
    add_wheel(model, 3, 4);
    model.prims[1].vertex[5] = 5;
    move_wheels(model, 0.5, 0.25, 0.125);
    expect_point(model.verts[5], 2 + 2 * 0.5, 1 + 2 * 0.25, 0.25 + 0.2 + 2 * 0.125);
    expect_point(model.verts[4], 2.5, 1.3 + 0.25, 0.25 + 0.125);
}

TEST(MoveWheels, LeavesEverythingButWheels) {
    SHAPEMODEL model = model_with_wheels();
    add_triangle(model, {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}});
    const SHAPEMODEL before = model;
    move_wheels(model, 1, 1, 1);
    for (std::size_t i : {0U, 7U, 32U, 34U})
        EXPECT_TRUE(model.verts[i] == before.verts[i]);
    EXPECT_TRUE(model.prims == before.prims);
}

TEST(ResizeWheels, TheInnerFaceStaysAndTheOuterOneMoves) {
    SHAPEMODEL model = model_with_wheels();
    resize_wheels(model, 0.05, 0, 0);
    EXPECT_DOUBLE_EQ(wheel_point(model, 0, 0).x, -0.85);
    EXPECT_DOUBLE_EQ(wheel_point(model, 0, 3).x, -0.6);
    EXPECT_DOUBLE_EQ(wheel_point(model, 1, 0).x, 0.6);
    EXPECT_DOUBLE_EQ(wheel_point(model, 1, 3).x, 0.85);
}

TEST(ResizeWheels, GivesEveryPointAnewFromTheFirstOnesHeightAndPlace) {
    SHAPEMODEL model;
    add_wheel(model, 1, 1.5, -2, 0.5);
    model.verts[1] = {1, -2 + 3, 0.5 + 4}; // 5 away, in any direction
    model.verts[5] = {77, 77, 77};
    model.verts[2].mark = 3;
    resize_wheels(model, 0.25, 0.5, 0.75);
    expect_point(model.verts[0], 1, -2, 0.5);
    expect_point(model.verts[1], 1, -2 + 5.5, 0.5);
    expect_point(model.verts[2], 1, -2, 0.5 + 0.95);
    expect_point(model.verts[3], 1.75, -2, 0.5);
    expect_point(model.verts[4], 1.75, -2 + 5.5, 0.5);
    expect_point(model.verts[5], 1.75, -2, 0.5 + 0.95);
    EXPECT_EQ(model.verts[2].mark, 3);
}

TEST(ResizeWheels, APositiveWheelWithItsLargerXFirstIsPutInOrder) {
    SHAPEMODEL model;
    add_wheel(model, 1.5, 1);
    resize_wheels(model, 0, 0, 0);
    EXPECT_EQ(model.verts[0].x, 1);
    EXPECT_EQ(model.verts[3].x, 1.5);
}

// ODDITY wheel-on-axis-keeps-larger-x-first
TEST(ResizeWheels, AWheelExactlyOnTheAxisKeepsTheLargerXFirst) {
    SHAPEMODEL model;
    add_wheel(model, 0, -0.5);
    resize_wheels(model, 0.25, 0, 0);
    EXPECT_EQ(model.verts[0].x, 0);
    EXPECT_EQ(model.verts[3].x, -0.75);

    SHAPEMODEL other;
    add_wheel(other, -0.0, 0.5);
    resize_wheels(other, 0, 0, 0);
    EXPECT_EQ(other.verts[0].x, 0.5);
    EXPECT_EQ(other.verts[3].x, 0);
}

TEST(ResizeWheels, TheOldPlaceOfTheFirstPointDecidesThroughout) {
    SHAPEMODEL model;
    add_wheel(model, -0.5, 2); // P0 is negative, its inner face is not
    resize_wheels(model, 0, 0, 0);
    EXPECT_EQ(model.verts[0].x, -0.5);
    EXPECT_EQ(model.verts[3].x, 2);
}

TEST(Wheels, WithAnIndexPastTheVerticesArePassedOver) {
    SHAPEMODEL model = model_with_wheels();
    for (const std::uint16_t index : std::initializer_list<std::uint16_t>{32, 511, 512, 65535}) {
        SHAPEMODEL broken = model;
        broken.prims[1].vertex[4] = index;
        const SHAPEMODEL before = broken;
        move_wheels(broken, 1, 1, 1);
        resize_wheels(broken, 1, 1, 1);
        for (std::size_t i = 14; i < 20; ++i)
            EXPECT_TRUE(broken.verts[i] == before.verts[i]) << index;
        EXPECT_FALSE(broken.verts[8] == before.verts[8]);
    }
}

TEST(Wheels, CoordinatesThatAreNoNumbersFaultNothing) {
    for (const double odd : {not_a_number, infinite, -infinite}) {
        SHAPEMODEL model;
        add_wheel(model, odd, odd, odd, odd);
        move_wheels(model, 1, 1, 1);
        resize_wheels(model, 1, 1, 1);
        EXPECT_FALSE(std::isfinite(model.verts[0].y));
    }
    SHAPEMODEL model;
    add_wheel(model, not_a_number, 1, 2, 3);
    move_wheels(model, 1, 1, 1);
    EXPECT_TRUE(std::isnan(model.verts[0].x));
    EXPECT_EQ(model.verts[3].x, 1) << "no side, no move";
    EXPECT_EQ(model.verts[3].y, 3);
}
