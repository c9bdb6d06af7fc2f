#include "model/document.h"
#include "params/specifications.h"

#include "params/parameter_test.h"

namespace {

constexpr std::uint32_t edit_ground = 0xFF280A14, edit_text = 0xFF00FA00, caret_colour = 0xFF64FA64;

class SpecificationsTest : public ParameterTest {
protected:
    // Edits CARINFO by these steps.
    void edit(std::vector<ScriptStep> steps) {
        play(std::move(steps), [] { EDITSPECS(0); });
    }
    static bool has_caret(int column, int row) {
        const int x = 750 + 8 * column, y = 365 + 16 * row;
        return is_filled(x, y, x, y + 15, caret_colour);
    }
};

SpecificationsEdit typed_into(const std::string& text, const std::vector<std::string>& keys) {
    SpecificationsEdit edit(text);
    for (const std::string& key : keys)
        edit.on_key(key);
    return edit;
}

const std::string full_line = "abcdefghijklmnopqrstuvw"; // 23 characters

} // namespace

TEST_F(SpecificationsTest, SplitsAtTheClosingBracket) {
    const SpecificationLines lines = split_specifications("New car]");
    EXPECT_EQ(lines[0], "New car");
    for (std::size_t row = 1; row < lines.size(); ++row)
        EXPECT_EQ(lines[row], "");
    EXPECT_EQ(split_specifications("a]]c]")[1], "");
    EXPECT_EQ(split_specifications("a]]c]")[2], "c");
    EXPECT_EQ(split_specifications(""), SpecificationLines{});
}

TEST_F(SpecificationsTest, ATextWithoutABracketIsOneLineOf23Characters) {
    EXPECT_EQ(split_specifications(full_line + "xyz")[0], full_line);
    EXPECT_EQ(split_specifications(full_line + "xyz")[1], "");
    EXPECT_EQ(split_specifications("a]rest")[1], "rest");
    EXPECT_EQ(split_specifications(full_line + "xyz]b]")[1], "b");
    EXPECT_EQ(split_specifications(std::string(1023, 'q'))[0], std::string(23, 'q'));
}

TEST_F(SpecificationsTest, KeepsNineLines) {
    const SpecificationLines lines = split_specifications("1]2]3]4]5]6]7]8]9]10]");
    EXPECT_EQ(lines[8], "9");
    EXPECT_EQ(join_specifications(lines), "1]2]3]4]5]6]7]8]9]");
}

TEST_F(SpecificationsTest, JoinsWithoutEmptyLinesAtTheEnd) {
    EXPECT_EQ(join_specifications({"one", "", "three", "", ""}), "one]]three]");
    EXPECT_EQ(join_specifications({}), "");
}

TEST_F(SpecificationsTest, JoinsWithoutTrailingBlanks) {
    EXPECT_EQ(join_specifications({" a  ", "b"}), " a]b]");
    // A line of blanks is not empty yet when the empty ones at the end go.
    EXPECT_EQ(join_specifications({"a", "   ", "b"}), "a]]b]");
    EXPECT_EQ(join_specifications({"a", "   "}), "a]]");
}

TEST_F(SpecificationsTest, InsertsAtTheCaret) {
    const SpecificationsEdit edit = typed_into("bd]", {"a", key::right, "c"});
    EXPECT_EQ(edit.lines()[0], "abcd");
    EXPECT_EQ(edit.column(), 3U);
}

TEST_F(SpecificationsTest, EveryPrintableCharacterCanBeTyped) {
    for (char character = ' '; character <= '~'; ++character) {
        const std::string key(1, character);
        EXPECT_EQ(typed_into("", {key}).lines()[0], key);
    }
    for (const char character : {'\x01', '\x1F', '\x7F', '\x80'})
        EXPECT_EQ(typed_into("", {std::string(1, character)}).lines()[0], "");
}

TEST_F(SpecificationsTest, TypingInsideAFullLinePushesItsLastCharacterOut) {
    const SpecificationsEdit edit = typed_into(full_line, {key::right, "X"});
    EXPECT_EQ(edit.lines()[0], "aXbcdefghijklmnopqrstuv");
    EXPECT_EQ(edit.column(), 2U);
}

