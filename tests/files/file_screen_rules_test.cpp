// Rules of the Files screen that a person notices only now and then.
#include "files/file_screen_test.h"

namespace {

constexpr std::uint32_t background = 0xFF32141E, mark = 0xFF123456;

class FileScreenRulesTest : public FileScreenTest {
protected:
    static ScriptStep caret_at(int cell, int y) {
        return look([=] { EXPECT_EQ(drawn(90 + 8 * cell, y), Pixel{0xFF00FA00}) << cell; });
    }
    static ScriptStep top_is(const std::string& text, std::uint32_t colour) { return shows_row(0, text, colour); }
};

} // namespace

TEST_F(FileScreenRulesTest, ARowIsChosenWithTheRelease) {
    std::filesystem::create_directory("sub");
    visit({press(100, 154), look([&] { EXPECT_EQ(current_directory(), directory.path()); }), release(100, 154),
           look([&] { EXPECT_EQ(current_directory(), directory / "sub"); })});
}

TEST_F(FileScreenRulesTest, TheListIsToggledWithTheRelease) {
    put_car("carvela.res", "Vela");
    visit({press(700, 120), look([] { put_car("carnew.res", "New"); }), mouse_at(701, 120), mouse_at(702, 120),
           look([] { EXPECT_EQ(LFILES, 2) << "the list is not read while the button is down"; }),
           shows_row(1, "Vela (VELA)", file_grey), release(702, 120), shows_row(2, "carvela.res", file_grey)});
}

TEST_F(FileScreenRulesTest, ANewScanBeginsAtTheTop) {
    put_numbered_files(60);
    std::filesystem::create_directory("sub");
    std::filesystem::create_directory("sub/deep");
    visit({ctrl_key(Key::c), wheel(100, 300, -20), top_is("f119.res", file_grey), ctrl_key(Key::c),
           top_is("[..]", directory_green), wheel(100, 300, -20), key_press(Key::tab), typed("/."),
           key_press(Key::enter), top_is("[..]", directory_green)});
}

TEST_F(FileScreenRulesTest, EscapeInThePickerEndsTheProgram) {
    play({key_press(Key::escape)}, [&] { result = FILEHANDLING(file_screen_mode::pictures); });
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_EQ(result, "");
}

TEST_F(FileScreenRulesTest, BothButtonsChooseNoRow) {
    std::filesystem::create_directory("sub");
    visit({mouse_at(100, 154), press(100, 154, 2), press(100, 154, 1), release(100, 154, 1), release(100, 154, 2),
           look([&] { EXPECT_EQ(current_directory(), directory.path()); })});
}

TEST_F(FileScreenRulesTest, OutsideTheListTheWheelDoesNothing) {
    put_numbered_files(60);
    visit({ctrl_key(Key::c), wheel(700, 300, -9), top_is("[..]", directory_green), wheel(39, 300, -9),
           top_is("[..]", directory_green), wheel(100, 580, -9), top_is("[..]", directory_green), wheel(100, 129, -9),
           top_is("[..]", directory_green), wheel(100, 130, -1), top_is("f101.res", file_white)});
}

TEST_F(FileScreenRulesTest, WhatTheWheelWasTurnedBeforeTheVisitDoesNotScroll) {
    put_numbered_files(60);
    visit({wheel(100, 300, -9)});
    CURMENU = screen_number::files;
    visit({mouse_at(101, 300), ctrl_key(Key::c), top_is("[..]", directory_green), wheel(101, 300, -1),
           top_is("f101.res", file_grey)});
}

TEST_F(FileScreenRulesTest, TheCaretGoesBehindTheDirectoryThatWasEntered) {
    std::filesystem::create_directory("sub");
    const int length = static_cast<int>(directory.path().size());
    visit({key_press(Key::tab), typed("/sub/../sub"), key_press(Key::home), key_press(Key::enter),
           caret_at(length + 4, 60), key_press(Key::home), row_click(0), caret_at(length, 60), typed("!"),
           look([&] { EXPECT_TRUE(screen_shows(90, 60, directory.path() + "!", text_green)); })});
}

