// Values and the description edited on the parameter screen as a whole.
#include "model/document.h"
#include "model/power_gear.h"
#include "params/parameter_screen_test.h"
#include "widgets/strip.h"

namespace {

constexpr std::uint32_t hovered_value = 0xFF00FA00;

} // namespace

TEST_F(ParameterScreenTest, EditsARow) {
    play_screen({click_row(3), typed("5"), key_press(Key::enter),
                 look([] { EXPECT_TRUE(screen_shows(121, 134, "3005", hovered_value)); })});
    EXPECT_EQ(par_word(4), 3005);
}

TEST_F(ParameterScreenTest, TheRowIsThereAgainWhileTheButtonIsStillHeld) {
    play_screen({point_at_row(3), press(row_x(3), row_y(3)), typed("5"), key_press(Key::enter),
                 look([] { EXPECT_TRUE(screen_shows(121, 134, "3005", hovered_value)); }),
                 release(row_x(3), row_y(3))});
}

TEST_F(ParameterScreenTest, AClickOnAnotherRowEditsThatOne) {
    play_screen({click_row(3), typed("5"), click_row(4), typed("7"), key_press(Key::enter)});
    EXPECT_EQ(par_word(4), 300);
    EXPECT_EQ(par_word(56), 307);
}

TEST_F(ParameterScreenTest, EscapeInAnEditCancelsOnlyTheEdit) {
    play_screen({click_row(3), typed("5"), key_press(Key::escape),
                 look([] { EXPECT_EQ(CURMENU, screen_number::parameters); }), click(800, 400), typed("x"),
                 key_press(Key::escape), look([] { EXPECT_EQ(CURMENU, screen_number::parameters); })});
    EXPECT_EQ(par_word(4), 300);
    EXPECT_EQ(CARINFO, "New car]");
}

TEST_F(ParameterScreenTest, TheCloseRequestInAnEditEndsTheProgram) {
    play_screen({click_row(3), typed("5")});
    EXPECT_EQ(par_word(4), 300);
    CURMENU = screen_number::parameters;
    play_screen({click(800, 400), typed("x")});
    EXPECT_EQ(CARINFO, "New car]");
    CURMENU = screen_number::parameters;
    play_screen({point_at_row(2), press(row_x(2), row_y(2))});
    EXPECT_EQ(par_word(2), 20);
}

TEST_F(ParameterScreenTest, KeysOfTheScreenAreTextInAnEdit) {
    play_screen({click_row(34), typed("idumz"), key_press(Key::enter), click(800, 400), typed("idumz "),
                 key_press(Key::enter)});
    EXPECT_EQ(CARNAME, "New caridumz");
    EXPECT_EQ(CARINFO, "idumz New car]");
    EXPECT_EQ(par_word(6), 1000);
}

TEST_F(ParameterScreenTest, AKeyAfterAClickBelongsToTheEditThatItOpens) {
    play_screen({at_once({press(800, 400), typed("z "), release(800, 400)}), key_press(Key::enter),
                 look([] { EXPECT_TRUE(screen_shows(29, 237, "127", colour::label)); })});
    EXPECT_EQ(CARINFO, "z New car]");
}

TEST_F(ParameterScreenTest, PowergearCyclesByClicks) {
    UPDATEPG(false);
    play_screen({click_row(2), look([] {
                     EXPECT_TRUE(screen_shows(121, 118, "No (bug-free)", hovered_value));
                     EXPECT_TRUE(screen_shows(121, 102, "16", colour::value));
                 }),
                 click_row(2), look([] { EXPECT_TRUE(screen_shows(121, 118, "Flexible", hovered_value)); })});
    EXPECT_EQ(powergear_class(par_word(2)), 0);
}

TEST_F(ParameterScreenTest, TheMassThatIsTypedShowsItsClassAtOnce) {
    play_screen({click_row(1), key_press(Key::backspace), key_press(Key::backspace), typed("512"),
                 key_press(Key::enter),
                 look([] { EXPECT_TRUE(screen_shows(121, 118, "No (bug-free)", colour::value)); })});
}

TEST_F(ParameterScreenTest, KeysTypedWhileTheButtonIsHeldOnPowergearActAfterItsRelease) {
    UPDATEPG(false);
    play_screen({point_at_row(2), press(row_x(2), row_y(2)), typed("z"), look([] {
                     EXPECT_TRUE(screen_shows(29, 237, "127", colour::label));
                     EXPECT_EQ(par_word(2), 20);
                 }),
                 release(row_x(2), row_y(2)), look([] {
                     EXPECT_TRUE(screen_shows(29, 237, "84", colour::label));
                     EXPECT_TRUE(screen_shows(121, 118, "No (bug-free)", hovered_value));
                 })});
    EXPECT_EQ(par_word(2), 16);
}

