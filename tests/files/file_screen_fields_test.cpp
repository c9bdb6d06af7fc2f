// The two fields of the Files screen by mouse, the pages of its list, and names in UTF-8.
#include "files/file_screen_test.h"
#include "support/environment.h"

namespace {

constexpr std::uint32_t bar_colour = 0xFFB4B4B4, bar_ground = 0xFF3C1E28, background = 0xFF32141E;

class FileScreenFieldsTest : public FileScreenTest {
protected:
    static ScriptStep caret_at(int x, int y) {
        return look([=] {
            EXPECT_EQ(drawn(x, y), Pixel{0xFF00FA00}) << x << "," << y;
            EXPECT_EQ(drawn(x, y + 14), Pixel{0xFF00FA00}) << x << "," << y;
        });
    }
    // The first and the last row of the bar beside the list, looked at in its whole column.
    static ScriptStep bar_from_to(int first, int last) {
        return look([=] {
            for (int y = 120; y < 588; ++y) {
                const bool track = y >= 130 && y < 578;
                const std::uint32_t expected = !track ? background : y >= first && y <= last ? bar_colour : bar_ground;
                for (int x = 594; x <= 597; ++x)
                    ASSERT_EQ(drawn(x, y), Pixel{expected}) << x << "," << y;
                ASSERT_EQ(drawn(593, y), Pixel{background}) << y;
            }
        });
    }
};

} // namespace

TEST_F(FileScreenFieldsTest, AClickPutsTheCaretBetweenTheNearestCharacters) {
    visit({typed("abcdef"), click(90 + 8 * 2 + 3, 80), caret_at(90 + 8 * 2, 76), click(90 + 8 * 2 + 4, 80),
           caret_at(90 + 8 * 3, 76), typed("X"), shows_file("abcXdef"), click(500, 91), caret_at(90 + 8 * 7, 76),
           click(30, 76), caret_at(90, 76)});
}

TEST_F(FileScreenFieldsTest, AClickPutsTheFocusThere) {
    visit({typed("abcd"), click(90 + 8, 60), caret_at(90 + 8, 60), typed("X"),
           look([&] { EXPECT_TRUE(screen_shows(90, 60, "/X" + directory.path().substr(1), text_green)); }),
           click(90 + 8, 75), caret_at(98, 60), click(90 + 8, 76), caret_at(98, 76), typed("Y"), shows_file("aYbcd")});
}

TEST_F(FileScreenFieldsTest, AClickBesideTheFieldsOrWithAnotherButtonChangesNothing) {
    visit({typed("abcd"), click(100, 59), click(100, 92), click(29, 62), click(598, 62), click(100, 62, 2),
           caret_at(90 + 8 * 4, 76)});
}

TEST_F(FileScreenFieldsTest, APressThatIsMovedIntoAFieldDoesNotCount) {
    visit({typed("abcd"), press(700, 400), mouse_at(98, 80), release(98, 80), caret_at(90 + 8 * 4, 76)});
}

TEST_F(FileScreenFieldsTest, AClickIntoALongFieldCountsFromWhatIsInView) {
    const std::string deep(80, 'd');
    std::filesystem::create_directory(deep);
    visit({row_click(1), key_press(Key::tab), click(90 + 8 * 10, 62), look([&] {
               const std::string path = directory / deep;
               EXPECT_EQ(drawn(90 + 8 * 10, 60), Pixel{0xFF00FA00}) << "what is in view stays";
               EXPECT_TRUE(screen_shows(90, 60, path.substr(path.size() - 62, 10), text_green));
           }),
           key_press(Key::home), look([&] {
               EXPECT_EQ(drawn(90, 60), Pixel{0xFF00FA00});
               EXPECT_TRUE(screen_shows(90 + 8, 60, (directory / deep).substr(1, 60), text_green));
           })});
}

TEST_F(FileScreenFieldsTest, ControlUEmptiesTheField) {
    visit({typed("abcd"), ctrl_key(Key::u), shows_file("    "), caret_at(90, 76), typed("x"), shows_file("x   "),
           key_press(Key::tab), ctrl_key(Key::u), caret_at(90, 60), shows_file("x ")});
}

TEST_F(FileScreenFieldsTest, PagesGoToTheLastEntryAndBack) {
    put_numbered_files(69); // and ".."
    visit({ctrl_key(Key::c), key_press(Key::page_down), shows_row(0, "f128.res", file_grey), key_press(Key::page_down),
           shows_row(27, "f169.res", file_grey), shows_row(0, "f142.res", file_grey), key_press(Key::page_down),
           shows_row(27, "f169.res", file_grey), key_press(Key::page_up), shows_row(0, "f114.res", file_grey),
           key_press(Key::page_up), shows_row(0, "[..]", directory_green)});
}

TEST_F(FileScreenFieldsTest, APageOfAShortListStays) {
    put_numbered_files(27);
    visit({ctrl_key(Key::c), key_press(Key::page_down), shows_row(0, "[..]", directory_green)});
}

