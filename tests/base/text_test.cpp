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
    EXPECT_EQ(leading_integer("+-5"), 0);
    EXPECT_EQ(leading_integer("abc"), 0);
    EXPECT_EQ(leading_integer(""), 0);
    EXPECT_EQ(leading_integer("99999999999999999999"), 2147483647);
    EXPECT_EQ(leading_integer("-99999999999999999999"), -2147483648L);
}

TEST(TextWrapping, BreaksAtBlanksAndSlashesWhereItCan) {
    using Lines = std::vector<std::string>;
    EXPECT_EQ(wrapped("", 10), Lines{});
    EXPECT_EQ(wrapped("short", 10), Lines{"short"});
    EXPECT_EQ(wrapped("just ten.!", 10), Lines{"just ten.!"});
    EXPECT_EQ(wrapped("one two three", 8), (Lines{"one two", "three"}));
    EXPECT_EQ(wrapped("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(wrapped("/home/me/cars/x", 11), (Lines{"/home/me/", "cars/x"}));
}

TEST(TextWrapping, BreaksAWordThatHasNoPlaceForIt) {
    EXPECT_EQ(wrapped("abcdefghij", 4), (std::vector<std::string>{"abcd", "efgh", "ij"}));
    EXPECT_EQ(wrapped("a bcdefghijklm", 8), (std::vector<std::string>{"a bcdefg", "hijklm"})); // no short first line
}

TEST(TextWrapping, LosesNoCharacterButTheBlankAtABreak) {
    for (std::size_t width = 1; width < 12; ++width) {
        const std::string text = "/a/bb/ccc/dddd/eeeee/ffffff";
        std::string joined;
        for (const std::string& line : wrapped(text, width)) {
            EXPECT_LE(line.size(), width);
            joined += line;
        }
        EXPECT_EQ(joined, text) << width;
    }
}
