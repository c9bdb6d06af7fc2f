#include "formats/shape_file.h"

#include <gtest/gtest.h>
#include <limits>

namespace {
constexpr double game_scale = 0.04;

std::int16_t as_read(double coordinate, double scale) {
    return static_cast<std::int16_t>(file_coordinate(coordinate, scale));
}
} // namespace

TEST(ShapeCoordinate, IsRoundedToTheNearestWholeNumberTiesToEven) {
    EXPECT_EQ(file_coordinate(0.05, game_scale), 1);
    EXPECT_EQ(file_coordinate(0.06, game_scale), 2);
    EXPECT_EQ(file_coordinate(0.1, game_scale), 2);
    EXPECT_EQ(file_coordinate(0.02, game_scale), 0);
    EXPECT_EQ(as_read(-0.05, game_scale), -1);
    EXPECT_EQ(as_read(-0.06, game_scale), -2);
    EXPECT_EQ(as_read(-0.02, game_scale), 0);
}

TEST(ShapeCoordinate, EveryFileNumberComesBackInEveryScale) {
    for (int model = 0; model < shape_file_models; ++model)
        for (int units = INT16_MIN; units <= INT16_MAX; ++units)
            ASSERT_EQ(as_read(units * shape_scale(model), shape_scale(model)), units) << "model " << model;
}

TEST(ShapeCoordinate, KeepsTheLowSixteenBitsOfAnyWholeNumber) {
    EXPECT_EQ(file_coordinate(32768, 1), 0x8000);
    EXPECT_EQ(file_coordinate(65535, 1), 0xFFFF);
    EXPECT_EQ(file_coordinate(65537, 1), 1);
    EXPECT_EQ(file_coordinate(-65537, 1), 0xFFFF);
    EXPECT_EQ(file_coordinate(4294967296.0 + 7, 1), 7);
    EXPECT_EQ(file_coordinate(9007199254740991.0, 1), 0xFFFF);
    EXPECT_EQ(file_coordinate(1e300, 1), 0); // a multiple of a large power of two
}

TEST(ShapeCoordinate, WhatIsNoNumberIsZero) {
    EXPECT_EQ(file_coordinate(std::numeric_limits<double>::quiet_NaN(), game_scale), 0);
    EXPECT_EQ(file_coordinate(std::numeric_limits<double>::infinity(), game_scale), 0);
    EXPECT_EQ(file_coordinate(-std::numeric_limits<double>::infinity(), game_scale), 0);
    EXPECT_EQ(file_coordinate(std::numeric_limits<double>::max(), game_scale), 0); // the quotient is infinite
}

TEST(ShapeCoordinate, EachModelHasTheScaleOfItsSlot) {
    const std::array<double, shape_file_models> scales = {0.002, 0.04, 0.05, 0.04, 0.04, 0.04, 0.04};
    const std::array<const char*, shape_file_models> ids = {"car0", "car1", "car2", "exp0", "exp1", "exp2", "exp3"};
    for (int model = 0; model < shape_file_models; ++model) {
        EXPECT_EQ(shape_scale(model), scales[static_cast<std::size_t>(model)]);
        EXPECT_EQ(shape_id(model), ids[static_cast<std::size_t>(model)]);
    }
}