TEST_F(SpecificationsTest, TypingAtTheEndOfAFullLineChangesNothing) {
    const SpecificationsEdit edit = typed_into(full_line, {key::end, "X", "Y"});
    EXPECT_EQ(edit.lines()[0], full_line);
    EXPECT_EQ(edit.column(), 23U); // the caret never leaves the text
}

TEST_F(SpecificationsTest, BackspaceAndDelete) {
    EXPECT_EQ(typed_into("abc]", {key::backspace}).lines()[0], "abc");
    const SpecificationsEdit back = typed_into("abc]", {key::end, key::backspace});
    EXPECT_EQ(back.lines()[0], "ab");
    EXPECT_EQ(back.column(), 2U);
    const SpecificationsEdit gone = typed_into("abc]", {key::right, key::delete_});
    EXPECT_EQ(gone.lines()[0], "ac");
    EXPECT_EQ(gone.column(), 1U);
    EXPECT_EQ(typed_into("abc]", {key::end, key::delete_}).lines()[0], "abc");
}

TEST_F(SpecificationsTest, CursorKeysStayInTheLine) {
    EXPECT_EQ(typed_into("ab]", {key::left}).column(), 0U);
    EXPECT_EQ(typed_into("ab]", {key::right, key::right, key::right}).column(), 2U);
    EXPECT_EQ(typed_into("ab]", {key::end}).column(), 2U);
    EXPECT_EQ(typed_into("ab]", {key::end, key::home}).column(), 0U);
    EXPECT_EQ(typed_into("ab]", {key::end, key::left}).column(), 1U);
}

TEST_F(SpecificationsTest, UpAndDownLimitTheColumn) {
    const SpecificationsEdit edit = typed_into("abcdef]xy]long line]", {key::end, key::down});
    EXPECT_EQ(edit.row(), 1U);
    EXPECT_EQ(edit.column(), 2U);
    EXPECT_EQ(typed_into("abcdef]xy]long line]", {key::end, key::down, key::down}).column(), 2U);
    EXPECT_EQ(typed_into("ab]uvwxyz]", {key::down, key::end, key::up}).column(), 2U);
    EXPECT_EQ(typed_into("ab]", {key::up}).row(), 0U);
}

TEST_F(SpecificationsTest, DownEndsOnTheNinthRow) {
    const SpecificationsEdit edit = typed_into("a]", std::vector<std::string>(20, key::down));
    EXPECT_EQ(edit.row(), 8U);
}

TEST_F(SpecificationsTest, TabClearsTheWholeText) {
    const SpecificationsEdit edit = typed_into("a]b]c]", {key::down, key::end, key::tab});
    EXPECT_EQ(edit.lines(), SpecificationLines{});
    EXPECT_EQ(edit.row(), 0U);
    EXPECT_EQ(edit.column(), 0U);
}

TEST_F(SpecificationsTest, TabDoesNothingOnTheNinthLine) { // ODDITY tab-idle-on-last-line
    std::vector<std::string> keys(8, key::down);
    keys.push_back(key::tab);
    const SpecificationsEdit edit = typed_into("a]b]c]", keys);
    EXPECT_EQ(edit.lines()[0], "a");
    EXPECT_EQ(edit.row(), 8U);
    keys[7] = key::home; // one line further up
    EXPECT_EQ(typed_into("a]b]c]", keys).lines(), SpecificationLines{});
}

