#include "base/decimal.h"

#include <bit>
#include <clocale>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {
constexpr double infinite = std::numeric_limits<double>::infinity();

std::string printed(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.16g", value);
    return text;
}

// Numbers of every size, and the ones between whose digits rounding is hard.
std::vector<double> many_numbers() {
    std::mt19937_64 random(7);
    std::vector<double> numbers = {0.0,
                                   -0.0,
                                   0.1,
                                   -0.1,
                                   1,
                                   0.5,
                                   1e15,
                                   1e16,
                                   123456789012345678.0,
                                   0.0001,
                                   0.00001,
                                   5e-324,
                                   std::numeric_limits<double>::max(),
                                   std::numeric_limits<double>::min()};
    for (int i = 0; i < 20000; ++i) {
        numbers.push_back(std::bit_cast<double>(random()));
        numbers.push_back(static_cast<double>(static_cast<std::int32_t>(random())) / 500);
    }
    std::erase_if(numbers, [](double value) { return !std::isfinite(value); });
    return numbers;
}
} // namespace

TEST(LeadingDecimal, IsTheLongestNumberAtTheStart) {
    EXPECT_EQ(leading_decimal("12.5"), 12.5);
    EXPECT_EQ(leading_decimal("-12.5x"), -12.5);
    EXPECT_EQ(leading_decimal("+3 4"), 3);
    EXPECT_EQ(leading_decimal("1."), 1);
    EXPECT_EQ(leading_decimal(".5"), 0.5);
    EXPECT_EQ(leading_decimal("-.5."), -0.5);
    EXPECT_EQ(leading_decimal("1.2.3"), 1.2);
    EXPECT_EQ(leading_decimal("7/3/2"), 7);
    EXPECT_EQ(leading_decimal("1\t2"), 1);
}

TEST(LeadingDecimal, TakesAnExponentOnlyWhereItHasDigits) {
    EXPECT_EQ(leading_decimal("1e3"), 1000);
    EXPECT_EQ(leading_decimal("1E+3"), 1000);
    EXPECT_EQ(leading_decimal("2.5e-1"), 0.25);
    EXPECT_EQ(leading_decimal("1.e2"), 100);
    EXPECT_EQ(leading_decimal("1e"), 1);
    EXPECT_EQ(leading_decimal("1e+"), 1);
    EXPECT_EQ(leading_decimal("1e-x"), 1);
    EXPECT_EQ(leading_decimal("1d3"), 1);
}

TEST(LeadingDecimal, IsZeroWhereThereIsNone) {
    for (const char* text : {"", " ", "-", "+", ".", "-.", "e5", ".e5", "abc", "-e", "+-1", "--1", "inf", "nan", "#"})
        EXPECT_EQ(leading_decimal(text), 0) << text;
    EXPECT_EQ(leading_decimal("0x10"), 0);
    EXPECT_TRUE(std::signbit(leading_decimal("-0")));
}

TEST(LeadingDecimal, BeyondADoubleItIsInfiniteOrZero) {
    EXPECT_EQ(leading_decimal("1e309"), infinite);
    EXPECT_EQ(leading_decimal("-1e99999999999999999999"), -infinite);
    EXPECT_EQ(leading_decimal("0.0001e400"), infinite);
    EXPECT_EQ(leading_decimal("1" + std::string(400, '0')), infinite);
    EXPECT_EQ(leading_decimal("1" + std::string(400, '0') + ".5e-500"), 1e-100);
    EXPECT_EQ(leading_decimal("1" + std::string(400, '0') + ".5e-900"), 0);
    EXPECT_EQ(leading_decimal("1e-400"), 0);
    EXPECT_EQ(leading_decimal("0." + std::string(400, '0') + "1"), 0);
    EXPECT_EQ(leading_decimal("0." + std::string(400, '0') + "1e401"), 1);
    EXPECT_EQ(leading_decimal("0e999999"), 0);
}

TEST(DecimalText, IsWhatFormattedOutputGivesWithSixteenDigits) {
    for (const double value : many_numbers())
        ASSERT_EQ(decimal_text(value), printed(value));
    EXPECT_EQ(decimal_text(0.1), "0.1");
    EXPECT_EQ(decimal_text(-2), "-2");
    EXPECT_EQ(decimal_text(1e20), "1e+20");
    EXPECT_EQ(decimal_text(1.0 / 3), "0.3333333333333333");
    EXPECT_EQ(decimal_text(infinite), "inf");
    EXPECT_EQ(decimal_text(std::nan("")), "nan");
}

TEST(DecimalText, IsReadAsANumberThatIsWrittenTheSame) {
    for (const double value : many_numbers()) {
        if (std::abs(value) > 1e308) continue; // the largest, rounded up, are beyond a double
        const std::string text = decimal_text(value);
        ASSERT_EQ(decimal_text(leading_decimal(text)), text);
        ASSERT_NEAR(leading_decimal(text), value, std::abs(value) * 1e-15);
    }
}

TEST(DecimalText, AnotherLocaleChangesNothing) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"})
        if (std::setlocale(LC_ALL, name)) {
            EXPECT_EQ(decimal_text(0.5), "0.5");
            EXPECT_EQ(leading_decimal("0.5"), 0.5);
            EXPECT_EQ(leading_decimal("0,5"), 0);
        }
    std::setlocale(LC_ALL, before.c_str());
}
