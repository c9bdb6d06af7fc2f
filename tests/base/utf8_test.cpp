#include "base/utf8.h"

#include <gtest/gtest.h>

TEST(Utf8, CharactersOfOneToFourBytes) {
    const std::string text = "a\u00E9\u20AC\U0001F697";
    EXPECT_EQ(utf8_character_at(text, 0).code, U'a');
    EXPECT_EQ(utf8_character_at(text, 1).code, U'\u00E9');
    EXPECT_EQ(utf8_character_at(text, 1).length, 2U);
    EXPECT_EQ(utf8_character_at(text, 3).code, U'\u20AC');
    EXPECT_EQ(utf8_character_at(text, 3).length, 3U);
    EXPECT_EQ(utf8_character_at(text, 6).code, U'\U0001F697');
    EXPECT_EQ(utf8_character_at(text, 6).length, 4U);
    EXPECT_EQ(utf8_count(text), 4U);
}

TEST(Utf8, AByteThatBeginsNoCharacterStandsForItself) {
    for (const std::string text : {"\x80", "\xC0\x80", "\xC3", "\xC3x", "\xE2\x82", "\xFF", "\xF5\x80\x80\x80"}) {
        EXPECT_EQ(utf8_character_at(text, 0).code, char32_t{0}) << text;
        EXPECT_EQ(utf8_character_at(text, 0).length, 1U) << text;
        EXPECT_EQ(utf8_count(text), text.size()) << text;
    }
}

TEST(Utf8, EveryByteOfACharacterLeadsToItsStart) {
    const std::string text = "a\u20ACb";
    EXPECT_EQ(utf8_start_of(text, 0), 0U);
    for (std::size_t at = 1; at < 4; ++at)
        EXPECT_EQ(utf8_start_of(text, at), 1U);
    EXPECT_EQ(utf8_start_of(text, 4), 4U);
    EXPECT_EQ(utf8_start_of(text, 5), 5U);
    EXPECT_EQ(utf8_start_of(text, 99), 5U);
    EXPECT_EQ(utf8_start_of("", 0), 0U);
}

TEST(Utf8, ARunOfCharactersIsCutBetweenThem) {
    EXPECT_EQ(utf8_characters("car\u00C4bcd.res", 3, 4), "\u00C4bcd");
    EXPECT_EQ(utf8_characters("carabc\u00C4.res", 3, 4), "abc\u00C4");
    EXPECT_EQ(utf8_characters("carab", 3, 4), "ab");
    EXPECT_EQ(utf8_characters("ca", 3, 4), "");
    EXPECT_EQ(utf8_characters("car\u00C4", 0, 99), "car\u00C4");
}
