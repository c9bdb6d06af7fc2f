#include "widgets/screen_loop.h"

#include "base/reset.h"

#include "model/document.h"
#include "model/parameters.h"
#include "support/play.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t ink = 0xFF00FF00;

struct Sheet : ScreenState {
    std::vector<std::string> log;
    bool logs_steps = false;
    int marks = 0;
    bool redraw_marks = true;

    void note(const std::string& what) {
        if (logs_steps) log.push_back(what);
    }
};

void redraw(Sheet& sheet) {
    sheet.note("redraw");
    if (sheet.repaint) {
        sheet.log.emplace_back("repaint");
        clear_work_area();
    }
    if (!sheet.repaint && !sheet.redraw_marks) return;
    sheet.redraw_marks = false;
    fill_box(screen(), 10, 10, 10 + sheet.marks, 10, ink);
    draw_pixel(screen(), 900, 500, ink);
}

void on_mouse(Sheet& sheet) {
    sheet.note("mouse");
    sheet.log.push_back(std::to_string(sheet.input.mouse.x) + (sheet.input.left_pressed() ? " pressed" : ""));
}

void widgets(Sheet& sheet) { sheet.note("widgets"); }

void add_mark(Sheet& sheet) {
    sheet.note("key");
    ++sheet.marks;
    sheet.redraw_marks = true;
}

void leave(Sheet& sheet) { sheet.leave = true; }

void run_inside(Sheet& sheet);

constexpr KeyBinding<Sheet> keys[] = {
    {{"m", key::enter}, "adds a mark", add_mark},
    {{}, "does nothing here", nullptr, "a double click"},
    {{"q"}, "leaves", leave},
    {{"p"}, "runs a sheet inside", run_inside},
    {{key::escape, key::close_window}, "ends the program", end_program<Sheet>},
};
constexpr KeyBinding<Sheet> keys_of_marked[] = {{{"q"}, "adds a mark", add_mark}};

std::span<const KeyBinding<Sheet>> mode_keys(const Sheet& sheet) {
    if (sheet.marks == 0) return {};
    return keys_of_marked;
}

void after(Sheet& sheet) { sheet.note("after"); }

constexpr Step order[] = {Step::redraw, Step::read, Step::mouse, Step::widgets, Step::key, Step::menu_bar, Step::after};
constexpr Step other_order[] = {Step::redraw, Step::mouse, Step::read, Step::menu_bar, Step::widgets, Step::key};
constexpr Screen<Sheet> sheet_screen{
    .order = order, .redraw = redraw, .on_mouse = on_mouse, .widgets = widgets, .keys = keys, .after = after};
constexpr Screen<Sheet> other_screen{
    .order = other_order, .redraw = redraw, .on_mouse = on_mouse, .widgets = widgets, .keys = keys};
constexpr Screen<Sheet> screen_with_modes{.order = order,
                                          .redraw = redraw,
                                          .on_mouse = on_mouse,
                                          .widgets = widgets,
                                          .keys = keys,
                                          .mode_keys = mode_keys,
                                          .after = after};

void run_inside(Sheet& sheet) {
    Sheet inner;
    run_screen(inner, sheet_screen);
    sheet.log.push_back("inside: " + std::to_string(inner.marks));
}

class ScreenLoop : public ScriptedTest {
protected:
    Sheet sheet;

    void run(std::vector<ScriptStep> steps, const Screen<Sheet>& screen_to_run = sheet_screen) {
        play(std::move(steps), [&] { run_screen(sheet, screen_to_run); });
    }
    // From here on the steps are noted, up to the end of the pass.
    ScriptStep note_steps() {
        return look([this] { sheet.logs_steps = true; });
    }
};

} // namespace

TEST_F(ScreenLoop, RunsTheStepsInTheScreensOwnOrder) {
    sheet.logs_steps = true;
    {
        RunningScreen running(sheet);
        run_pass(sheet, sheet_screen, running);
        EXPECT_THAT(sheet.log, ElementsAre("redraw", "repaint", "widgets", "after"));
        sheet.log.clear();
        window.play({typed("m")});
        window.wait(0);
        run_pass(sheet, sheet_screen, running);
        EXPECT_THAT(sheet.log, ElementsAre("redraw", "widgets", "key", "after"));
    }
    sheet.log.clear();
    RunningScreen running(sheet);
    window.play({at_once({mouse_at(5, 5), typed("m")})});
    window.wait(0);
    run_pass(sheet, other_screen, running);
    EXPECT_THAT(sheet.log, ElementsAre("redraw", "widgets")) << "the mouse is read, and handled in the next pass";
    sheet.log.clear();
    run_pass(sheet, other_screen, running);
    EXPECT_THAT(sheet.log, ElementsAre("redraw", "mouse", "5", "widgets", "key"));
}

