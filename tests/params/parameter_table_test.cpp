#include "model/document.h"
#include "model/power_gear.h"
#include "params/parameter_table.h"

#include "model/parameters.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace {

class ParameterTable : public testing::Test {
protected:
    void SetUp() override { INITPARAMTARGETS(); }
    static int mass() { return par_word(2); }
    static int mass_after_choosing(int option, int mass_before) {
        set_par_word(2, static_cast<std::uint16_t>(mass_before));
        POWERGEAR = option;
        UPDATEPG(true);
        return mass();
    }
};

struct Expected {
    int row;
    const char* label;
    int label_x, label_y, width, type, offset, maximum, new_car;
};

const std::vector<Expected> expected_rows = {
    {1, "Mass", 25, 102, 30, 2, 2, 65535, 20},
    {2, "Powergear", 25, 118, 30, 0, -1, 4, 0},
    {3, "Brakes", 25, 134, 30, 2, 4, 65535, 300},
    {4, "Air drag", 25, 150, 30, 2, 56, 65535, 30},
    {5, "C. height", 25, 166, 30, 2, 208, 65535, 18},
    {6, "Intrinsic", 335, 70, 20, 2, 164, 65535, 400},
    {7, "On asphalt", 335, 86, 20, 2, 182, 65535, 256},
    {8, "On dirt", 335, 102, 20, 2, 184, 65535, 192},
    {9, "On ice", 335, 118, 20, 2, 186, 65535, 64},
    {10, "On grass", 335, 134, 20, 2, 188, 65535, 128},
    {11, "Airborne", 335, 150, 20, 2, 180, 65535, 0},
    {12, "Gears", 545, 70, 20, 1, 0, 6, 5},
    {13, "1st ratio", 545, 86, 20, 2, 16, 65535, 30000},
    {14, "2nd ratio", 545, 102, 20, 2, 18, 65535, 20000},
    {15, "3th ratio", 545, 118, 20, 2, 20, 65535, 15000},
    {16, "4th ratio", 545, 134, 20, 2, 22, 65535, 10000},
    {17, "5th ratio", 545, 150, 20, 2, 24, 65535, 5000},
    {18, "6th ratio", 545, 166, 20, 2, 26, 65535, 0},
    {19, "Purple", 755, 70, 20, 1, 1, 255, 0},
    {20, "Yellow", 755, 86, 20, 2, 14, 65535, 0},
    {21, "Blue", 755, 102, 20, 2, 162, 65535, 0},
    {22, "Red #1", 755, 118, 20, 2, 166, 65535, 238},
    {23, "Red #2", 755, 134, 20, 2, 168, 65535, 184},
    {24, "Red #3", 755, 150, 20, 2, 170, 65535, 0},
    {25, "Red #4", 755, 166, 20, 2, 172, 65535, 32},
    {26, "Red #5", 755, 182, 20, 2, 174, 65535, 16},
    {27, "Red #6", 755, 198, 20, 2, 176, 65535, 12},
    {28, "Red #7", 755, 214, 20, 2, 178, 65535, 8},
    {29, "Orange #1", 755, 230, 20, 2, 190, 65535, 0},
    {30, "Orange #2", 755, 246, 20, 2, 192, 65535, 32},
    {31, "Orange #3", 755, 262, 20, 2, 194, 65535, 192},
    {32, "Orange #4", 755, 278, 20, 2, 196, 65535, 128},
    {33, "Orange #5", 755, 294, 20, 2, 198, 65535, 64},
    {34, "Car name", 25, 70, 30, 3, 208, 21, 0},
    {35, "Sign name", 25, 86, 30, 4, 208, 4, 0},
    {36, "Idle RPM", 755, 70, 25, 2, 6, 65535, 1000},
    {37, "Downshift RPM", 755, 86, 25, 2, 8, 65535, 2000},
    {38, "Upshift RPM", 755, 102, 25, 2, 10, 65535, 9000},
    {39, "Maximum RPM", 755, 118, 25, 2, 12, 65535, 10000},
};

// The class by whole numbers alone: the fraction of 65536 / mass is remainder / mass.
int class_by_remainder(int mass) {
    if (mass == 0) return 0;
    const int remainder = 65536 % mass;
    if (remainder == 0) return 4;
    if (6 * remainder <= mass) return 0;
    if (2 * remainder <= mass) return 1;
    if (6 * remainder <= 5 * mass) return 3;
    return 2;
}

// The mass that choosing a class leads to, by looking at every mass there is.
int nearest_by_scan(int mass, int wanted) {
    int above = 65535, below = -1;
    for (int candidate = 65535; candidate >= mass; --candidate)
        if (class_by_remainder(candidate) == wanted) above = candidate;
    for (int candidate = 0; candidate <= mass; ++candidate)
        if (class_by_remainder(candidate) == wanted) below = candidate;
    if (below < 0) return above;
    return above - mass <= mass - below ? above : below;
}

} // namespace

TEST_F(ParameterTable, HasEveryRow) { // ODDITY third-ratio-label
    ASSERT_EQ(expected_rows.size(), 39U);
    for (const Expected& expected : expected_rows) {
        SCOPED_TRACE(expected.label);
        const PARAMINPUT& target = PTARGET[expected.row];
        EXPECT_EQ(target.label, expected.label);
        EXPECT_EQ(target.label_x, expected.label_x);
        EXPECT_EQ(target.label_y, expected.label_y);
        EXPECT_EQ(target.value_x, expected.label_x + (expected.row >= 36 ? 120 : 96));
        EXPECT_EQ(target.value_y, expected.label_y);
        EXPECT_EQ(target.width, expected.width);
        EXPECT_EQ(target.minimum, 0);
        EXPECT_EQ(target.maximum, expected.maximum);
        EXPECT_EQ(target.offset, expected.offset);
        EXPECT_EQ(target.type, expected.type);
        EXPECT_EQ(target.unit, expected.row == 1 ? "kg" : "");
        EXPECT_EQ(target.factor, expected.row == 1 ? 43.7F : 0.0F);
        EXPECT_EQ(target.option_base, 0);
    }
}

