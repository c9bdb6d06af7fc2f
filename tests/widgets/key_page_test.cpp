#include "widgets/key_page.h"

#include "support/play.h"
#include "widgets/page.h"
#include "widgets/screen_loop.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

namespace {

KeyHelpTable table_of(std::size_t rows, const std::string& words, const std::string& heading = "") {
    KeyHelpTable table{heading, {}};
    for (std::size_t i = 0; i < rows; ++i)
        table.rows.push_back({"Key " + std::to_string(i), words});
    return table;
}

std::set<int> places_across(const std::vector<PlacedKeys>& entries) {
    std::set<int> places;
    for (const PlacedKeys& entry : entries)
        places.insert(entry.x);
    return places;
}

void expect_apart_and_inside(const std::vector<PlacedKeys>& entries) {
    for (const PlacedKeys& entry : entries) {
        const auto lines = static_cast<int>(std::max(entry.keys.size(), entry.words.size()));
        EXPECT_GE(entry.y, page_text.y1);
        EXPECT_LE(entry.y + glyph_height * lines - 1, page_text.y2);
        for (const std::string& line : entry.words)
            EXPECT_LE(entry.words_x + glyph_width * static_cast<int>(line.size()) - 1, page_text.x2) << line;
        for (const PlacedKeys& other : entries) {
            const bool is_below = &other != &entry && other.x == entry.x && other.y >= entry.y;
            EXPECT_TRUE(!is_below || other.y >= entry.y + glyph_height * lines) << "one over the other";
        }
    }
}

struct Desk : ScreenState {
    int presses = 0, mouse_changes = 0, left_presses = 0;
};
void redraw(Desk& desk) {
    if (!desk.repaint) return;
    clear_work_area();
    draw_text(screen(), 16, 16, "= DESK =", colour::title);
}
void on_mouse(Desk& desk) {
    ++desk.mouse_changes;
    desk.left_presses += desk.input.left_pressed() ? 1 : 0;
}
void press_key(Desk& desk) { ++desk.presses; }
bool never(const Desk&) { return false; }

constexpr KeyBinding<Desk> keys[] = {
    {{"m"}, "counts", press_key},
    {{"n"}, "cannot count", press_key, nullptr, never},
    {{key::escape, key::close_window}, "ends the program", end_program<Desk>},
};
constexpr Step order[] = {Step::redraw, Step::read, Step::mouse, Step::key, Step::menu_bar};
constexpr Screen<Desk> desk_screen{.order = order, .redraw = redraw, .on_mouse = on_mouse, .keys = keys};

class KeyPage : public ScriptedTest {
protected:
    Desk desk;

    void SetUp() override {
        ScriptedTest::SetUp();
        set_loop_hooks({.everywhere = [](const Input& input) {
            if (input.key != key::f1) return false;
            show_key_page(keys_of_the_moment());
            return true;
        }});
    }
    void run(std::vector<ScriptStep> steps) {
        desk = {};
        CURMENU = screen_number::files;
        play(std::move(steps), [&] { run_screen(desk, desk_screen); });
    }
    static bool page_is_shown() { return screen_shows(16, 16, "= KEYS =", colour::title); }
    static bool desk_is_shown() { return screen_shows(16, 16, "= DESK =", colour::title); }
};

} // namespace

TEST_F(KeyPage, ShortTablesStandInOneColumnALineEach) {
    const auto entries = lay_out_keys({table_of(10, "does something"), table_of(10, "does more", "Here:")});
    EXPECT_EQ(entries.size(), 21U);
    EXPECT_THAT(places_across(entries), testing::ElementsAre(page_text.x1));
    expect_apart_and_inside(entries);
}

TEST_F(KeyPage, LongOnesTakeTwoColumnsOrThree) {
    const auto two = lay_out_keys({table_of(40, "does something"), table_of(10, "does more", "Here:")});
    EXPECT_EQ(two.size(), 51U);
    EXPECT_EQ(places_across(two).size(), 2U);
    expect_apart_and_inside(two);
    const auto three = lay_out_keys({table_of(80, "does something")});
    EXPECT_EQ(three.size(), 80U);
    EXPECT_EQ(places_across(three).size(), 3U);
    expect_apart_and_inside(three);
}

