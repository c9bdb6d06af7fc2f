// The keys' page on every screen and in each of its modes, and that the tables tell the truth.
#include "app/everywhere.h"

#include "app/screens.h"
#include "base/config.h"
#include "dash/dash_screen.h"
#include "drawing/drawing.h"
#include "editor3d/editor_screen.h"
#include "editor3d/paint_job_panel.h"
#include "editor3d/views.h"
#include "files/file_screen.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/gauges.h"
#include "model/items.h"
#include "model/parameters.h"
#include "params/parameter_screen.h"
#include "params/parameter_table.h"
#include "params/specifications.h"
#include "params/target_edit.h"
#include "support/models.h"
#include "support/play.h"
#include "support/temporary_directory.h"
#include "widgets/key_page.h"
#include "widgets/key_scope.h"
#include "widgets/page.h"
#include "widgets/screen_loop.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

namespace {

class Everywhere : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        ScriptedTest::SetUp();
        INITPARAMTARGETS();
        INIT3DWINDOWS();
        INITDASHITEMS();
        PJCOLS = 3;
        set_loop_hooks({.everywhere = act_everywhere});
    }

    // Every table that can stand on the page together, for each screen and mode.
    static std::vector<std::vector<KeyHelpTable>> all_pages() {
        std::vector<std::vector<KeyHelpTable>> pages;
        for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
            OPMODE = mode;
            pages.push_back(keys_now(DashScreen(), dash_screen));
        }
        for (int mode = 0; mode < move_modes; ++mode) {
            EditorScreen state;
            state.mode = static_cast<MoveMode>(mode);
            pages.push_back(keys_now(state, editor_screen));
        }
        pages.push_back(keys_now(ParameterScreen(), parameter_screen));
        pages.push_back(file_screen_keys());
        pages.push_back({paint_job_panel_keys()});
        pages.push_back({target_entry_keys()});
        pages.push_back({specification_keys()});
        OPMODE = 0;
        return pages;
    }
    static bool page_is_shown() { return screen_shows(16, 16, "= KEYS =", colour::title); }
    // What stands on the page, wherever it stands.
    static bool page_tells(const std::string& words) {
        for (int y = page_text.y1; y <= page_text.y2; y += glyph_height)
            for (int x = page_text.x1; x <= page_text.x2; x += glyph_width)
                if (screen_shows(x, y, words, colour::label) || screen_shows(x, y, words, idle_key_colour)) return true;
        return false;
    }
    // Shows the page after some steps, looks for these words, and goes on where the screen was.
    void expect_page(std::vector<ScriptStep> before, const std::string& words, void (*screen)()) {
        before.push_back(key_press(Key::f1));
        before.push_back(look([words] {
            EXPECT_TRUE(page_is_shown()) << words;
            EXPECT_TRUE(page_tells(words)) << words;
            EXPECT_TRUE(page_tells("goes to that screen")) << words;
        }));
        before.push_back(typed("x"));
        before.push_back(look([words] { EXPECT_FALSE(page_is_shown()) << words; }));
        before.push_back(close_window());
        play(std::move(before), screen);
        EXPECT_EQ(CURMENU, screen_number::quit);
    }
};

// The characters and every other key with a string of its own, but for those that end a screen, open another one or
// write a file.
std::vector<std::string> sent_by_a_keyboard() {
    std::vector<std::string> sent{key::backspace, key::tab,     key::home,      key::up,   key::page_up,
                                  key::left,      key::right,   key::end,       key::down, key::page_down,
                                  key::insert,    key::delete_, key::shift_tab, key::f2,   "\xFF\x85"};
    for (char c = ' '; c <= '~'; ++c)
        if (c != '`') sent.emplace_back(1, c);
    for (const char letter : std::string("ABCFGKLNOPQRTUVWXYZ"))
        sent.push_back(key::control(letter));
    return sent;
}

void files() { FILEHANDLING(file_screen_mode::cars); }
void picker() { FILEHANDLING(file_screen_mode::pictures); }

} // namespace

TEST_F(Everywhere, ThePageHasRoomForEveryScreenAndMode) {
    for (std::vector<KeyHelpTable> tables : all_pages()) {
        tables.push_back(everywhere_keys());
        std::size_t entries = 0;
        for (const KeyHelpTable& table : tables)
            entries += table.rows.size() + (table.heading.empty() ? 0 : 1);
        EXPECT_EQ(lay_out_keys(tables).size(), entries) << tables.front().rows.front().words;
    }
}

TEST_F(Everywhere, F1OpensItOnEveryScreen) {
    CURMENU = screen_number::files;
    expect_page({mouse_at(5, 590)}, "loads", files);
    CURMENU = screen_number::files;
    expect_page({mouse_at(5, 590)}, "saves", picker);
    CURMENU = screen_number::editor_3d;
    expect_page({mouse_at(5, 590)}, "generates four standard wheels", EDIT3D);
    CURMENU = screen_number::editor_3d;
    expect_page({mouse_at(40, 70), key_press(Key::tab)}, "track wider", EDIT3D);
    CURMENU = screen_number::parameters;
    expect_page({mouse_at(5, 590)}, "next zoom of the torque axis, 1 to 4", EDITPARAMS);
    CURMENU = screen_number::dash_manager;
    expect_page({mouse_at(5, 590)}, "steers left, as long as it is held", DASHMANAGER);
    for (const char* words : {"removes the bitmap and its mask", "lays all markers along the arc", "one pixel",
                              "one pixel", "next gear, after the last one the gate"}) {
        ++OPMODE;
        CURMENU = screen_number::dash_manager;
        const std::string told = words == std::string("one pixel") ? "of the arc, the other direction" : words;
        // Without an arc that row does nothing.
        expect_page(OPMODE == 3 || OPMODE == 4 ? std::vector{mouse_at(5, 590), typed(" ")}
                                               : std::vector{mouse_at(5, 590)},
                    told, DASHMANAGER);
    }
    OPMODE = 0;
}