TEST_F(FileScreenRulesTest, TheCaretGoesBehindTheFileThatWasChosen) {
    put_car("carvela.res", "Vela");
    visit({typed("x"), key_press(Key::home), row_click(1), caret_at(4, 76), typed("!"), shows_file("vela!")});
}

TEST_F(FileScreenRulesTest, AFileThatIsChosenLeavesTheCaretInTheDirField) {
    put_car("carvela.res", "Vela");
    visit({key_press(Key::tab), key_press(Key::home), row_click(1), caret_at(0, 60), shows_file("vela")});
}

TEST_F(FileScreenRulesTest, OnlyTheFilesScreenItselfToggles) {
    write_text("a.tga", "");
    write_text("a.vsh", "");
    for (const std::uint8_t mode : std::initializer_list<std::uint8_t>{2, 3, 0, 255})
        visit({ctrl_key(Key::c), shows_row(1, "a.tga", file_grey),
               look([mode] { EXPECT_EQ(LFILES, mode == 2 ? 2 : 3) << int{mode}; })},
              mode);
}

TEST_F(FileScreenRulesTest, TheListIsClearedInItsOwnRectangleAndNoFurther) {
    visit({look([] { fill_box(screen(), 0, 100, 619, 599, mark); }), ctrl_key(Key::c), look([] {
               for (int y = 120; y < 600; ++y) {
                   const bool in_it = y >= 130 && y <= 585;
                   EXPECT_EQ(drawn(17, y), Pixel{mark}) << y;
                   EXPECT_EQ(drawn(18, y), Pixel{in_it ? background : mark}) << y;
                   EXPECT_EQ(drawn(597, y), Pixel{in_it ? background : mark}) << y;
                   EXPECT_EQ(drawn(598, y), Pixel{mark}) << y;
               }
           })});
}

TEST_F(FileScreenRulesTest, RowsArePointedAtInsideTheListAndNowhereElse) {
    put_numbered_files(60);
    const auto row = [](int y) { return (y - 130) / 16; };
    const std::pair<int, int> within[] = {{40, 150}, {549, 150}, {100, 130}, {100, 577}};
    const std::pair<int, int> outside[] = {{39, 150}, {550, 150}, {100, 129}, {100, 578}, {100, 580}};
    for (const auto& [x, y] : within)
        visit({ctrl_key(Key::c), wheel(300, 300, -5), mouse_at(x, y),
               look([&, y = y] { EXPECT_TRUE(screen_shows(50, 130 + 16 * row(y), "f", file_white)) << y; })});
    for (const auto& [x, y] : outside)
        visit({ctrl_key(Key::c), wheel(300, 300, -5), mouse_at(x, y), look([] {
                   for (int py = 130; py < 578; ++py)
                       for (int px = 50; px < 120; ++px)
                           ASSERT_NE(drawn(px, py), Pixel{file_white});
               })});
}

// The two pixel rows under the last row are no row, but the wheel turns there.
TEST_F(FileScreenRulesTest, TheWheelTurnsDownToTheListsLastPixel) {
    put_numbered_files(60);
    visit({ctrl_key(Key::c), wheel(100, 579, -1), top_is("f101.res", file_grey), wheel(100, 580, -1),
           top_is("f101.res", file_grey)});
}

TEST_F(FileScreenRulesTest, APickerThatHasChosenEndsWithTheRelease) {
    play({typed("pic.png"), press(700, 80), look([this] { EXPECT_EQ(result, ""); }), release(700, 80)},
         [&] { result = FILEHANDLING(file_screen_mode::pictures); });
    EXPECT_EQ(result, "L:pic.png");
    EXPECT_EQ(mouse().buttons, 0) << "no press is left to the screen that asked";
}