TEST_F(KeyPage, LongWordsAreWrapped) {
    const std::string words(200, 'w');
    const auto entries = lay_out_keys({table_of(5, words)});
    ASSERT_EQ(entries.size(), 5U);
    EXPECT_GT(entries[0].words.size(), 1U);
    expect_apart_and_inside(entries);
}

TEST_F(KeyPage, AHeadingStandsInTheColumnOfItsFirstRow) {
    const auto entries = lay_out_keys({table_of(30, "does something"), table_of(10, "does more", "Here:")});
    ASSERT_TRUE(entries[30].is_heading);
    EXPECT_EQ(entries[30].x, entries[31].x);
    EXPECT_GT(entries[30].x, entries[29].x);
}

TEST_F(KeyPage, SaysWhatTheKeysDoAndWhichDoNothingNow) {
    const int words_x = page_text.x1 + glyph_width * 8;
    run({mouse_at(5, 5), key_press(Key::f1), look([&] {
             EXPECT_TRUE(page_is_shown());
             EXPECT_TRUE(screen_shows(page_text.x1, page_text.y1, "m", colour::value));
             EXPECT_TRUE(screen_shows(words_x, page_text.y1, "counts", colour::label));
             EXPECT_TRUE(screen_shows(words_x, page_text.y1 + 16, "cannot count", idle_key_colour));
             EXPECT_EQ(shown(page_text.x1, page_text.y1 + 16), drawn(page_text.x1, page_text.y1 + 16)) << "a frame";
         }),
         key_press(Key::escape), look([&] { EXPECT_TRUE(desk_is_shown()); }), key_press(Key::escape)});
}

TEST_F(KeyPage, AnyKeyClosesItAndDoesNothingElse) {
    for (const ScriptStep& step : {typed("m"), key_press(Key::f1), key_press(Key::escape), key_press(Key::enter)})
        run({mouse_at(5, 5), key_press(Key::f1), look([&] { EXPECT_TRUE(page_is_shown()); }), step, look([&] {
                 EXPECT_TRUE(desk_is_shown());
                 EXPECT_EQ(desk.presses, 0);
             }),
             close_window()});
}

TEST_F(KeyPage, AnyButtonClosesItAndDoesNothingElse) {
    for (const auto& [x, y, button] : {std::tuple{400, 300, 1}, {400, 300, 2}, {100, 620, 1}}) {
        run({mouse_at(5, 5), key_press(Key::f1), look([&] { EXPECT_TRUE(page_is_shown()); }), press(x, y, button),
             look([&] { EXPECT_TRUE(desk_is_shown()); }), mouse_at(x + 30, y), release(x + 30, y, button), look([&] {
                 EXPECT_EQ(desk.left_presses, 0);
                 EXPECT_EQ(CURMENU, screen_number::files) << "the menu bar was not clicked";
             }),
             close_window()});
        EXPECT_GT(desk.mouse_changes, 1) << "where the pointer went is known";
    }
}

TEST_F(KeyPage, TheCloseRequestClosesItAndEndsTheProgram) {
    run({mouse_at(5, 5), key_press(Key::f1), close_window()});
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(KeyPage, TheWorkAreaIsAsItWasToThePixel) {
    constexpr std::uint32_t mark = 0xFF00FF00;
    run({mouse_at(5, 5), look([] {
             draw_pixel(screen(), 0, 0, mark);
             draw_pixel(screen(), 959, 599, mark);
             draw_pixel(screen(), 500, 300, mark);
         }),
         key_press(Key::f1), look([&] { EXPECT_NE(shown(500, 300), Pixel{mark}); }), typed("x"), look([&] {
             EXPECT_EQ(shown(0, 0), Pixel{mark});
             EXPECT_EQ(shown(959, 599), Pixel{mark});
             EXPECT_EQ(shown(500, 300), Pixel{mark});
         }),
         close_window()});
}

TEST_F(KeyPage, AKeyThatDoesNothingSaysWhereTheKeysAre) {
    for (const ScriptStep& step : {typed("?"), typed("h"), key_press(Key::f5), key_press(Key::f12),
                                   key_press(Key::home), key_press(Key::g, {.control = true})})
        run({mouse_at(5, 5), step, look([] {
                 EXPECT_EQ(said(), "F1 shows the keys");
                 unsay(said());
             }),
             typed("mn"), look([&] {
                 EXPECT_EQ(said(), "");
                 EXPECT_EQ(desk.presses, 2) << "a key that does nothing now is one all the same";
             }),
             close_window()});
}
