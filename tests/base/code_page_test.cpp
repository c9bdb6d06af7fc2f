#include "base/code_page.h"

#include <gtest/gtest.h>

#include <set>

TEST(CodePage437, EveryCodeFrom128HasOneCharacter) {
    std::set<unsigned char> seen;
    for (char32_t character = 0x80; character < 0x2600; ++character)
        if (const unsigned char code = code_page_437(character)) {
            EXPECT_GE(code, 128);
            seen.insert(code);
        }
    EXPECT_EQ(seen.size(), 128u);
}

TEST(CodePage437, KnownCharacters) {
    EXPECT_EQ(code_page_437(U'Ç'), 0x80);
    EXPECT_EQ(code_page_437(U'ß'), 0xE1);
    EXPECT_EQ(code_page_437(U'β'), 0xE1);
    EXPECT_EQ(code_page_437(U'µ'), 0xE6);
    EXPECT_EQ(code_page_437(U'μ'), 0xE6);
    EXPECT_EQ(code_page_437(U'█'), 0xDB);
    EXPECT_EQ(code_page_437(U'°'), 0xF8);
    EXPECT_EQ(code_page_437(U'~'), 0x7E);
    EXPECT_EQ(code_page_437(0xA0), 255);
    EXPECT_EQ(code_page_437(0x7F), 0);
    EXPECT_EQ(code_page_437(0), 0);
    EXPECT_EQ(code_page_437(0x10FFFF), 0);
    EXPECT_EQ(code_page_437(0xFFFFFFFF), 0);
}

TEST(CodePage437, TextsBecomeUtf8) {
    EXPECT_EQ(utf8_from_code_page("Ostrik ~"), "Ostrik ~");
    EXPECT_EQ(utf8_from_code_page("\x80\xE1\xDB"), "\u00C7\u00DF\u2588");
    EXPECT_EQ(utf8_from_code_page(std::string("a\0\n\x7F"
                                              "b",
                                              5)),
              "a   b");
}

TEST(CodePage437, FileNamesAreShownInItsCharacters) {
    EXPECT_EQ(code_page_from_utf8("cars~1 \u00C4\u00E9"), "cars~1 \x8E\x82");
    EXPECT_EQ(code_page_from_utf8("\u20AC\U0001F697\u4E2D.res"), "???.res") << "one cell each that the font lacks";
    EXPECT_EQ(code_page_from_utf8("a\nb"), "a?b");
    EXPECT_EQ(code_page_from_utf8("GR\x9AN"), "GR\x9AN") << "a name from a DOS disk";
    EXPECT_EQ(code_page_from_utf8("half \xC3"), "half \xC3");
}