TEST_F(ParameterScreenTest, EscapeTypedWhileTheButtonIsHeldOnPowergearEndsTheProgramAfterItsRelease) {
    UPDATEPG(false);
    play({point_at_row(2), press(row_x(2), row_y(2)), key_press(Key::escape), release(row_x(2), row_y(2))}, EDITPARAMS);
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_EQ(par_word(2), 16) << "the click was done first";
}

TEST_F(ParameterScreenTest, AMenuCellPressedInAnEditLeavesTheScreen) {
    for (const auto& [x, y] : {std::pair{row_x(3), row_y(3)}, std::pair{800, 400}}) {
        CURMENU = screen_number::parameters;
        play({click(x, y), typed("5"), press(menu_cell + 10, 620)}, EDITPARAMS);
        EXPECT_EQ(CURMENU, screen_number::editor_3d);
        EXPECT_TRUE(is_filled(0, 0, 959, 599, colour::background));
        EXPECT_EQ(par_word(4), 300);
        EXPECT_EQ(CARINFO, "New car]");
        play_to_the_end({release(menu_cell + 10, 620), mouse_at(5, 5)}, [] {
            while (mouse().y != 5)
                read_input();
        });
    }
}

TEST_F(ParameterScreenTest, TabStoresAndOpensTheNextRowOfTheSection) {
    play_screen({click_row(34), key_press(Key::backspace), key_press(Key::tab), key_press(Key::end),
                 key_press(Key::backspace), typed("?"), key_press(Key::tab), typed("1"), key_press(Key::tab),
                 typed("2"), key_press(Key::enter)});
    EXPECT_EQ(CARNAME, "New ca");
    EXPECT_EQ(CARSIGNNAME, "New?");
    EXPECT_EQ(par_word(par_offset::mass), 201); // Powergear, which is not typed, is passed over
    EXPECT_EQ(par_word(4), 3002);
}

TEST_F(ParameterScreenTest, TabLeadsFromTheLastRowOfASectionToItsFirst) {
    play_screen({click_row(18), typed("7"), key_press(Key::tab), key_press(Key::home), key_press(Key::delete_),
                 typed("3"), key_press(Key::enter)});
    EXPECT_EQ(par_word(26), 7);
    EXPECT_EQ(par_byte(0), 3);
}

TEST_F(ParameterScreenTest, TabInAValueThatIsLeftAfterwardsHasStoredTheOneBefore) {
    play_screen({click_row(3), typed("9"), key_press(Key::tab), typed("9"), key_press(Key::escape)});
    EXPECT_EQ(par_word(4), 3009);
    EXPECT_EQ(par_word(56), 30);
}

TEST_F(ParameterScreenTest, HomeAndEndMoveTheCaretOfAValue) {
    play_screen(
        {click_row(3), key_press(Key::home), typed("1"), key_press(Key::end), typed("2"), key_press(Key::enter)});
    EXPECT_EQ(par_word(4), 13002);
}

TEST_F(ParameterScreenTest, WhatChangesNothingSaysWhy) {
    const auto says = [](const std::string& message) {
        return look([message] {
            EXPECT_EQ(said(), message);
            unsay(said());
        });
    };
    constexpr int gears_row = 12, sign_row = 35;
    play_screen({mouse_at(5, 5), typed("i"), says("The mark goes to the pointer: point at the curve"),
                 mouse_at(curve_x(9), 300), typed("i"), says(""), // which is 1195 RPM
                 press(curve_x(60), 520), says("No mark within 1000 RPM"), release(curve_x(60), 520),
                 press(curve_x(9), 520), says(""), release(curve_x(9), 520)});
    CURMENU = screen_number::parameters;
    play_screen({click_row(gears_row),
                 key_press(Key::backspace),
                 typed("7"),
                 says("6 at most"),
                 typed("6"),
                 says(""),
                 key_press(Key::escape),
                 click_row(mass_row),
                 typed("000"),
                 says(""),
                 typed("1"),
                 says("65535 at most"),
                 key_press(Key::escape),
                 click_row(sign_row),
                 typed("x"),
                 says("4 characters at most"),
                 key_press(Key::backspace),
                 typed("x"),
                 says(""),
                 key_press(Key::escape)});
}
