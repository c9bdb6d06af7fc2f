#include "base/rounding.h"

#include <gtest/gtest.h>
#include <limits>

TEST(RoundedWord, HalvesGoToTheEvenNumber) {
    EXPECT_EQ(rounded_word(0.5), 0);
    EXPECT_EQ(rounded_word(1.5), 2);
    EXPECT_EQ(rounded_word(2.5), 2);
    EXPECT_EQ(rounded_word(2.500001), 3);
    EXPECT_EQ(rounded_word(-0.5), 0);
    EXPECT_EQ(rounded_word(-1.5), 0xFFFE);
    EXPECT_EQ(rounded_word(-2.5), 0xFFFE);
}

TEST(RoundedWord, NegativeAndLargeNumbersAreTakenModulo65536) {
    EXPECT_EQ(rounded_word(-1), 0xFFFF);
    EXPECT_EQ(rounded_word(-65537), 0xFFFF);
    EXPECT_EQ(rounded_word(65535), 0xFFFF);
    EXPECT_EQ(rounded_word(65536), 0);
    EXPECT_EQ(rounded_word(4294967296.0 + 7), 7);
    EXPECT_EQ(rounded_word(1e300), 0); // a multiple of a large power of two
}

TEST(RoundedWord, WhatIsNoNumberIsZero) {
    EXPECT_EQ(rounded_word(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(rounded_word(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(rounded_word(-std::numeric_limits<double>::infinity()), 0);
}
