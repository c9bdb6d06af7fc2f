#include "widgets/line_edit.h"

#include "window/input.h"

#include <gtest/gtest.h>

namespace {

void type(LineEdit& field, const std::string& characters) {
    for (char character : characters)
        field.handle_key(std::string(1, character));
}

LineEdit field_at_end(std::size_t limit, const std::string& text, Typing typing = Typing::printable,
                      FullField full = FullField::refuses) {
    LineEdit field(limit, text, typing, full);
    field.caret_to_end();
    return field;
}

} // namespace

TEST(LineEdit, StartsWithTheCaretAtTheFront) {
    LineEdit field(62, "/home");
    EXPECT_EQ(field.text(), "/home");
    EXPECT_EQ(field.caret(), 0U);
    EXPECT_EQ(field.limit(), 62U);
}

TEST(LineEdit, InsertsPrintablesAtTheCaret) {
    LineEdit field(10, "ad");
    field.move_caret(1);
    EXPECT_TRUE(field.handle_key("b"));
    EXPECT_TRUE(field.handle_key("c"));
    EXPECT_EQ(field.text(), "abcd");
    EXPECT_EQ(field.caret(), 3U);
}

TEST(LineEdit, TakesEverythingFromBlankToTilde) {
    for (int code = 0; code < 256; ++code) {
        LineEdit field(10);
        const std::string key(1, static_cast<char>(code));
        EXPECT_EQ(field.handle_key(key), code >= ' ' && code <= '~') << code;
        EXPECT_EQ(field.text(), code >= ' ' && code <= '~' ? key : "") << code;
    }
}

TEST(LineEdit, TakesOnlyDigitsWhereAskedTo) {
    for (int code = 0; code < 256; ++code) {
        LineEdit field(10, "", Typing::digits);
        const bool digit = code >= '0' && code <= '9';
        EXPECT_EQ(field.handle_key(std::string(1, static_cast<char>(code))), digit) << code;
        EXPECT_EQ(field.text().size(), digit ? 1U : 0U) << code;
    }
}

TEST(LineEdit, ExtendedKeysAreNoText) {
    LineEdit field(10);
    for (const char* key : {key::up, key::down, key::page_up, key::insert, key::shift_tab, key::close_window})
        EXPECT_FALSE(field.handle_key(key));
    EXPECT_FALSE(field.handle_key(""));
    EXPECT_EQ(field.text(), "");
}

TEST(LineEdit, TheSixtySecondCharacterIsTheLast) {
    LineEdit field(62);
    type(field, std::string(61, 'x'));
    EXPECT_TRUE(field.handle_key("y"));
    EXPECT_FALSE(field.handle_key("z"));
    EXPECT_EQ(field.text(), std::string(61, 'x') + "y");
    EXPECT_EQ(field.caret(), 62U);
}

TEST(LineEdit, CursorKeysStayInsideTheText) {
    LineEdit field(5, "ab");
    EXPECT_FALSE(field.handle_key(key::left));
    EXPECT_TRUE(field.handle_key(key::right));
    EXPECT_TRUE(field.handle_key(key::right));
    EXPECT_FALSE(field.handle_key(key::right));
    EXPECT_EQ(field.caret(), 2U);
    EXPECT_TRUE(field.handle_key(key::left));
    EXPECT_EQ(field.caret(), 1U);
}

TEST(LineEdit, HomeAndEnd) {
    LineEdit field(9, "abcd");
    EXPECT_TRUE(field.handle_key(key::end));
    EXPECT_EQ(field.caret(), 4U);
    EXPECT_FALSE(field.handle_key(key::end));
    EXPECT_TRUE(field.handle_key(key::home));
    EXPECT_EQ(field.caret(), 0U);
    EXPECT_FALSE(field.handle_key(key::home));
}

TEST(LineEdit, BackspaceTakesTheCharacterBeforeTheCaret) {
    LineEdit field(9, "abc");
    EXPECT_FALSE(field.handle_key(key::backspace));
    field.move_caret(2);
    EXPECT_TRUE(field.handle_key(key::backspace));
    EXPECT_EQ(field.text(), "ac");
    EXPECT_EQ(field.caret(), 1U);
}

TEST(LineEdit, DeleteTakesTheCharacterAtTheCaret) {
    LineEdit field(9, "abc");
    field.move_caret(1);
    EXPECT_TRUE(field.handle_key(key::delete_));
    EXPECT_EQ(field.text(), "ac");
    EXPECT_EQ(field.caret(), 1U);
    field.caret_to_end();
    EXPECT_FALSE(field.handle_key(key::delete_));
    EXPECT_EQ(field.text(), "ac");
}

