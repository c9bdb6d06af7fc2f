#include "model/dimensions.h"

#include "support/models.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

SHAPEMODEL model_of(std::initializer_list<SHAPEVERTEX> vertices) {
    SHAPEMODEL model;
    for (const SHAPEVERTEX& vertex : vertices)
        add_vertex(model, vertex.x, vertex.y, vertex.z);
    return model;
}

struct Dimensions {
    int half_width, height, half_length, radius;
    bool operator==(const Dimensions&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Dimensions& d) {
    return out << d.half_width << " x " << d.height << " x " << d.half_length << ", radius " << d.radius;
}

Dimensions dimensions_of(const SHAPEMODEL& model) {
    ParameterBlock par{};
    store_dimensions(model, par);
    return {word_of(par, 200), word_of(par, 202), word_of(par, 204), word_of(par, 206)};
}

// The words of the four wheels: across, unknown, along.
std::array<int, 12> wheel_words(const ParameterBlock& par) {
    std::array<int, 12> words{};
    for (int i = 0; i < 12; ++i)
        words[static_cast<std::size_t>(i)] = word_of(par, 210 + 2 * i);
    return words;
}

void place_wheel(SHAPEMODEL& model, std::size_t wheel, double x, double other_x, double y) {
    model.verts[model.prims[wheel].vertex[0]] = {x, 99, 99};
    model.verts[model.prims[wheel].vertex[3]] = {other_x, y, 99};
}
} // namespace

TEST(Dimensions, AreTheReachOfTheModelInUnitsOfFourHundredths) {
    const SHAPEMODEL model = model_of({{1, 2, 0.52}, {-0.8, -1.6, 0.3}});
    EXPECT_EQ(dimensions_of(model), (Dimensions{25, 13, 50, 60}));
}

TEST(Dimensions, WidthAndLengthTakeTheFartherSide) {
    const Dimensions d = dimensions_of(model_of({{0.4, 0.8, 0}, {-2, -4, 0}}));
    EXPECT_EQ(d.half_width, 50);
    EXPECT_EQ(d.half_length, 100);
}

// ODDITY radius-of-plain-maxima
TEST(Dimensions, TheRadiusTakesTheGreatestCoordinatesAndNotTheFarthest) {
    EXPECT_EQ(dimensions_of(model_of({{0, 0, 4}, {-30, -40, -50}})).radius, 105);
    EXPECT_EQ(dimensions_of(model_of({{3, 4, 0}})).radius, 131);                        // 5 x 1.05 / 0.04 = 131.25
    EXPECT_EQ(dimensions_of(model_of({{-3, -4, -12}})).radius, 0);                      // every bound starts from 0
    EXPECT_EQ(dimensions_of(model_of({{3, 0, 0}, {0, 4, 0}, {0, 0, 12}})).radius, 341); // 341.25
}

TEST(Dimensions, NothingBelowTheRoadAndNothingAtAllIsZero) {
    EXPECT_EQ(dimensions_of(model_of({{0, 0, -5}})).height, 0);
    EXPECT_EQ(dimensions_of({}), (Dimensions{0, 0, 0, 0}));
}

TEST(Dimensions, HalvesGoToTheEvenNumber) {
    const auto height = [](double units) { return dimensions_of(model_of({{0, 0, units * 0.04}})).height; };
    EXPECT_EQ(height(12.5), 12);
    EXPECT_EQ(height(13.5), 14);
    EXPECT_EQ(height(12.51), 13);
}

TEST(Dimensions, CountTheBoxAsWell) {
    SHAPEMODEL model = model_with_wheels();
    model.verts[0] = {-40, 0, 0};
    EXPECT_EQ(dimensions_of(model).half_width, 1000);
}

TEST(Dimensions, NumbersBeyondSixteenBitsKeepTheirLowOnesAndNoNumbersAreZero) {
    EXPECT_EQ(dimensions_of(model_of({{65537 * 0.04, 0, 0}})).half_width, 1);
    EXPECT_EQ(dimensions_of(model_of({{infinite, 0, 0}})), (Dimensions{0, 0, 0, 0}));
    EXPECT_EQ(dimensions_of(model_of({{not_a_number, 4, not_a_number}})), (Dimensions{0, 0, 100, 105}));
}

