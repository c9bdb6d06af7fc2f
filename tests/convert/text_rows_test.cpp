#include "convert/refusal.h"
#include "convert/text_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

namespace {
std::string only_text(const std::string& row) { return read_text_rows(row).at(0).quoted(0); }
} // namespace

TEST(TextRows, AreWordsAndTexts) {
    const auto rows = read_text_rows("\n# nothing\n  a\tbc \"d e\"#f\r\nx");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].line, 3);
    ASSERT_EQ(rows[0].words.size(), 3u);
    EXPECT_EQ(rows[0].word(1), "bc");
    EXPECT_EQ(rows[0].quoted(2), "d e");
    EXPECT_EQ(rows[1].line, 4);
}

TEST(TextRows, AByteOrderMarkInFrontIsNoWord) {
    EXPECT_EQ(read_text_rows("\xEF\xBB\xBF"
                             "a b")
                  .at(0)
                  .word(0),
              "a");
}

TEST(TextRows, TextsHaveNumberSignsAndEscapes) {
    EXPECT_EQ(only_text(R"("#1 \"q\" \\ \x07\xfF")"), "#1 \"q\" \\ \x07\xFF");
    EXPECT_EQ(only_text("\"\xC3\xA4\""), "\x84"); // a umlaut
}

TEST(TextRows, EveryByteComesBack) {
    std::string all;
    for (int c = 0; c < 256; ++c)
        all += static_cast<char>(c);
    const std::string text = quoted_text(all);
    EXPECT_EQ(only_text(text), all);
    EXPECT_THAT(text, HasSubstr("\xC3\xA4")); // readable where it can be
    EXPECT_THAT(text, HasSubstr("\\x0A"));
}

TEST(TextRows, RefusalsNameTheLine) {
    for (const std::string bad : {"\"open", "\"\\", "\"\\q\"", "\"\\x1\"", "\"\\xg0\"", "\"\xE2\x82\xAC\"", "\"\xFF\""})
        EXPECT_THAT([&] { read_text_rows("a\n" + bad); }, ThrowsMessage<Refusal>(StartsWith("line 2: "))) << bad;
}

TEST(TextRows, NumbersAreWholeAndWithinBounds) {
    const TextRow row = read_text_rows("12 -3 4x 99999999999999999999 \"5\"").at(0);
    EXPECT_EQ(row.number(0, 0, 12), 12);
    EXPECT_EQ(row.number(1, -3, 0), -3);
    EXPECT_THROW(row.number(0, 0, 11), Refusal);
    EXPECT_THROW(row.number(1, -2, 0), Refusal);
    for (const std::size_t bad : {2u, 3u, 4u, 5u})
        EXPECT_THROW(row.number(bad, 0, 100), Refusal) << bad;
    EXPECT_THROW(row.expect_words(4), Refusal);
    EXPECT_THROW(row.expect_words(6), Refusal);
    EXPECT_NO_THROW(row.expect_words(5));
}