TEST_F(Everywhere, InThePaintJobPanelItTellsThePanelsKeys) {
    CURMENU = screen_number::editor_3d;
    expect_page({mouse_at(500, 540), key_press(Key::enter)}, "closes the panel and changes nothing", EDIT3D);
}

TEST_F(Everywhere, AnEditGoesOnBehindThePage) {
    set_par_word(par_offset::mass, 20);
    CURMENU = screen_number::parameters;
    play({click(30, 110), key_press(Key::end), typed("7"), key_press(Key::f1), look([] {
              EXPECT_TRUE(page_is_shown());
              EXPECT_TRUE(page_tells("stores, and opens the next row of the section"));
          }),
          typed("9"), look([] { EXPECT_FALSE(page_is_shown()); }), typed("3"), key_press(Key::enter), close_window()},
         EDITPARAMS);
    EXPECT_EQ(par_word(par_offset::mass), 2073) << "what closed the page was not typed";
    CARINFO = "ab]";
    CURMENU = screen_number::parameters;
    play({click(800, 400), typed("x"), key_press(Key::f1), key_press(Key::f1), typed("y"), key_press(Key::enter),
          close_window()},
         EDITPARAMS);
    EXPECT_EQ(CARINFO, "xyab]");
}

TEST_F(Everywhere, EveryKeyOfTheTablesIsOneAndNoOtherIs) {
    const std::vector<std::string> sent = sent_by_a_keyboard();
    const auto compare = [&sent](auto state, const auto& screen) {
        const std::uint8_t mode = OPMODE;
        for (const std::string& typed : sent) {
            unsay(said());
            state.input.key = typed;
            type_key(state, screen);
            OPMODE = mode;
            const bool in_table =
                row_of(screen.keys, typed) || (screen.mode_keys && row_of(screen.mode_keys(state), typed));
            EXPECT_EQ(said() != "F1 shows the keys", in_table) << names_of({typed.c_str()}) << " in mode " << int{mode};
        }
    };
    compare(EditorScreen(), editor_screen);
    compare(ParameterScreen(), parameter_screen);
    for (; OPMODE < dash_mode::count; ++OPMODE)
        compare(DashScreen(), dash_screen);
    OPMODE = 0;
}

namespace {

std::vector<std::uint8_t> picture_of(auto& state, const auto& screen_of_state) {
    state.repaint = true;
    redraw_screen(state, screen_of_state);
    const auto bytes = screen().image().bytes();
    return {bytes.begin(), bytes.end()};
}

// Of each row that may be grey: whether it is grey is whether its key changes nothing, neither the car nor the picture.
template <class State>
void expect_grey_is_idle(const State& state, const Screen<State>& screen_of_state, const std::string& where) {
    const auto look_at = [&](std::span<const KeyBinding<State>> rows) {
        for (const KeyBinding<State>& row : rows) {
            if (!row.works || !row.action || std::string_view(row.keys[0]) == key::enter) continue;
            const CarDocument car = DOCUMENT;
            const std::uint8_t job = CURPJ;
            State tried = state;
            const auto before = picture_of(tried, screen_of_state);
            const bool works = row.works(tried);
            tried.input.key = row.keys[0];
            row.action(tried);
            const bool changed = before != picture_of(tried, screen_of_state) || !(DOCUMENT == car);
            EXPECT_EQ(works, changed) << names_of(row.keys) << ": " << row.words << where;
            DOCUMENT = car;
            CURPJ = job;
        }
    };
    look_at(screen_of_state.keys);
    if (screen_of_state.mode_keys) look_at(screen_of_state.mode_keys(state));
}

} // namespace

TEST_F(Everywhere, WhatIsGreyDoesNothingAndWhatIsNotDoes) {
    for (const int value : {0, 60, 255}) {
        PAR.fill(static_cast<std::byte>(value));
        PAINTJOBS = static_cast<std::uint8_t>(std::clamp(value, 1, 16));
        const std::string with = " with " + std::to_string(value);
        for (OPMODE = 0; OPMODE < dash_mode::count; ++OPMODE)
            for (const bool arcs : {false, true}) {
                DashScreen state;
                state.arcs = arcs;
                state.input.mouse = {value + 9, value, 0, 0};
                if (OPMODE == dash_mode::gear_box && gear_count() == 0) state.gear = tabs;
                expect_grey_is_idle(state, dash_screen, with + " in mode " + std::to_string(OPMODE));
            }
        OPMODE = 0;
        for (const double snap : {0.00625, 0.1, 1.6}) {
            EditorScreen state;
            state.snap = snap;
            expect_grey_is_idle(state, editor_screen, with);
        }
        for (const int selected : {0, 50, torque_points - 1}) {
            ParameterScreen state;
            state.graph.selected = selected;
            state.input.mouse = {value + 61, 300, 0, 0};
            expect_grey_is_idle(state, parameter_screen, with);
        }
    }
}
