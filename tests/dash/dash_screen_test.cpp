// The screen around its modes: changing them, zoom, leaving, what stays between visits.
#include "dash_test.h"

#include "formats/bitmap_file.h"

#include <algorithm>

namespace {

class DashScreenTest : public DashTest {
protected:
    // Every key that picks no file, the mouse over the whole screen, both zooms.
    void use_all_of(std::uint8_t mode, bool arcs) {
        enter(mode);
        state.arcs = arcs;
        for (char c = ' '; c <= '~'; ++c)
            key(std::string(1, c));
        for (const char* typed : {key::left, key::right, key::up, key::down, key::page_up, key::page_down, key::delete_,
                                  key::home, key::end})
            keys(typed, 3);
        if (mode != dash_mode::images) key(key::enter);
        for (int y = -1; y < 648; y += 81)
            for (int x = -1; x < 960; x += 96)
                mouse_to(x, y, 1);
        draw_at(2);
        draw_at(3);
        EXPECT_EQ(OPMODE, mode);
    }
    void use_everything() {
        for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode)
            for (const bool arcs : {false, true})
                use_all_of(mode, arcs);
    }
};

// "/id/id/" as single ids.
std::vector<std::string> ids_of(std::string_view set) {
    std::vector<std::string> ids;
    for (std::size_t at = 1; at < set.size(); at += 5)
        ids.emplace_back(set.substr(at, 4));
    return ids;
}

} // namespace

TEST_F(DashScreenTest, TabGoesThroughTheModesAndBack) {
    enter(0);
    for (const int mode : {1, 2, 3, 4, 5, 0, 1}) {
        key(key::tab);
        EXPECT_EQ(OPMODE, mode);
    }
    for (const int mode : {0, 5, 4}) {
        key(key::shift_tab);
        EXPECT_EQ(OPMODE, mode);
    }
    for (const int mode : {3, 2, 1, 0, 5}) {
        key(key::tab, true);
        EXPECT_EQ(OPMODE, mode);
    }
}

TEST_F(DashScreenTest, TabByRealKeys) {
    OPMODE = 2;
    play_screen({mouse_at(5, 590), key_press(Key::tab), look([] { EXPECT_EQ(OPMODE, 3); }),
                 key_press(Key::tab, {.shift = true}), look([] { EXPECT_EQ(OPMODE, 2); }),
                 key_press(Key::tab, {.control = true}), look([] { EXPECT_EQ(OPMODE, 1); })});
}

TEST_F(DashScreenTest, TheModeIsKeptBetweenVisitsAndNothingElse) {
    set_gear_count(5);
    OPMODE = dash_mode::driving;
    play_screen({mouse_at(5, 590), key_press(Key::tab), key_press(Key::page_down), typed("q "),
                 look([this] { EXPECT_EQ(shown(300, 20), Pixel{black}); })});
    EXPECT_EQ(OPMODE, dash_mode::images);
    CURMENU = screen_number::dash_manager;
    play_screen({mouse_at(5, 590), look([] {
                     EXPECT_TRUE(screen_shows(16, 16, "= DASH MANAGER =", colour::title)); // twice its size again
                     EXPECT_EQ(found(0xFF646478).y1, 105);                                 // the first item
                 })});
}

TEST_F(DashScreenTest, ABlankTogglesTheArcsInEveryMode) {
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
        enter(mode);
        EXPECT_FALSE(state.arcs);
        key(" ");
        EXPECT_TRUE(state.arcs) << int{mode};
        key(" ");
        EXPECT_FALSE(state.arcs) << int{mode};
    }
}

TEST_F(DashScreenTest, QTogglesTheZoomInEveryMode) {
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
        enter(mode);
        EXPECT_EQ(state.zoom, 2);
        key("q");
        EXPECT_EQ(state.zoom, 3) << int{mode};
        key("Q");
        EXPECT_EQ(state.zoom, 2) << int{mode};
    }
}

TEST_F(DashScreenTest, AtZoomThreeThereIsNoSectionAroundTheView) {
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
        enter(mode);
        draw_at(3);
        EXPECT_NE(drawn(47, 400), Pixel{colour::section_light}) << int{mode};
        draw_at(2);
        EXPECT_EQ(drawn(47, 400), Pixel{colour::section_light}) << int{mode};
    }
}