TEST_F(ParameterTable, StoresANewCar) {
    std::array<std::byte, parameter_bytes> expected{};
    for (const Expected& row : expected_rows) {
        if (row.type != 1 && row.type != 2) continue;
        expected[static_cast<std::size_t>(row.offset)] = static_cast<std::byte>(row.new_car & 0xFF);
        if (row.type == 2)
            expected[static_cast<std::size_t>(row.offset) + 1] = static_cast<std::byte>(row.new_car >> 8);
    }
    EXPECT_EQ(PAR, expected);
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(CARSIGNNAME, "New!");
    EXPECT_EQ(CARINFO, "New car]");
}

TEST_F(ParameterTable, TheRowsPastTheLastStayEmpty) {
    PTARGET[77].label = "left over";
    INITPARAMTARGETS();
    for (int row = 40; row <= 100; ++row) {
        EXPECT_EQ(PTARGET[row].label, "");
        EXPECT_EQ(PTARGET[row].width, 0);
        EXPECT_EQ(PTARGET[row].maximum, 0);
    }
}

TEST_F(ParameterTable, NamesTheOptions) {
    EXPECT_EQ(TEXTOPTION, (std::array<std::string, 5>{"Flexible", "Rigid", "Anti-PG", "None", "No (bug-free)"}));
}

TEST_F(ParameterTable, AWordLiesAtTheEvenOffset) {
    EXPECT_EQ(target_word_offset(208), 208);
    EXPECT_EQ(target_word_offset(209), 208);
    EXPECT_EQ(target_word_offset(1), 0);
}

TEST_F(ParameterTable, AFreshStartHasClassifiedNothing) { // ODDITY powergear-unclassified-at-start
    EXPECT_EQ(TEXTOPTION[static_cast<std::size_t>(POWERGEAR)], "Flexible");
    EXPECT_EQ(powergear_class(mass()), 3);
}

TEST_F(ParameterTable, ClassifiesTheMassOfANewCarAsNone) {
    UPDATEPG(false);
    EXPECT_EQ(POWERGEAR, 3);
    EXPECT_EQ(mass(), 20);
}

TEST_F(ParameterTable, DivisorsOf65536AreBugFree) {
    for (int mass = 1; mass <= 32768; mass *= 2)
        EXPECT_EQ(powergear_class(mass), 4) << mass;
}

TEST_F(ParameterTable, OneMassOfEachClass) { // ODDITY powergear-class-order
    EXPECT_EQ(powergear_class(65535), 0);    // fraction 1 / 65535
    EXPECT_EQ(powergear_class(5), 1);        // 0.2
    EXPECT_EQ(powergear_class(3), 1);        // 0.333
    EXPECT_EQ(powergear_class(20), 3);       // 0.8
    EXPECT_EQ(powergear_class(11), 3);       // 0.818, just below 5/6
    EXPECT_EQ(powergear_class(18), 2);       // 0.889
}

TEST_F(ParameterTable, EveryMassIsOfTheClassThatWholeNumbersGive) {
    for (int mass = 0; mass <= 65535; ++mass)
        ASSERT_EQ(powergear_class(mass), class_by_remainder(mass)) << mass;
}

TEST_F(ParameterTable, NoMassIsOfClassZero) {
    set_par_word(2, 0);
    POWERGEAR = 2;
    UPDATEPG(false);
    EXPECT_EQ(POWERGEAR, 0);
}

TEST_F(ParameterTable, BugFreeFromMass20Is16) { EXPECT_EQ(mass_after_choosing(4, 20), 16); }

TEST_F(ParameterTable, OfTwoEquallyNearTheHeavierIsTaken) { EXPECT_EQ(mass_after_choosing(4, 24), 32); }

TEST_F(ParameterTable, AMassOfTheChosenClassStays) {
    EXPECT_EQ(mass_after_choosing(4, 1024), 1024);
    EXPECT_EQ(mass_after_choosing(3, 20), 20);
    EXPECT_EQ(mass_after_choosing(0, 0), 0);
}

TEST_F(ParameterTable, TheHeaviestMassTakesPartWhereTheSearchUpwardsEnds) {
    // Above 32768 nothing is bug-free: the search ends at 65535, which is nearer than 32768 from here.
    EXPECT_EQ(mass_after_choosing(4, 60000), 65535);
    EXPECT_EQ(powergear_class(65535), 0);
    EXPECT_EQ(mass_after_choosing(4, 33000), 32768);
}

TEST_F(ParameterTable, ASearchDownwardsThatFailsLeavesTheHeavierMass) {
    EXPECT_EQ(mass_after_choosing(4, 0), 1);
    EXPECT_EQ(mass_after_choosing(1, 0), 3);
    EXPECT_EQ(mass_after_choosing(3, 1), nearest_by_scan(1, 3));
}

TEST_F(ParameterTable, ChoosingFindsTheNearestMassFromAnywhere) {
    for (int option = 0; option <= 4; ++option)
        for (int mass_before = 0; mass_before <= 65535; mass_before += 1 + mass_before / 8)
            ASSERT_EQ(mass_after_choosing(option, mass_before), nearest_by_scan(mass_before, option))
                << option << " from " << mass_before;
}