TEST_F(ScreenLoop, DrawsAllAtTheStartAndThenWhatIsFlagged) {
    run({look([this] {
             EXPECT_EQ(shown(900, 500), Pixel{ink});
             fill_box(screen(), 900, 500, 900, 500, colour::background);
         }),
         typed("m"), look([this] {
             EXPECT_EQ(shown(11, 10), Pixel{ink});
             EXPECT_EQ(sheet.log, std::vector<std::string>{"repaint"});
         }),
         key_press(Key::escape)});
}

TEST_F(ScreenLoop, ARedrawIsOneFrame) {
    int before = 0;
    run({look([&] { before = window.frames(); }), typed("m"), look([&] {
             EXPECT_EQ(window.frames(), before + 1);
             EXPECT_EQ(window.last_rectangles().size(), 2U) << "two places far apart";
         }),
         key_press(Key::escape)});
}

TEST_F(ScreenLoop, EveryKeyOfARowCallsItsAction) {
    run({typed("m"), key_press(Key::enter), typed("x"), look([this] { EXPECT_EQ(sheet.marks, 2); }), typed("q")});
    EXPECT_EQ(CURMENU, screen_number::files) << "it left, the program goes on";
}

TEST_F(ScreenLoop, TheKeysOfAModeComeFirst) {
    run({at_once({typed("mqqm"), key_press(Key::escape)})}, screen_with_modes);
    EXPECT_EQ(sheet.marks, 4);
}

TEST_F(ScreenLoop, AStepThatLeavesIsTheLast) {
    sheet.logs_steps = true;
    RunningScreen running(sheet);
    run_pass(sheet, sheet_screen, running);
    sheet.log.clear();
    window.play({typed("q")});
    window.wait(0);
    run_pass(sheet, sheet_screen, running);
    EXPECT_THAT(sheet.log, ElementsAre("redraw", "widgets"));
    EXPECT_TRUE(running.left());
}

TEST_F(ScreenLoop, EscapeAndTheCloseRequestEndTheProgram) {
    for (const ScriptStep& ending : {key_press(Key::escape), close_window()}) {
        CURMENU = screen_number::files;
        sheet = {};
        run({ending});
        EXPECT_EQ(CURMENU, screen_number::quit);
        EXPECT_EQ(drawn(900, 500), Pixel{colour::background}) << "cleared";
    }
}

TEST_F(ScreenLoop, TheMenuBarLeavesForAnotherScreenWithoutABlankFrameBetween) {
    int before = 0;
    run({look([&] { before = window.frames(); }), press(menu_cell + 5, 620)});
    EXPECT_EQ(CURMENU, screen_number::editor_3d);
    EXPECT_EQ(drawn(900, 500), Pixel{colour::background});
    EXPECT_EQ(shown(900, 500), Pixel{ink}) << "it goes with the next screen's first frame";
    EXPECT_EQ(window.frames(), before) << "and so does the menu bar";
}

TEST_F(ScreenLoop, WhatStandsBeforeTheFirstReadIsOneFrame) {
    const int frames = window.frames();
    say("Here");
    run({look([&] { EXPECT_EQ(window.frames(), frames + 1) << "screen and strip"; }), key_press(Key::escape)});
}

TEST_F(ScreenLoop, AScreenThatIsLeftBeforeItReadsLeavesNoLock) {
    {
        const RunningScreen running(sheet);
        draw_pixel(screen(), 5, 5, ink);
    }
    const int frames = window.frames();
    draw_pixel(screen(), 6, 6, ink);
    show_screen();
    EXPECT_EQ(window.frames(), frames + 1);
}

TEST_F(ScreenLoop, TheFirstInputIsTheMouseAsItIs) {
    window.play({press(7, 7)});
    while (mouse().buttons == 0)
        read_input();
    run({key_press(Key::escape)});
    EXPECT_THAT(sheet.log, ElementsAre("repaint", "7"));
}

