#include "model/car.h"
#include "model/document.h"

#include <gtest/gtest.h>

namespace {
class Car : public testing::Test {};

// A model whose every field, those past the counts included, differs from a new one.
SHAPEMODEL full_model() {
    SHAPEMODEL model;
    model.nverts = 3;
    model.nprims = 2;
    for (std::size_t i = 0; i < shape_capacity; ++i) {
        const auto number = static_cast<std::uint16_t>(i + 1);
        model.verts[i] = {number + 0.25, number + 0.5, number + 0.75, 1};
        model.prims[i].type = 12;
        model.prims[i].vertex.fill(number);
        model.prims[i].material.fill(number);
        model.prims[i].cull1 = number;
        model.prims[i].cull2 = number + 1U;
        model.prims[i].flags = 2;
        model.prims[i].mark = 3;
    }
    return model;
}
} // namespace

TEST_F(Car, StartsEmptyWithSevenPaintJobs) {
    CAR[4] = full_model();
    CEXP[3] = CARCLIP = WFCAR = full_model();
    VCAR.nverts = VCAR.ntris = 1;
    CURMODEL = 4;
    PAINTJOBS = 17;
    CURPJ = 16;
    reset_car();
    for (const Shared<SHAPEMODEL>& model : CAR)
        EXPECT_TRUE(*model == SHAPEMODEL{});
    for (const Shared<SHAPEMODEL>& model : CEXP)
        EXPECT_TRUE(*model == SHAPEMODEL{});
    EXPECT_TRUE(*CARCLIP == SHAPEMODEL{} && WFCAR == SHAPEMODEL{});
    EXPECT_EQ(VCAR.nverts + VCAR.ntris, 0);
    EXPECT_EQ(PAINTJOBS, 7);
    EXPECT_EQ(CURMODEL, 0);
    EXPECT_EQ(CURPJ, 0);
}

TEST_F(Car, ClipboardKeepsEveryFieldPastTheCountsToo) {
    CAR[1] = full_model();
    CARCLIP = CAR[1];
    CAR[1] = {};
    CAR[1] = CARCLIP;
    EXPECT_TRUE(*CAR[1] == full_model());
    EXPECT_EQ(CAR[1]->prims[511].vertex[11], 512);
}

TEST_F(Car, PrimitivesUseTheVerticesOfTheirType) {
    EXPECT_EQ(primitive_vertex_count(0), 0);
    for (int type = 1; type <= 10; ++type)
        EXPECT_EQ(primitive_vertex_count(type), type);
    EXPECT_EQ(primitive_vertex_count(11), 2);
    EXPECT_EQ(primitive_vertex_count(12), 6);
    for (int type = 13; type <= 255; ++type)
        EXPECT_EQ(primitive_vertex_count(type), 0);
    EXPECT_EQ(primitive_vertex_count(-1), 0);
}

// ODDITY scales-differ-per-slot
TEST_F(Car, ScalesAreExact) { EXPECT_EQ(CARSCALE, (std::array<double, 4>{0.002, 0.04, 0.05, 0.000625})); }

TEST_F(Car, PaintJobsAreHeldWithinOneAndSeventeen) {
    for (const int wanted : {1, 7, 17}) {
        PAINTJOBS = static_cast<std::uint8_t>(wanted);
        settle_paint_jobs();
        EXPECT_EQ(PAINTJOBS, wanted);
    }
    PAINTJOBS = 0;
    settle_paint_jobs();
    EXPECT_EQ(PAINTJOBS, 1);
    PAINTJOBS = 255;
    settle_paint_jobs();
    EXPECT_EQ(PAINTJOBS, 17);
}

TEST_F(Car, ShownPaintJobIsHeldBelowTheCount) {
    PAINTJOBS = 3;
    CURPJ = 2;
    settle_paint_jobs();
    EXPECT_EQ(CURPJ, 2);
    CURPJ = 3;
    settle_paint_jobs();
    EXPECT_EQ(CURPJ, 0);
}

TEST_F(Car, SlotsHaveTheNamesOfTheScreen) {
    const std::array<const char*, 5> labels = {"Showroom", "Game", "Intro", "Aux 1", "Aux 2"};
    for (int slot = 0; slot < car_slots; ++slot)
        EXPECT_EQ(slot_label(slot), labels[static_cast<std::size_t>(slot)]);
}