TEST_F(FileScreenFieldsTest, TheWheelStepsBackFromTheLastEntry) {
    put_numbered_files(39);
    visit({ctrl_key(Key::c), key_press(Key::page_down), shows_row(27, "f139.res", file_grey), wheel(100, 300, -1),
           shows_row(27, "f138.res", file_grey)});
}

TEST_F(FileScreenFieldsTest, TheLastEntryInViewCanBeChosen) {
    put_numbered_files(39);
    visit({ctrl_key(Key::c), key_press(Key::page_down), row_click(27), shows_file("f139.res")});
}

TEST_F(FileScreenFieldsTest, ABarShowsWhereALongListStands) {
    put_numbered_files(55); // and ".."
    visit({ctrl_key(Key::c), bar_from_to(130, 353), key_press(Key::page_down), bar_from_to(354, 577),
           mouse_at(100, 140), bar_from_to(354, 577)});
}

TEST_F(FileScreenFieldsTest, AListThatFitsHasNoBar) {
    put_numbered_files(27);
    visit({ctrl_key(Key::c), look([] {
               for (int y = 120; y < 588; ++y)
                   for (int x = 593; x <= 597; ++x)
                       ASSERT_EQ(drawn(x, y), Pixel{background}) << x << "," << y;
           })});
}

TEST_F(FileScreenFieldsTest, TheTextOfARowEndsBeforeTheBar) {
    put_numbered_files(40);
    write_text(std::string(100, 'W') + ".res", "");
    visit({ctrl_key(Key::c), key_press(Key::page_down), bar_from_to(130 + 448 * 14 / 42, 577),
           mouse_at(100, 130 + 16 * 27),
           look([] { EXPECT_TRUE(screen_shows(50, 130 + 16 * 27, std::string(67, 'W') + " ", file_white)); }),
           bar_from_to(130 + 448 * 14 / 42, 577)});
}

TEST_F(FileScreenFieldsTest, TheListStaysWithinItsEntriesWhenFilesWentBeforeASave) {
    put_numbered_files(99);
    visit({ctrl_key(Key::c), key_press(Key::page_down), key_press(Key::page_down), look([] {
               for (int i = 1; i <= 95; ++i)
                   std::filesystem::remove("f" + std::to_string(100 + i) + ".res");
           }),
           typed("a.vsh"), ctrl_key(Key::s), shows_row(0, "[..]", directory_green), shows_row(1, "a.vsh", file_grey),
           shows_row(5, "f199.res", file_grey)});
}

TEST_F(FileScreenFieldsTest, ASaveLeavesTheListWhereItStands) {
    put_numbered_files(99);
    visit({ctrl_key(Key::c), key_press(Key::page_down), shows_row(0, "f128.res", file_grey), typed("z.vsh"),
           ctrl_key(Key::s), shows_row(0, "f128.res", file_grey)});
}

TEST_F(FileScreenFieldsTest, ALinkFromTheHomeDirectory) {
    const EnvironmentVariable home("HOME");
    home.set(directory.path());
    std::filesystem::create_directory("cars");
    CONFIGS = 1;
    CONFIG_ID[1] = "dirlink";
    CONFIG_VALUE[1] = "~/cars";
    visit({shows_row(0, "[ - ~/cars - ]", directory_green), row_click(0),
           look([&] { EXPECT_EQ(current_directory(), directory / "cars"); })});
}

TEST_F(FileScreenFieldsTest, NamesInUtf8AreShownChosenAndLoaded) {
    put_car("\u00E9t\u00E9 \u20AC.res", "Summer");
    visit({ctrl_key(Key::c), shows_row(1, "\x82t\x82 ?.res", file_grey), row_click(1), shows_file("\x82t\x82 ?.res"),
           caret_at(90 + 8 * 9, 76), ctrl_key(Key::l), shows_status("Loaded \x82t\x82 ?.res", success_green),
           look([] { EXPECT_EQ(CARNAME, "Summer"); })});
}

TEST_F(FileScreenFieldsTest, ADirectoryInUtf8IsShownInTheDirField) {
    std::filesystem::create_directory("\u00E9t\u00E9");
    visit({row_click(1), look([&] {
               EXPECT_TRUE(screen_shows(90, 60, directory / "\x82t\x82" + " ", text_green));
               EXPECT_EQ(current_directory(), directory / "\u00E9t\u00E9");
           })});
}

TEST_F(FileScreenFieldsTest, AStatusBreaksAtSlashes) {
    visit({typed("a-folder/another-one/and-a-third/none.res"), ctrl_key(Key::l),
           shows_status("File not found: a-folder/", error_red),
           look([] { EXPECT_TRUE(screen_shows(650, 166, "another-one/and-a-third/none.res    ", error_red)); })});
}

TEST_F(FileScreenFieldsTest, AStatusNeverShowsHalfACharacter) {
    std::string name;
    for (int i = 0; i < 40; ++i)
        name += "\u00E4";
    write_text(name + ".res", "");
    visit({ctrl_key(Key::c), row_click(1), ctrl_key(Key::s),
           shows_status("Saved " + std::string(30, '\x84'), success_green),
           look([] { EXPECT_TRUE(screen_shows(650, 166, std::string(10, '\x84') + ".res ", success_green)); })});
}