TEST_F(ScreenLoop, ShowsTheTitleAndTheStrip) {
    TITLENAME = "Ard";
    run({look([this] {
             EXPECT_EQ(window.title(), "Karosmit 1.0.4 - Ard");
             TITLENAME = "Bor";
             say("a word");
             set_screen_fact("fact");
         }),
         look([this] {
             EXPECT_EQ(window.title(), "Karosmit 1.0.4 - Bor");
             EXPECT_TRUE(screen_shows(208, 616, "a word", colour::title));
         }),
         key_press(Key::escape)});
    keep_strip();
    EXPECT_FALSE(screen_shows(959 - 8 - 4 * 8 + 1, 616, "fact", colour::label)) << "it went with the screen";
    EXPECT_TRUE(screen_shows(208, 616, "a word", colour::title));
}

// --- a screen inside another -----------------------------------------------------------------------------------------

TEST_F(ScreenLoop, AScreenInsideAnotherReturnsToItAndItDrawsItselfAnew) {
    run({typed("m"), typed("p"), typed("mm"), typed("q"), look([this] {
             EXPECT_THAT(sheet.log, ElementsAre("repaint", "inside: 2", "repaint"));
             EXPECT_EQ(shown(11, 10), Pixel{ink});
         }),
         typed("m"), key_press(Key::escape)});
    EXPECT_EQ(sheet.marks, 2);
}

TEST_F(ScreenLoop, WhatEndsAnInnerScreenForAnotherOrForGoodEndsBoth) {
    for (const ScriptStep& ending : {key_press(Key::escape), close_window(), press(menu_cell + 5, 620)}) {
        reset_program();
        sheet = {};
        run({typed("p"), ending});
        EXPECT_NE(CURMENU, screen_number::files);
        EXPECT_THAT(sheet.log, ElementsAre("repaint", "inside: 0"));
    }
}

// --- hooks -----------------------------------------------------------------------------------------------------------

TEST_F(ScreenLoop, AHookMayTakeAKeyBeforeTheScreenSeesIt) {
    std::string seen;
    set_loop_hooks({.before =
                        [&](const Input& input) {
                            seen += input.key;
                            return input.key == "m";
                        },
                    .after = {}});
    run({typed("mxm"), typed("q")});
    EXPECT_EQ(seen, "mxmq");
    EXPECT_EQ(sheet.marks, 0);
}

TEST_F(ScreenLoop, AHookSeesEveryInputOnceItWasActedOn) {
    std::vector<std::string> seen;
    set_loop_hooks({.before = {}, .after = [&](const Input& input) {
                        if (input.mouse_changed()) seen.push_back(std::to_string(input.mouse.x));
                        if (!input.key.empty()) seen.push_back(input.key + std::to_string(sheet.marks));
                    }});
    for (const Screen<Sheet>& either : {sheet_screen, other_screen}) {
        sheet = {};
        seen.clear();
        CURMENU = screen_number::files;
        run({mouse_at(5, 5), at_once({typed("m"), mouse_at(6, 6), typed("m")}), typed("q")}, either);
        EXPECT_THAT(seen, ElementsAre("5", "m1", "6", "m2", "q2"));
        reset_input();
    }
}

TEST_F(ScreenLoop, AHookMayAskForEverythingToBeDrawnAnew) {
    set_loop_hooks({.before = {}, .after = [&](const Input& input) {
                        if (input.key == "x") repaint_screens();
                    }});
    run({typed("x"), look([this] { EXPECT_THAT(sheet.log, ElementsAre("repaint", "repaint")); }), typed("q")});
}

TEST_F(ScreenLoop, WhatAHookSaysBeforeAWaitIsShownBeforeThatWait) {
    set_loop_hooks({.waiting = [](const Input&) { say("kept"); }});
    about_to_read({});
    EXPECT_TRUE(screen_shows(208, 616, "kept", colour::title));
}

TEST_F(ScreenLoop, ResettingTheProgramTakesTheHooksAway) {
    set_loop_hooks({.before = [](const Input&) { return true; }, .after = {}});
    reset_program();
    run({typed("m"), typed("q")});
    EXPECT_EQ(sheet.marks, 1);
}
