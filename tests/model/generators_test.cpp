// The procedures on the car's tables: which slot they act on, and what they say of it.
#include "model/generators.h"

#include "model/body.h"
#include "model/car.h"
#include "model/paint_jobs.h"
#include "model/parameters.h"
#include "model/shading.h"
#include "support/models.h"

#include <gtest/gtest.h>

namespace {
SHAPEMODEL small_car(double height = 1) {
    SHAPEMODEL model = model_with_wheels();
    add_triangle(model, {{{0, 0, height}, {0, 1, height}, {1, 0, height}}}, 60);
    return model;
}

class Generators : public testing::Test {
protected:
    Generators() {
        for (auto& model : CAR)
            model = small_car();
        CURMODEL = 3;
        before_ = CAR;
    }
    // The slot looked at is what `change` makes of a model, and no other slot changed.
    void expect_only_current_slot_changed(auto&& change) {
        SHAPEMODEL expected = *before_[3];
        change(expected);
        EXPECT_FALSE(expected == *before_[3]);
        for (std::size_t slot = 0; slot < car_slots; ++slot)
            EXPECT_TRUE(*CAR[slot] == (slot == 3 ? expected : *before_[slot])) << slot;
    }

    std::array<Shared<SHAPEMODEL>, car_slots> before_;
};

// Alternately 0 and a number that chooses the triangle of a small car.
UnitRandom miss_and_hit() {
    return [hit = true]() mutable { return (hit = !hit) ? 0.9 : 0.0; };
}
// More picks than four pieces need.
TimeIsUp patience() {
    return [asked = 0]() mutable { return ++asked > 10000; };
}
} // namespace

TEST_F(Generators, MovecarMovesTheCurrentSlot) {
    MOVECAR(1, 2, 3);
    expect_only_current_slot_changed([](SHAPEMODEL& model) { move_body(model, 1, 2, 3); });
}

TEST_F(Generators, MovewheelsMovesTheCurrentSlot) {
    MOVEWHEELS(1, 2, 3);
    expect_only_current_slot_changed([](SHAPEMODEL& model) { move_wheels(model, 1, 2, 3); });
}

TEST_F(Generators, ResizewheelsChangesTheCurrentSlot) {
    RESIZEWHEELS(1, 2, 3);
    expect_only_current_slot_changed([](SHAPEMODEL& model) { resize_wheels(model, 1, 2, 3); });
}

TEST_F(Generators, AutoshadeShadesTheCurrentPaintJobOfTheCurrentSlot) {
    CURPJ = 6;
    AUTOSHADE();
    EXPECT_EQ(CAR[3]->prims[4].material[6], 203);
    expect_only_current_slot_changed([](SHAPEMODEL& model) { shade_by_facing(model, 6); });
}

TEST_F(Generators, GeneratewheelsAndTheBoxActOnTheSlotGiven) {
    CAR[2] = CAR[3] = SHAPEMODEL{};
    GENERATEWHEELS(3);
    GENERATEBOUNDINGBOX(3);
    SHAPEMODEL expected = model_with_wheels();
    fit_bounding_box(expected);
    EXPECT_TRUE(*CAR[3] == expected);
    EXPECT_TRUE(*CAR[2] == SHAPEMODEL{});
}

TEST_F(Generators, GenerateinfoTakesTheGamesModelWhateverIsLookedAt) {
    CAR[3] = small_car(7);
    EXPECT_TRUE(GENERATEINFO(true, true));
    EXPECT_EQ(par_word(202), 25);
    EXPECT_EQ(par_word(216), 1120);
    for (std::size_t slot = 0; slot < car_slots; ++slot)
        EXPECT_TRUE(slot == 3 || *CAR[slot] == *before_[slot]);
}

TEST_F(Generators, GenerateinfoFillsOnlyWhatIsAskedFor) {
    EXPECT_TRUE(GENERATEINFO(false, false));
    EXPECT_EQ(par_word(202) + par_word(216), 0);
    EXPECT_TRUE(GENERATEINFO(true, false));
    EXPECT_EQ(par_word(202), 25);
    EXPECT_EQ(par_word(216), 0);
    reset_parameters();
    EXPECT_TRUE(GENERATEINFO(false, true));
    EXPECT_EQ(par_word(202), 0);
    EXPECT_EQ(par_word(216), 1120);
}

TEST_F(Generators, GenerateinfoWithoutWheelsFillsTheDimensionsAndSaysSo) {
    CAR[1].edit().prims[1].type = primitive_type::triangle;
    set_par_word(216, 77);
    EXPECT_FALSE(GENERATEINFO(true, true));
    EXPECT_EQ(par_word(202), 25);
    EXPECT_EQ(par_word(216), 77);
    EXPECT_TRUE(GENERATEINFO(true, false)) << "the wheels were not asked for";
}

TEST_F(Generators, GeneratedebrisMakesFourPiecesOfTheGamesModel) {
    PAINTJOBS = 2;
    const DebrisReport report = GENERATEDEBRIS(miss_and_hit(), patience());
    EXPECT_EQ(report.pieces, 4);
    EXPECT_FALSE(report.nothing_fits);
    SHAPEMODEL expected;
    make_debris(*CAR[1], 4, 2, expected);
    for (const auto& piece : CEXP)
        EXPECT_TRUE(*piece == expected);
    EXPECT_TRUE(CAR == before_);
}

TEST_F(Generators, GeneratedebrisLeavesTheRemainingPiecesWhenTheTimeIsUp) {
    CEXP[2] = CEXP[3] = small_car(9);
    int picks = 0;
    const DebrisReport report = GENERATEDEBRIS(miss_and_hit(), [&picks] { return ++picks > 5; });
    EXPECT_EQ(report.pieces, 2); // a miss and a hit each, then one more miss
    EXPECT_FALSE(report.nothing_fits);
    EXPECT_EQ(CEXP[1]->nprims, 1);
    EXPECT_TRUE(*CEXP[2] == small_car(9) && *CEXP[3] == small_car(9));
}

TEST_F(Generators, GeneratedebrisOfNothingThatFitsEndsAtOnceAndSaysSo) {
    CAR[1] = model_with_wheels();
    CEXP[0] = small_car(9);
    const DebrisReport report = GENERATEDEBRIS([] { return 0.5; }, patience());
    EXPECT_EQ(report.pieces, 0);
    EXPECT_TRUE(report.nothing_fits);
    EXPECT_TRUE(*CEXP[0] == small_car(9));
}