TEST(LineEdit, ANewTextKeepsTheCaretInside) {
    LineEdit field = field_at_end(9, "abcdef");
    field.set_text("xy");
    EXPECT_EQ(field.caret(), 2U);
    field.move_caret(100);
    EXPECT_EQ(field.caret(), 2U);
}

TEST(LineEdit, ATextLongerThanTheLimitStaysWholeAndTakesNoMore) {
    LineEdit field = field_at_end(3, "abcdef");
    EXPECT_FALSE(field.handle_key("x"));
    EXPECT_EQ(field.text(), "abcdef");
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(field.handle_key(key::backspace));
    EXPECT_TRUE(field.handle_key("x"));
    EXPECT_EQ(field.text(), "abx");
}

TEST(LineEdit, TypingIntoAFullRowCanPushItsLastCharacterOut) {
    LineEdit row(4, "abcd", Typing::printable, FullField::pushes_out);
    row.move_caret(1);
    EXPECT_TRUE(row.handle_key("X"));
    EXPECT_EQ(row.text(), "aXbc");
    EXPECT_EQ(row.caret(), 2U);
}

TEST(LineEdit, OfATextLongerThanTheLimitOneCharacterIsPushedOutForEachTyped) {
    LineEdit row(4, "abcdefgh", Typing::printable, FullField::pushes_out);
    EXPECT_TRUE(row.handle_key("X"));
    EXPECT_EQ(row.text(), "Xabcdefg");
    EXPECT_TRUE(row.handle_key("Y"));
    EXPECT_EQ(row.text(), "XYabcdef");
}

TEST(LineEdit, TypingAtTheEndOfAFullRowChangesNothing) {
    LineEdit row = field_at_end(4, "abcd", Typing::printable, FullField::pushes_out);
    EXPECT_FALSE(row.handle_key("X"));
    EXPECT_EQ(row.text(), "abcd");
    EXPECT_EQ(row.caret(), 4U);
}

TEST(LineEditOfFileNames, TheCaretStepsOverWholeCharacters) {
    LineEdit field = field_at_end(62, "a\u00C4\u20AC.res", Typing::file_name);
    EXPECT_EQ(field.shown(), "a\x8E?.res");
    EXPECT_EQ(field.caret_cell(), 7U);
    for (int step = 0; step < 5; ++step)
        field.handle_key(key::left);
    EXPECT_EQ(field.caret_cell(), 2U);
    EXPECT_EQ(field.caret(), 3U);
    field.handle_key(key::left);
    EXPECT_EQ(field.caret(), 1U);
    field.handle_key(key::right);
    EXPECT_EQ(field.caret(), 3U);
}

TEST(LineEditOfFileNames, BackspaceAndDeleteTakeWholeCharacters) {
    LineEdit field(62, "\u00C4\u00D6\u00DC", Typing::file_name);
    field.move_caret_to_cell(1);
    EXPECT_TRUE(field.handle_key(key::backspace));
    EXPECT_EQ(field.text(), "\u00D6\u00DC");
    EXPECT_EQ(field.caret(), 0U);
    EXPECT_TRUE(field.handle_key(key::delete_));
    EXPECT_EQ(field.text(), "\u00DC");
    field.caret_to_end();
    EXPECT_FALSE(field.handle_key(key::delete_));
}

TEST(LineEditOfFileNames, TheCaretIsNeverInsideACharacter) {
    LineEdit field(62, "\u00C4\u20AC", Typing::file_name);
    for (std::size_t at = 0; at < 9; ++at) {
        field.move_caret(at);
        EXPECT_TRUE(field.caret() == 0 || field.caret() == 2 || field.caret() == 5) << at;
    }
    field.move_caret_to_cell(99);
    EXPECT_EQ(field.caret(), 5U);
    LineEdit joined(62, "\xC3x\xA9", Typing::file_name);
    joined.move_caret(1);
    joined.handle_key(key::delete_);
    EXPECT_EQ(joined.caret(), 0U) << "the bytes around it are one character now";
}

TEST(LineEditOfFileNames, TheLimitCountsCharacters) {
    LineEdit field = field_at_end(4, "\u00C4\u00D6\u00DC", Typing::file_name);
    type(field, "xy");
    EXPECT_EQ(field.text(), "\u00C4\u00D6\u00DCx");
}

TEST(LineEdit, TextsOfTheGameHaveACharacterInEveryByte) {
    LineEdit field = field_at_end(21, "\xC3\xA9", Typing::printable);
    EXPECT_EQ(field.shown(), "\xC3\xA9");
    field.handle_key(key::left);
    EXPECT_EQ(field.caret_cell(), 1U);
    field.handle_key(key::backspace);
    EXPECT_EQ(field.text(), "\xA9");
    field.move_caret_to_cell(7);
    EXPECT_EQ(field.caret(), 1U);
}
