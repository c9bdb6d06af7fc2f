// Undo and redo on the screens, and what the strip says of the car, in visits of the whole program.
#include "app/editing_test.h"
#include "app/editing.h"

#include "formats/saved_car.h"
#include "model/items.h"
#include "params/parameter_table.h"
#include "params/torque_graph.h"
#include "widgets/widgets.h"
#include "window/key_strings.h"

namespace {

ScriptStep says(const std::string& message) {
    return look([message] { EXPECT_EQ(said(), message); });
}

// What stands at the right of the strip.
bool fact_is(const std::string& fact) {
    const int x = strip_right + 1 - glyph_width - glyph_width * static_cast<int>(fact.size());
    const int y = strip_top + (strip_bottom - strip_top + 1 - glyph_height) / 2;
    return screen_shows(x - glyph_width, y, " " + fact, colour::label);
}
ScriptStep fact(const std::string& text) {
    return look([text] { EXPECT_TRUE(fact_is(text)) << text; });
}

ScriptStep brakes_are(int value) {
    return look([value] { EXPECT_EQ(par_word(brakes_offset), value); });
}

constexpr int new_brakes = 300;
constexpr int files = 0, editor_3d = 1, dash = 2, parameters = 3;

const std::vector<ScriptStep> stroke = drag({{100, 400}, {140, 380}, {200, 300}, {260, 420}});

} // namespace

TEST_F(EditingTest, ATypedValueIsOneStep) {
    visit({to_screen(parameters)});
    visit(type_brakes("7") + type_brakes("777") +
          std::vector<ScriptStep>{brakes_are(777), undo_step, says("Undone: brakes"), brakes_are(7), undo_step,
                                  brakes_are(new_brakes), undo_step, says("Nothing to undo"), redo_step,
                                  says("Redone: brakes"), brakes_are(7),
                                  key_press(Key::z, {.control = true, .shift = true}), brakes_are(777), redo_step,
                                  says("Nothing to redo")});
}

TEST_F(EditingTest, AStrokeIsOneStep) {
    const ParameterBlock before = PAR;
    visit({to_screen(parameters)});
    visit(stroke + std::vector<ScriptStep>{look([&] { EXPECT_NE(PAR, before); }), undo_step,
                                           says("Undone: torque curve"), look([&] { EXPECT_EQ(PAR, before); })});
}

TEST_F(EditingTest, ADragIsOneStep) {
    visit({to_screen(dash), key_press(Key::tab)});
    const CarDocument before = DOCUMENT;
    visit(drag({{300, 350}, {320, 350}, {340, 360}, {350, 340}}) +
          std::vector<ScriptStep>{look([&] { EXPECT_FALSE(DOCUMENT == before); }), undo_step,
                                  look([&] { EXPECT_EQ(DOCUMENT, before); }), undo_step, says("Nothing to undo")});
}

TEST_F(EditingTest, ARunOfOneArrowKeyIsOneStep) {
    visit({to_screen(parameters)});
    const ScriptStep up = key_press(Key::up), down = key_press(Key::down);
    visit({up, up, up, up, look([] { EXPECT_EQ(torque(0), 4); }), down, undo_step,
           look([] { EXPECT_EQ(torque(0), 4); }), undo_step, look([] { EXPECT_EQ(torque(0), 0); })});
}

TEST_F(EditingTest, KeysThatDoNothingNowAreMarked) {
    const auto work = [](bool undo, bool redo) {
        return look([=] {
            const std::vector<KeyHelp> rows = editing_keys();
            EXPECT_EQ(rows.at(0).works, undo);
            EXPECT_EQ(rows.at(1).works, redo);
        });
    };
    visit({to_screen(parameters), work(false, false)});
    visit(type_brakes("7") + std::vector<ScriptStep>{work(true, false), click(200, 134), work(false, false),
                                                     key_press(Key::escape), undo_step, work(false, true)});
}

TEST_F(EditingTest, AClickEndsARun) {
    visit({to_screen(parameters)});
    const ScriptStep up = key_press(Key::up);
    visit({up, click(20, 20), up, undo_step, look([] { EXPECT_EQ(torque(0), 1); })});
}

TEST_F(EditingTest, NothingIsTakenBackWhileAButtonIsDown) {
    visit({to_screen(parameters)});
    const int point = point_at(100);
    visit(type_brakes("7") +
          std::vector<ScriptStep>{press(100, 400), undo_step,
                                  look([point] { EXPECT_NE(torque(point), 0) << "the stroke goes on"; }),
                                  release(100, 400), undo_step, look([point] { EXPECT_EQ(torque(point), 0); }),
                                  brakes_are(7), undo_step, brakes_are(new_brakes)});
}

