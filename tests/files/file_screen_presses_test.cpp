// On the Files screen: what a button does belongs to where it went down, and what was done first is done first.
#include "base/file_io.h"
#include "files/file_screen_test.h"

TEST_F(FileScreenTest, ATypedSaveBeforeTheCloseRequestIsDone) {
    put_car("carvela.res", "Vela");
    const std::vector<std::pair<int, int>> load_save_and_row{{700, 80}, {850, 80}, {100, 154}};
    for (const auto& [x, y] : load_save_and_row) {
        std::filesystem::remove("stvela.3sh");
        play({at_once({typed("vela"), click(x, y), ctrl_key(Key::s), close_window()})},
             [] { FILEHANDLING(file_screen_mode::cars); });
        EXPECT_EQ(CURMENU, screen_number::quit);
        EXPECT_TRUE(file_exists("stvela.3sh")) << x << "," << y;
        CURMENU = screen_number::files;
    }
}

TEST_F(FileScreenTest, ATypedSaveBehindAButtonStillDownIsDoneBeforeTheCloseRequest) {
    play({at_once({typed("abcd"), press(700, 80), ctrl_key(Key::s), close_window()})},
         [] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_TRUE(file_exists("carabcd.res"));
}

TEST_F(FileScreenTest, ARowWhoseButtonIsNotReleasedBeforeTheCloseRequestIsNotChosen) {
    std::filesystem::create_directory("sub");
    play({at_once({press(100, 130 + 16 + 8), close_window(), release(100, 130 + 16 + 8)})},
         [] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(current_directory(), directory.path());
}

TEST_F(FileScreenTest, KeysTypedWhileTheButtonIsDownActAfterItsRelease) {
    visit({press(850, 80), at_once({typed("abcd"), ctrl_key(Key::s)}),
           look([] { EXPECT_FALSE(file_exists("carabcd.res")); }), release(850, 80),
           look([] { EXPECT_TRUE(file_exists("carabcd.res")); })});
}

TEST_F(FileScreenTest, APressThatOvershootsIntoTheMenuBarChangesNoScreen) {
    visit({press(700, 400), mouse_at(menu_cell + 10, 620), look([] { EXPECT_EQ(CURMENU, screen_number::files); }),
           release(menu_cell + 10, 620), look([] { EXPECT_EQ(CURMENU, screen_number::files); })});
}

TEST_F(FileScreenTest, APressOnTheMenuBarChoosesAndLoadsNothing) {
    std::filesystem::create_directory("sub");
    visit({typed("abcd"), press(10, 620), mouse_at(100, 130 + 16 + 8), mouse_at(850, 80), release(850, 80), look([&] {
               EXPECT_EQ(current_directory(), directory.path());
               EXPECT_FALSE(file_exists("carabcd.res"));
           }),
           press(850, 80), release(850, 80),
           look([] { EXPECT_TRUE(file_exists("carabcd.res")) << "the next press acts"; })});
}

TEST_F(FileScreenTest, APointerThatMovesOnRedrawsTwoRows) {
    put_numbered_files(20);
    visit({ctrl_key(Key::c), mouse_at(100, 138), mouse_at(100, 138 + 16 * 15), look([&] {
               ASSERT_EQ(window.last_rectangles().size(), 2U);
               for (const Rectangle& rectangle : window.last_rectangles()) {
                   EXPECT_LE(rectangle.y2 - rectangle.y1, 15);
                   EXPECT_TRUE(rectangle.contains({50, 132}) || rectangle.contains({50, 132 + 16 * 15}));
               }
           }),
           shows_row(0, "[..]", directory_green), shows_row(15, "f115.res", file_white)});
}

TEST_F(FileScreenTest, ARepaintBringsEverythingBack) {
    put_car("carvela.res", "Vela");
    const auto everything = look([&] {
        EXPECT_TRUE(screen_shows(16, 16, "= FILES =", 0xFFFAFAFA));
        EXPECT_TRUE(screen_shows(90, 76, "none.res ", text_green));
        EXPECT_TRUE(screen_shows(50, 130 + 16, "Vela (VELA)", file_grey));
        EXPECT_TRUE(screen_shows(666, 78, " Load File ", file_grey));
        EXPECT_TRUE(screen_shows(650, 150, "File not found: none.res", error_red));
    });
    set_loop_hooks({.before = {}, .after = [](const Input& input) {
                        if (input.key == key::f1) {
                            fill_box(screen(), 0, 0, 959, 599, 0xFF123456);
                            repaint_screens();
                        }
                    }});
    visit({typed("none.res"), ctrl_key(Key::l), mouse_at(700, 300), everything, key_press(Key::f1), everything});
}
