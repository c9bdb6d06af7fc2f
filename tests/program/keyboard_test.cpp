#include "program/program_test.h"

#include <cstdlib>
#include <utility>
#include <vector>

namespace {

class Keyboard : public ProgramTest {
protected:
    void TearDown() override {
        use_layout("us");
        ProgramTest::TearDown();
    }
    bool use_layout(const std::string& layout) {
        const std::string command = "setxkbmap -display " + display->name() + " " + layout + " >/dev/null 2>&1";
        return std::system(command.c_str()) == 0; // NOLINT: the test's own words
    }
    // The status line after a load that found no file.
    bool a_load_was_tried() const {
        return wait_until([&] {
            for (int x = 650; x < 700; ++x)
                for (int y = 150; y < 166; ++y)
                    if (window->pixel(x, y) == colour::error) return true;
            return false;
        });
    }
};

TEST_F(Keyboard, EveryPrintableCharacterCanBeTyped) {
    start();
    // 95 characters do not fit into the field of 62.
    window->type(" !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNO");
    EXPECT_TRUE(file_field_becomes(" !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNO"));
    for (int i = 0; i < 48; ++i)
        window->key("BackSpace");
    window->type("PQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~");
    EXPECT_TRUE(file_field_becomes("PQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~"));
}

TEST_F(Keyboard, EditingKeys) {
    start();
    window->type("bcd");
    window->key("Home");
    window->type("a");
    window->key("End");
    window->type("ef");
    EXPECT_TRUE(file_field_becomes("abcdef"));
    window->key("Left");
    window->key("BackSpace");
    EXPECT_TRUE(file_field_becomes("abcdf"));
    window->key("Home");
    window->key("Right");
    window->key("Delete");
    EXPECT_TRUE(file_field_becomes("acdf"));
    window->key("Tab");
    window->type("x");
    window->key("Up");
    window->type("y");
    EXPECT_TRUE(file_field_becomes("acdfy"));
}

TEST_F(Keyboard, TheKeypadFollowsNumLock) {
    start();
    const std::vector<std::pair<unsigned, std::string>> codes = {
        {79, "7"}, {80, "8"}, {81, "9"}, {83, "4"}, {84, "5"}, {85, "6"}, {87, "1"}, {88, "2"},
        {89, "3"}, {90, "0"}, {91, "."}, {63, "*"}, {82, "-"}, {86, "+"}, {106, "/"}};
    window->key("Num_Lock");
    std::string expected;
    for (const auto& [code, character] : codes) {
        window->key_at(code);
        expected += character;
    }
    EXPECT_TRUE(file_field_becomes(expected));
    window->key("Num_Lock");
    window->key_at(79); // Home
    window->key_at(91); // Delete
    window->key_at(85); // Right
    window->key_at(91);
    EXPECT_TRUE(file_field_becomes("8" + expected.substr(3)));
}

TEST_F(Keyboard, KeysTypedIntoABusyProgramArriveInOrder) {
    start();
    std::string expected;
    {
        const Busy busy(*program);
        for (int i = 0; i < 200; ++i) {
            if (i % 4 == 3) {
                window->key("BackSpace");
                expected.pop_back();
            } else if (i % 7 == 0 && !expected.empty()) {
                window->key("Home");
                window->key("Delete");
                window->key("End");
                expected.erase(0, 1);
            } else {
                const char character = static_cast<char>('a' + i % 26);
                window->type({character});
                expected += character;
            }
        }
    }
    ASSERT_LT(expected.size(), 62u);
    EXPECT_TRUE(file_field_becomes(expected)) << expected;
}

TEST_F(Keyboard, AHeldKeyRepeats) {
    start();
    window->key_down("x");
    EXPECT_TRUE(wait_until([&] { return window->shows_text(90, 76, "xxxx", colour::value); }));
    window->key_up("x");
}

TEST_F(Keyboard, ControlWithALetterIsACommandWhateverCapsLockSays) {
    start();
    window->type("abcd");
    window->key("l", {"Control_L"});
    EXPECT_TRUE(a_load_was_tried());
    window->key("s", {"Control_L"});
    EXPECT_TRUE(wait_until([&] { return std::filesystem::exists(folder / "carabcd.res"); }));
    std::filesystem::remove(folder / "carabcd.res");
    window->key("Caps_Lock");
    window->key("s", {"Control_R"});
    EXPECT_TRUE(wait_until([&] { return std::filesystem::exists(folder / "carabcd.res"); }));
    window->type("x");
    EXPECT_TRUE(file_field_becomes("abcdX"));
    window->key("Caps_Lock");
}

TEST_F(Keyboard, ControlAndAltWithACharacterAreNoTyping) {
    start();
    for (const char* name : {"minus", "equal", "0", "1", "9"})
        window->key(name, {"Control_L"});
    for (const char* name : {"a", "x", "5"})
        window->key(name, {"Alt_L"});
    window->type("ok");
    EXPECT_TRUE(file_field_becomes("ok"));
}

TEST_F(Keyboard, AGermanKeyboardTypesItsOwnCharacters) {
    if (!use_layout("de")) GTEST_SKIP() << "setxkbmap is not there";
    start();
    window->key_at(52); // where "z" is on other keyboards
    window->key_at(29);
    window->key_at(24, {"ISO_Level3_Shift"}); // q
    window->key_at(35, {"ISO_Level3_Shift"}); // +
    window->key_at(49);                       // the dead circumflex, and a blank
    window->key_at(65);
    window->key_at(21); // the dead acute
    window->key_at(65);
    window->key_at(21, {"Shift_L"}); // the dead grave
    window->key_at(65);
    window->key_at(34); // u with diaeresis, which a file name here cannot hold
    EXPECT_TRUE(file_field_becomes("yz@~^'`"));
    window->key_at(29, {"Control_L"}); // Control+Z does nothing; Control+Y would neither
    window->type("ab");
    EXPECT_TRUE(file_field_becomes("yz@~^'`ab"));
}

constexpr unsigned blank_at = 65, quote_at = 48, grave_at = 49, six_at = 15;

TEST_F(Keyboard, DeadKeysOfTheInternationalKeyboard) {
    if (!use_layout("'us(intl)'")) GTEST_SKIP() << "setxkbmap is not there";
    start();
    for (const unsigned dead : {quote_at, grave_at})
        for (const std::vector<std::string>& held : {std::vector<std::string>{}, {"Shift_L"}}) {
            window->key_at(dead, held);
            window->key_at(blank_at);
        }
    window->key_at(six_at, {"Shift_L"});
    window->key_at(blank_at);
    EXPECT_TRUE(file_field_becomes("'\"`~^"));
    window->key_at(grave_at); // twice the same
    window->key_at(grave_at);
    EXPECT_TRUE(file_field_becomes("'\"`~^`"));
    window->key_at(quote_at); // an accented letter, which a file name here cannot hold
    window->type("e");
    window->type("f");
    EXPECT_TRUE(file_field_becomes("'\"`~^`f"));
}

TEST_F(Keyboard, AComposeTableOfTheUsersOwnGoesBefore) {
    if (!use_layout("'us(intl)'")) GTEST_SKIP() << "setxkbmap is not there";
    make_file(".XCompose", "<dead_acute> <space> : \"q\"\n");
    make_file("another", "<dead_acute> <space> : \"w\"\n");
    for (const auto& [table, typed] : {std::pair{"", "q"}, {"another", "w"}}) {
        start({{"XCOMPOSEFILE", *table == 0 ? "" : (folder / table).string()}});
        window->key_at(quote_at);
        window->key_at(blank_at);
        EXPECT_TRUE(file_field_becomes(typed));
        window->key("Escape");
        EXPECT_EQ(program->wait_for_end(), 0);
    }
}

TEST_F(Keyboard, ControlWithALetterGoesByTheLayout) {
    if (!use_layout("fr")) GTEST_SKIP() << "setxkbmap is not there";
    start();
    window->type("abcd");
    EXPECT_TRUE(file_field_becomes("abcd"));
    window->key("s", {"Control_L"});
    EXPECT_TRUE(wait_until([&] { return std::filesystem::exists(folder / "carabcd.res"); }));
}

TEST_F(Keyboard, OnALayoutOfAnotherScriptControlGoesByThePlaceOfTheKey) {
    if (!use_layout("us,ru")) GTEST_SKIP() << "setxkbmap is not there";
    start();
    window->type("abcd");
    ASSERT_TRUE(file_field_becomes("abcd"));
    ASSERT_TRUE(use_layout("ru"));
    window->key_at(39, {"Control_L"}); // where "s" is
    EXPECT_TRUE(wait_until([&] { return std::filesystem::exists(folder / "carabcd.res"); }));
}

} // namespace