TEST_F(EditingTest, WhoeverLoadsOverUnsavedWorkGetsItBack) {
    visit({to_screen(parameters)});
    visit(type_brakes("7") + std::vector<ScriptStep>{to_screen(files)} + load("brux") +
          std::vector<ScriptStep>{look([&] { EXPECT_EQ(window.title(), "Karosmit 1.0.4 - " + CARNAME); }), undo_step,
                                  says("Undone: load of brux"), brakes_are(7),
                                  look([&] { EXPECT_EQ(window.title(), "Karosmit 1.0.4"); })} +
          save("mine"));
    const Bytes saved = get_file("carmine.res");
    reset_parameters();
    visit(load("mine") + std::vector<ScriptStep>{brakes_are(7)});
}

TEST_F(EditingTest, AnUndoneLoadBindsTheItemsAgain) {
    visit(load("tarn") + std::vector<ScriptStep>{to_screen(dash), key_press(Key::tab)});
    const CarDocument before = DOCUMENT;
    visit({key_press(Key::delete_), look([] { EXPECT_EQ(DASHITEM[1].bitmap, 0); }), undo_step, look([&] {
               EXPECT_EQ(DOCUMENT, before);
               EXPECT_NE(DASHITEM[1].bitmap, 0);
               EXPECT_EQ(BITMAP[DASHITEM[1].bitmap].name, "dash");
           })});
}

TEST_F(EditingTest, TheScreenStaysWhereItIs) {
    visit({to_screen(editor_3d), control(Key::p), typed("3"), undo_step, look([] {
               EXPECT_EQ(CURMODEL, 2);
               EXPECT_EQ(PAINTJOBS, initial_paint_jobs);
               EXPECT_EQ(CURPJ, 0) << "the paint job that was added is gone";
           }),
           redo_step, look([] { EXPECT_EQ(PAINTJOBS, initial_paint_jobs + 1); }), says("Redone: paint job added")});
}

TEST_F(EditingTest, TheScreenShowsWhatWasPutBack) {
    visit({to_screen(parameters)});
    const Point value{PTARGET[3].value_x, PTARGET[3].value_y};
    const auto shows = [value](const char* text) {
        return look([=] { EXPECT_TRUE(screen_shows(value.x, value.y, text, colour::value)) << text; });
    };
    visit({mouse_at(20, 20), shows("300")});
    visit(type_brakes("7") + std::vector<ScriptStep>{mouse_at(20, 20), shows("7 "), undo_step, shows("300")});
}

TEST_F(EditingTest, InATypedTextTheKeysActOnTheTextAlone) {
    visit({to_screen(parameters)});
    const ScriptStep enter = key_press(Key::enter), open = click(200, 134), digit = typed("5");
    visit(type_brakes("7") + std::vector<ScriptStep>{open,
                                                     digit,
                                                     digit,
                                                     undo_step,
                                                     enter,
                                                     brakes_are(7),
                                                     open,
                                                     digit,
                                                     digit,
                                                     undo_step,
                                                     redo_step,
                                                     enter,
                                                     brakes_are(755),
                                                     open,
                                                     key_press(Key::backspace),
                                                     undo_step,
                                                     key_press(Key::z, {.control = true, .shift = true}),
                                                     enter,
                                                     brakes_are(75),
                                                     undo_step,
                                                     brakes_are(755)});
}

TEST_F(EditingTest, OnTheFilesScreenTheKeysAreTheCarsWhateverStandsInTheFields) {
    visit({to_screen(parameters)});
    visit(type_brakes("7") +
          std::vector<ScriptStep>{to_screen(files), typed("abcd"), undo_step, brakes_are(new_brakes),
                                  look([] { EXPECT_TRUE(screen_shows(90, 76, "abcd", colour::value)); })});
}

TEST_F(EditingTest, TheStripSaysWhichCarItIsAndWhetherItIsSaved) {
    visit({fact(""), to_screen(parameters)});
    visit(type_brakes("7") + std::vector<ScriptStep>{fact("new car, unsaved"), undo_step, fact("")});
    visit(std::vector<ScriptStep>{to_screen(files)} + load("brux") +
          std::vector<ScriptStep>{fact("brux"), to_screen(parameters)} + type_brakes("7") +
          std::vector<ScriptStep>{fact("brux, unsaved"), to_screen(files)} + save("mine") +
          std::vector<ScriptStep>{fact("mine"), undo_step, fact("mine, unsaved"), redo_step, fact("mine")});
}

TEST_F(EditingTest, TheStripSaysWhyACarIsStillUnsaved) {
    visit(
        load("brux") +
        std::vector<ScriptStep>{to_screen(editor_3d), control(Key::c), typed("4"), control(Key::v), to_screen(files)} +
        save("mine") + std::vector<ScriptStep>{fact("mine, unsaved: only a .car holds Aux 1 and 2")} +
        save("mine.car") + std::vector<ScriptStep>{fact("mine.car")});
}
