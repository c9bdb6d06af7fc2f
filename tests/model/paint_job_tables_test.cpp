// Adding and removing a paint job of the car.
#include "model/car.h"
#include "model/paint_jobs.h"
#include "support/models.h"

#include <gtest/gtest.h>

namespace {
// Every model has one primitive more than its wheels; its materials name the model and the paint job.
class PaintJobs : public testing::Test {
protected:
    PaintJobs() {
        for (std::size_t slot = 0; slot < car_slots; ++slot)
            CAR[slot] = numbered(static_cast<int>(slot));
        for (std::size_t k = 0; k < explosion_models; ++k)
            CEXP[k] = numbered(5 + static_cast<int>(k));
    }

    static SHAPEMODEL numbered(int model) {
        SHAPEMODEL result;
        SHAPEPRIM& primitive = add_primitive(result, 0, {});
        for (std::size_t job = 0; job < max_paint_jobs; ++job)
            primitive.material[job] = static_cast<std::uint16_t>(100 * model + static_cast<int>(job));
        return result;
    }
    static int material(std::size_t slot, std::size_t job) { return CAR[slot]->prims[0].material[job]; }

    static void expect_others_unchanged() {
        EXPECT_TRUE(*CAR[3] == numbered(3) && *CAR[4] == numbered(4));
        for (std::size_t k = 0; k < explosion_models; ++k)
            EXPECT_TRUE(*CEXP[k] == numbered(5 + static_cast<int>(k)));
    }
};
} // namespace

TEST_F(PaintJobs, AnAddedOneIsACopyOfTheCurrentOneAndBecomesIt) {
    CURPJ = 2;
    EXPECT_TRUE(add_paint_job());
    EXPECT_EQ(PAINTJOBS, 8);
    EXPECT_EQ(CURPJ, 7);
    for (const std::size_t slot : {0U, 1U, 2U})
        for (std::size_t job = 0; job < max_paint_jobs; ++job)
            EXPECT_EQ(material(slot, job), 100 * static_cast<int>(slot) + static_cast<int>(job == 7 ? 2 : job));
}

// ODDITY paint-jobs-of-three-slots
TEST_F(PaintJobs, AuxiliarySlotsAndPiecesKeepTheirs) {
    CURPJ = 2;
    ASSERT_TRUE(add_paint_job());
    expect_others_unchanged();
    CURPJ = 0;
    ASSERT_TRUE(remove_current_paint_job());
    expect_others_unchanged();
}

TEST_F(PaintJobs, WithSixteenNoneIsAdded) {
    for (const int jobs : {16, 17}) {
        PAINTJOBS = static_cast<std::uint8_t>(jobs);
        CURPJ = 3;
        EXPECT_FALSE(add_paint_job());
        EXPECT_EQ(PAINTJOBS, jobs);
        EXPECT_EQ(CURPJ, 3);
        EXPECT_TRUE(*CAR[0] == numbered(0));
    }
    PAINTJOBS = 15;
    EXPECT_TRUE(add_paint_job());
    EXPECT_EQ(PAINTJOBS, 16);
    EXPECT_EQ(CURPJ, 15);
}

TEST_F(PaintJobs, ARemovedOneLetsThoseBehindItMoveDown) {
    CURPJ = 2;
    EXPECT_TRUE(remove_current_paint_job());
    EXPECT_EQ(PAINTJOBS, 6);
    EXPECT_EQ(CURPJ, 2);
    for (const std::size_t slot : {0U, 1U, 2U})
        for (int job = 0; job < 7; ++job) // the seventh place is behind the paint jobs now and stays
            EXPECT_EQ(material(slot, static_cast<std::size_t>(job)),
                      100 * static_cast<int>(slot) + (job >= 2 && job < 6 ? job + 1 : job));
}

TEST_F(PaintJobs, RemovingTheLastOneLeavesTheNewLastOneCurrent) {
    CURPJ = 6;
    EXPECT_TRUE(remove_current_paint_job());
    EXPECT_EQ(PAINTJOBS, 6);
    EXPECT_EQ(CURPJ, 5);
    EXPECT_TRUE(*CAR[0] == numbered(0));
}

TEST_F(PaintJobs, TheOnlyOneIsNotRemoved) {
    PAINTJOBS = 1;
    EXPECT_FALSE(remove_current_paint_job());
    EXPECT_EQ(PAINTJOBS, 1);
    EXPECT_EQ(CURPJ, 0);
    EXPECT_TRUE(*CAR[0] == numbered(0));
}

TEST_F(PaintJobs, AFilesSeventeenthCanBeRemoved) {
    PAINTJOBS = 17;
    CURPJ = 15;
    EXPECT_TRUE(remove_current_paint_job());
    EXPECT_EQ(PAINTJOBS, 16);
    EXPECT_EQ(CURPJ, 15);
    EXPECT_EQ(material(1, 15), 116);
}

TEST_F(PaintJobs, AddingAndRemovingGivesTheSameCar) {
    CURPJ = 2;
    add_paint_job();
    remove_current_paint_job();
    EXPECT_EQ(PAINTJOBS, 7);
    EXPECT_EQ(CURPJ, 6);
    for (int job = 0; job < 7; ++job)
        EXPECT_EQ(material(1, static_cast<std::size_t>(job)), 100 + job);
}
