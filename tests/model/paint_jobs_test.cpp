#include "model/paint_jobs.h"

#include "model/shading.h"
#include "support/models.h"

#include <gtest/gtest.h>

namespace {
constexpr ColourScheme scheme = {10, 20, 30, 40};

// The wheels, then one primitive a material.
SHAPEMODEL model_painted(std::initializer_list<int> materials) {
    SHAPEMODEL model = model_with_wheels();
    for (const int material : materials)
        add_primitive(model, 3, {}, static_cast<std::uint16_t>(material));
    return model;
}

std::vector<int> materials_of(const SHAPEMODEL& model, std::size_t job = 0) {
    std::vector<int> materials;
    for (const SHAPEPRIM& primitive : body_primitives(model))
        materials.push_back(primitive.material[job]);
    return materials;
}

std::vector<int> recoloured(SHAPEMODEL model) {
    recolour(model, 0, scheme);
    return materials_of(model);
}

using Materials = std::vector<int>;
} // namespace

TEST(RecolouredGroup, AnyBaseMaterialMakesItTheGroup200) {
    EXPECT_EQ(recoloured_group(model_painted({48, 49, 50, 51, 203}), 0), 200);
    EXPECT_EQ(recoloured_group(model_painted({200}), 0), 200);
    EXPECT_EQ(recoloured_group(model_painted({199, 204, 91}), 0), 88);
}

TEST(RecolouredGroup, OtherwiseItIsTheCommonestOfElevenGroups) {
    EXPECT_EQ(recoloured_group(model_painted({48, 52, 55, 91, 88}), 0), 52);
    EXPECT_EQ(recoloured_group(model_painted({48, 91, 88, 90}), 0), 88);
    EXPECT_EQ(recoloured_group(model_painted({47, 92, 47, 92, 60}), 0), 60);
}

TEST(RecolouredGroup, OfTwoEquallyCommonOnesItIsTheLower) {
    EXPECT_EQ(recoloured_group(model_painted({70, 68, 53, 52, 91}), 0), 52);
    EXPECT_EQ(recoloured_group(model_painted({91, 48}), 0), 48);
}

// ODDITY recolours-materials-0-to-3
TEST(RecolouredGroup, WithoutAnyGroupItIsThatOfTheMaterials0To3) {
    EXPECT_EQ(recoloured_group(model_painted({}), 0), 0);
    EXPECT_EQ(recoloured_group(model_painted({47, 92, 199, 204, 300}), 0), 0);
    EXPECT_EQ(recoloured(model_painted({0, 1, 2, 3, 4, 47, 300})), (Materials{10, 20, 30, 40, 4, 47, 300}));
}

TEST(RecolouredGroup, WheelsDoNotCount) {
    SHAPEMODEL model = model_painted({60});
    for (std::size_t wheel = 0; wheel < 4; ++wheel)
        model.prims[wheel].material.fill(202);
    EXPECT_EQ(recoloured_group(model, 0), 60);
}

TEST(RecolouredGroup, FollowsThePaintJob) {
    SHAPEMODEL model = model_painted({60});
    model.prims[4].material[16] = 201;
    EXPECT_EQ(recoloured_group(model, 0), 60);
    EXPECT_EQ(recoloured_group(model, 16), 200);
}

TEST(Recolour, EachShadeBecomesTheSchemesOfTheSameRank) {
    EXPECT_EQ(recoloured(model_painted({53, 52, 55, 54, 56, 51, 200 + 4})), (Materials{20, 10, 40, 30, 56, 51, 204}));
}

TEST(Recolour, AShadedModelIsRecolouredAsTheGroup200WhateverElseItHolds) {
    SHAPEMODEL model = model_with_wheels();
    add_triangle(model, {{{0, 0, 1}, {1, 0, 1}, {0, 1, 1}}});
    add_triangle(model, {{{0, 0, 1}, {0, 1, 1}, {1, 0, 1}}});
    for (int i = 0; i < 20; ++i)
        add_primitive(model, primitive_type::line, {0, 0}, 60);
    shade_by_facing(model, 0);
    EXPECT_EQ(recolour(model, 0, scheme), 2);
    const Materials materials = materials_of(model);
    EXPECT_EQ(materials[0], 10);
    EXPECT_EQ(materials[1], 40);
    EXPECT_EQ(std::count(materials.begin(), materials.end(), 60), 20);
}

TEST(Recolour, TellsHowManyPrimitivesItChanged) {
    SHAPEMODEL model = model_painted({53, 52, 55, 54, 56, 51});
    EXPECT_EQ(recolour(model, 0, scheme), 4);
    SHAPEMODEL none = model_painted({100, 101, 4});
    EXPECT_EQ(recolour(none, 0, scheme), 0);
    EXPECT_EQ(materials_of(none), (Materials{100, 101, 4}));
}

TEST(Recolour, AMaterialIsReplacedOnceEvenWhereTheSchemeStaysInTheGroup) {
    SHAPEMODEL model = model_painted({52, 53, 54, 55});
    recolour(model, 0, {53, 54, 55, 52});
    EXPECT_EQ(materials_of(model), (Materials{53, 54, 55, 52}));
}

TEST(Recolour, WheelsOtherPaintJobsAndPrimitivesPastTheCountStay) {
    SHAPEMODEL model = model_painted({52, 52});
    model.prims[0].material.fill(52);
    model.nprims = 5;
    const SHAPEMODEL before = model;
    recolour(model, 3, scheme);
    for (std::size_t job = 0; job < 17; ++job)
        EXPECT_EQ(model.prims[4].material[job], job == 3 ? 10 : 52);
    EXPECT_TRUE(model.prims[0] == before.prims[0] && model.prims[5] == before.prims[5]);
}

TEST(PaintJobsOfAModel, AreCopiedAndRemovedForEveryPrimitiveInUse) {
    SHAPEMODEL model;
    for (int i = 0; i < 3; ++i)
        add_primitive(model, 0, {}).material = {1, 2, 3, 4, 5};
    model.nprims = 2;
    copy_paint_job(model, 1, 5);
    using Row = std::array<std::uint16_t, max_paint_jobs>;
    EXPECT_EQ(model.prims[0].material, (Row{1, 2, 3, 4, 5, 2}));
    EXPECT_EQ(model.prims[2].material, (Row{1, 2, 3, 4, 5}));
    remove_paint_job(model, 1, 5);
    EXPECT_EQ(model.prims[1].material, (Row{1, 3, 4, 5, 5, 2})) << "what lies behind the paint jobs stays";
    EXPECT_EQ(model.prims[2].material, (Row{1, 2, 3, 4, 5}));
    remove_paint_job(model, 16, 17);
    EXPECT_EQ(model.prims[1].material, (Row{1, 3, 4, 5, 5, 2}));
}
