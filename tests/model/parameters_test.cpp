#include "model/document.h"
#include "model/parameters.h"

#include <gtest/gtest.h>

namespace {
class Parameters : public testing::Test {};
} // namespace

TEST_F(Parameters, WordsAreLittleEndian) {
    set_par_word(10, 0x1234);
    EXPECT_EQ(par_byte(10), 0x34);
    EXPECT_EQ(par_byte(11), 0x12);
    EXPECT_EQ(par_word(10), 0x1234);
    EXPECT_EQ(par_word(9), 0x3400);
    EXPECT_EQ(par_byte(9), 0);
    EXPECT_EQ(par_byte(12), 0);
}

TEST_F(Parameters, LastBytesCanBeReached) {
    set_par_byte(775, 7);
    set_par_word(774, 0xABCD);
    EXPECT_EQ(par_byte(775), 0xAB);
    EXPECT_EQ(par_word(774), 0xABCD);
}

TEST_F(Parameters, OffsetsOutsideReadAsZeroAndWriteNothing) {
    PAR.fill(std::byte{0x55});
    const auto before = PAR;
    for (const int offset : {-1, -2, 776, 100'000, INT32_MIN, INT32_MAX}) {
        set_par_byte(offset, 1);
        EXPECT_EQ(par_byte(offset), 0);
    }
    for (const int offset : {-1, 775, 776, INT32_MIN, INT32_MAX}) {
        set_par_word(offset, 1);
        EXPECT_EQ(par_word(offset), 0);
    }
    EXPECT_EQ(PAR, before);
}

TEST_F(Parameters, ResetEmptiesEverything) {
    PAR.fill(std::byte{1});
    CARNAME = CARSIGNNAME = CARINFO = "text";
    reset_parameters();
    for (int offset = 0; offset < 776; ++offset)
        ASSERT_EQ(par_byte(offset), 0);
    EXPECT_EQ(CARNAME + CARSIGNNAME + CARINFO, "");
}