TEST_F(SpecificationsTest, ABracketThatIsTypedEndsTheLine) {
    CARINFO = "ab]";
    edit({key_press(Key::right), typed("]"), key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "a]b]");
}

TEST_F(SpecificationsTest, TheBoxTakesClicksInside) {
    EXPECT_TRUE(over_specifications(750, 355));
    EXPECT_TRUE(over_specifications(937, 559));
    EXPECT_FALSE(over_specifications(749, 400));
    EXPECT_FALSE(over_specifications(938, 400));
    EXPECT_FALSE(over_specifications(800, 354));
    EXPECT_FALSE(over_specifications(800, 560));
}

TEST_F(SpecificationsTest, Shows) {
    fill_box(screen(), 0, 0, 959, 599, 0xFF123456);
    CARINFO = "New car]second]3]4]5]6]7]8]ninth]tenth]";
    EDITSPECS(-1);
    EXPECT_TRUE(screen_shows(750, 365, "New car", colour::value));
    EXPECT_TRUE(screen_shows(750, 381, "second", colour::value));
    EXPECT_TRUE(screen_shows(750, 493, "ninth", colour::value));
    EXPECT_TRUE(is_filled(745, 510, 943, 565, colour::background)); // no tenth line
    EXPECT_EQ(drawn(745, 355), Pixel{colour::background});
    EXPECT_EQ(drawn(943, 565), Pixel{colour::background});
    EXPECT_EQ(drawn(744, 400), Pixel{0xFF123456});
    EXPECT_EQ(drawn(944, 400), Pixel{0xFF123456});
    EXPECT_EQ(drawn(800, 354), Pixel{0xFF123456});
    EXPECT_EQ(drawn(800, 566), Pixel{0xFF123456});
}

TEST_F(SpecificationsTest, DrawsTheEdit) {
    CARINFO = "New car]second]";
    edit({key_press(Key::end), key_press(Key::down), look([this] {
              EXPECT_EQ(shown(745, 355), Pixel{edit_ground});
              EXPECT_EQ(shown(943, 565), Pixel{edit_ground});
              EXPECT_TRUE(screen_shows(750, 365, "New car", edit_text));
              EXPECT_TRUE(screen_shows(750, 381, "second", edit_text));
              EXPECT_TRUE(has_caret(6, 1));
          }),
          key_press(Key::home), look([] { EXPECT_TRUE(has_caret(0, 1)); }), key_press(Key::escape)});
    EXPECT_TRUE(screen_shows(750, 381, "second", colour::value));
    EXPECT_EQ(drawn(745, 355), Pixel{colour::background});
}

TEST_F(SpecificationsTest, EnterStores) {
    CARINFO = "";
    edit({typed("Hello"), key_press(Key::down), typed("world  "), key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "Hello]world]");
    EXPECT_TRUE(screen_shows(750, 381, "world", colour::value));
}

TEST_F(SpecificationsTest, StoringAddsTheMissingBracket) {
    CARINFO = "no bracket at all, and more than fits";
    edit({key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "no bracket at all, and]"); // 23 characters, of which the blank at the end goes
}

TEST_F(SpecificationsTest, TenLinesAreNineOnceStored) {
    CARINFO = "1]2]3]4]5]6]7]8]9]10]";
    edit({key_press(Key::escape)});
    EXPECT_EQ(CARINFO, "1]2]3]4]5]6]7]8]9]10]");
    edit({key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "1]2]3]4]5]6]7]8]9]");
}

TEST_F(SpecificationsTest, RowsGoneDownToLeaveNoTrace) {
    CARINFO = "one]two]";
    edit({key_press(Key::down), key_press(Key::down), key_press(Key::down), key_press(Key::down), key_press(Key::down),
          key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "one]two]");
}

TEST_F(SpecificationsTest, EmptyLinesBetweenSurvive) {
    CARINFO = "one]";
    edit({key_press(Key::down), key_press(Key::down), key_press(Key::down), typed("four"), key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "one]]]four]");
}

TEST_F(SpecificationsTest, EscapeAndAClickLeaveTheTextAsItWas) {
    CARINFO = "old";
    edit({typed("new "), key_press(Key::escape)});
    EXPECT_EQ(CARINFO, "old");
    EXPECT_TRUE(screen_shows(750, 365, "old", colour::value));
    edit({typed("new "), press(100, 100)});
    EXPECT_EQ(CARINFO, "old");
}

TEST_F(SpecificationsTest, TheCloseRequestCancels) {
    CARINFO = "old]";
    edit({typed("new "), close_window()});
    EXPECT_EQ(CARINFO, "old]");
    EXPECT_EQ(next_key(), key::close_window);
}

TEST_F(SpecificationsTest, ClearedTextIsStoredEmpty) {
    edit({key_press(Key::tab), key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "");
    edit(
        {typed("again"), look([] { EXPECT_TRUE(screen_shows(750, 365, "again", edit_text)); }), key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "again]");
}
