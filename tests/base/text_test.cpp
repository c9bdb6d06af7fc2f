#include "base/text.h"

#include <gtest/gtest.h>

TEST(Text, CaseChangesAsciiLettersOnly) {
    EXPECT_EQ(lower_case("AbZ\xC4 9"), "abz\xC4 9");
    EXPECT_EQ(upper_case("abZ\xE4 9"), "ABZ\xE4 9");
}

TEST(Text, TrimmingTakesBlanksAndNoTabs) {
    EXPECT_EQ(trimmed("  a b \t "), "a b \t");
    EXPECT_EQ(trimmed("   "), "");
    EXPECT_EQ(without_leading_blanks("  a "), "a ");
    EXPECT_EQ(without_trailing_blanks("  a "), "  a");
}

TEST(Text, TheExtensionBeginsAtTheLastDot) {
    EXPECT_EQ(extension_of("a.res.BAK"), ".bak");
    EXPECT_EQ(extension_of("README"), "");
    EXPECT_EQ(extension_of("a."), ".");
}

TEST(Text, LinesEndWithLineFeedOrCarriageReturnLineFeed) {
    std::string_view rest = "one\r\ntwo\n\nlast", line;
    ASSERT_TRUE(next_line(rest, line));
    EXPECT_EQ(line, "one");
    ASSERT_TRUE(next_line(rest, line));
    EXPECT_EQ(line, "two");
    ASSERT_TRUE(next_line(rest, line));
    EXPECT_EQ(line, "");
    ASSERT_TRUE(next_line(rest, line));
    EXPECT_EQ(line, "last");
    EXPECT_FALSE(next_line(rest, line));
}

TEST(Text, TheLeadingIntegerIsReadAsFarAsItGoes) {
    EXPECT_EQ(leading_integer("  12abc"), 12);
    EXPECT_EQ(leading_integer("-7/3"), -7);
    EXPECT_EQ(leading_integer("+5"), 5);
    EXPECT_EQ(leading_integer("abc"), 0);
    EXPECT_EQ(leading_integer(""), 0);
    EXPECT_EQ(leading_integer("99999999999999999999"), 2147483647);
    EXPECT_EQ(leading_integer("-99999999999999999999"), -2147483648L);
}