TEST(Dimensions, ChangeNoOtherByte) {
    ParameterBlock par;
    par.fill(std::byte{0xAA});
    store_dimensions(model_of({{1, 2, 3}}), par);
    for (std::size_t i = 0; i < par.size(); ++i)
        if (i < 200 || i >= 208) {
            ASSERT_EQ(par[i], std::byte{0xAA}) << i;
        }
}

TEST(WheelPositions, ComeFromTheMiddleOfTheFacesAndTheOthersMirrorFrontToBack) {
    SHAPEMODEL model = model_with_wheels();
    ParameterBlock par{};
    ASSERT_TRUE(store_wheel_positions(model, par));
    const int left = 65536 - 1120, back = 65536 - 2080; // 0.7 / 0.000625 and 1.3 / 0.000625
    EXPECT_EQ(wheel_words(par), (std::array<int, 12>{left, 0, back, 1120, 0, back, 1120, 0, 2080, left, 0, 2080}));
}

TEST(WheelPositions, AlongIsThatOfTheOtherFaceAndOfTheFirstTwoWheelsOnly) {
    SHAPEMODEL model = model_with_wheels();
    place_wheel(model, 0, -1, -0.5, -2);
    place_wheel(model, 1, 0.25, 0.5, -1);
    place_wheel(model, 2, 30, 30, 30);
    place_wheel(model, 3, 30, 30, 30);
    ParameterBlock par{};
    ASSERT_TRUE(store_wheel_positions(model, par));
    EXPECT_EQ(wheel_words(par), (std::array<int, 12>{65536 - 1200, 0, 65536 - 3200, 600, 0, 65536 - 1600, 600, 0, 1600,
                                                     65536 - 1200, 0, 3200}));
}

TEST(WheelPositions, HalvesGoToTheEvenNumberAndTheWordsBetweenStay) {
    SHAPEMODEL model = model_with_wheels();
    place_wheel(model, 0, 0, 5 * 0.000625, 2.5 * 0.000625);
    place_wheel(model, 1, 0, 7 * 0.000625, 3.5 * 0.000625);
    ParameterBlock par;
    par.fill(std::byte{0xAA});
    ASSERT_TRUE(store_wheel_positions(model, par));
    EXPECT_EQ(wheel_words(par), (std::array<int, 12>{2, 0xAAAA, 2, 4, 0xAAAA, 4, 4, 0xAAAA, 65532, 2, 0xAAAA, 65534}));
    for (std::size_t i = 0; i < par.size(); ++i)
        if (i < 210 || i >= 234) {
            ASSERT_EQ(par[i], std::byte{0xAA}) << i;
        }
}

TEST(WheelPositions, WithoutWheelsTheWordsStay) {
    ParameterBlock par;
    par.fill(std::byte{0xAA});
    const ParameterBlock before = par;
    EXPECT_FALSE(store_wheel_positions({}, par));
    for (const std::size_t wheel : {0U, 1U}) {
        SHAPEMODEL model = model_with_wheels();
        model.prims[wheel].type = primitive_type::triangle;
        EXPECT_FALSE(store_wheel_positions(model, par));
        model = model_with_wheels();
        model.prims[wheel].vertex[5] = 32;
        EXPECT_FALSE(store_wheel_positions(model, par));
        model = model_with_wheels();
        model.nprims = static_cast<std::uint16_t>(wheel);
        EXPECT_FALSE(store_wheel_positions(model, par));
    }
    EXPECT_EQ(par, before);

    SHAPEMODEL model = model_with_wheels();
    model.prims[2].type = model.prims[3].type = 0;
    EXPECT_TRUE(store_wheel_positions(model, par)) << "the other two are mirrors";
}

TEST(WheelPositions, NoNumbersAreZero) {
    SHAPEMODEL model = model_with_wheels();
    place_wheel(model, 0, not_a_number, 1, infinite);
    place_wheel(model, 1, 1e300, 1e300, -1e300);
    ParameterBlock par{};
    ASSERT_TRUE(store_wheel_positions(model, par));
    EXPECT_EQ(word_of(par, 210), 0);
    EXPECT_EQ(word_of(par, 214), 0);
    EXPECT_EQ(word_of(par, 232), 0);
}