TEST_F(DashScreenTest, NothingIsDrawnBelowTheWorkArea) {
    add("dash", 320, 200, 0, 0, ink::red);
    bitmap("dash").absolute_y = 50;
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
        enter(mode);
        draw_at(3);
        EXPECT_EQ(drawn(300, 599), Pixel{colour_of(ink::red)});
        EXPECT_NE(drawn(300, 600), Pixel{colour_of(ink::red)});
    }
}

TEST_F(DashScreenTest, EscapeEndsTheProgramAndClearsTheArea) {
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
        OPMODE = mode;
        CURMENU = screen_number::dash_manager;
        play({mouse_at(5, 590), key_press(Key::escape)}, DASHMANAGER);
        EXPECT_EQ(CURMENU, screen_number::quit);
        EXPECT_EQ(drawn(47, 400), Pixel{colour::background});
        EXPECT_EQ(drawn(20, 24), Pixel{colour::background});
    }
}

TEST_F(DashScreenTest, AnotherScreenIsPickedInTheMenuBar) {
    play({mouse_at(5, 590), click(20, 620)}, DASHMANAGER);
    EXPECT_EQ(CURMENU, screen_number::files);
    EXPECT_EQ(drawn(47, 400), Pixel{colour::background});
}

TEST_F(DashScreenTest, ItemsAreBoundOnEntry) {
    BITMAPS = 1;
    BITMAP[1].name = "gbox";
    play_screen({mouse_at(5, 590)});
    EXPECT_EQ(DASHITEM[10].bitmap, 1);
}

TEST_F(DashScreenTest, ArcsAreThoseOfTheCarThatIsThereOnEntry) {
    set_gauge_centre(speedometer, {33, 44});
    set_gauge_centre(tachometer, {55, 66});
    for (int marker = 0; marker <= last_marker; ++marker)
        set_wheel_marker(marker, {77, 88});
    enter(0);
    EXPECT_EQ(state.speed.arc.centre, (CockpitPoint{33, 44}));
    EXPECT_EQ(state.revolutions.arc.centre, (CockpitPoint{55, 66}));
    EXPECT_EQ(state.wheel.arc.centre, (CockpitPoint{77, 88}));
}

TEST_F(DashScreenTest, DrawsOnlyWhatChanged) {
    int before = 0;
    play_screen({mouse_at(5, 590), look([&] { before = window.frames(); }), mouse_at(300, 300), mouse_at(310, 310),
                 look([&] { EXPECT_EQ(window.frames(), before); }), typed("x"), key_press(Key::home), look([&] {
                     EXPECT_EQ(window.frames(), before + 1);
                     EXPECT_GE(window.last_changed().y1, menu_top) << "the strip alone";
                 })});
}

TEST_F(DashScreenTest, EveryKeyOfItsTablesHasWordsAndDoesSomething) {
    for (const KeyHelpTable& table : dash_screen_keys())
        for (const KeyHelp& row : table.rows) {
            EXPECT_FALSE(row.keys.empty());
            EXPECT_FALSE(row.words.empty());
        }
    EXPECT_EQ(dash_screen_keys().size(), 6U);
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode)
        for (const auto& row : mode_of(mode).keys)
            EXPECT_EQ(row.action != nullptr, row.keys[0] != nullptr && mode != dash_mode::driving) << row.words;
}

TEST_F(DashScreenTest, NoKeyAndNoPlaceOfTheMouseIsTooMuch) {
    add("ins2", 100, 60, -32768, 32767, ink::red);
    add("gbox", 0, 0, 32767, -32768, ink::red);
    PAR.fill(std::byte{0xFF});
    use_everything();
}

TEST_F(DashScreenTest, WorksWithoutAnyOneOfTheBitmapsAndWithoutAll) {
    std::vector<std::string> all = ids_of(bitmap_set_ids(BitmapSet::dashboard));
    for (const std::string& id : ids_of(bitmap_set_ids(BitmapSet::dots_and_digits)))
        if (std::ranges::count(all, id) == 0) all.push_back(id);
    ASSERT_EQ(all.size(), 31U);
    for (const std::string& missing : all) {
        reset_bitmaps();
        INITDASHITEMS();
        for (const std::string& id : all)
            if (id != missing) add(id, 10, 10, 5, 5, ink::red);
        SCOPED_TRACE(missing);
        use_everything();
        EXPECT_EQ(RBM(missing), 0);
    }
    reset_bitmaps();
    INITDASHITEMS();
    use_everything();
    EXPECT_EQ(BITMAPS, 0);
}
