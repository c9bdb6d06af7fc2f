// Values and the description edited on the parameter screen as a whole.
#include "params/parameter_screen_test.h"

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

TEST_F(ParameterScreenTest, TheClickThatEndsAnEditActsWhereItIs) {
    play_screen({click_row(3), typed("5"), click(curve_x(10), curve_y(100)), click(800, 400), typed("x"),
                 click(curve_x(11), curve_y(90)), key_press(Key::i)});
    EXPECT_EQ(par_word(4), 300);
    EXPECT_EQ(torque(10), 100);
    EXPECT_EQ(CARINFO, "New car]");
    EXPECT_EQ(torque(11), 90);
    EXPECT_EQ(par_word(6), keyed_speed(curve_x(11)));
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

TEST_F(ParameterScreenTest, ADragEndsUnseenInAnEdit) {
    play_screen({mouse_at(112, 520), press(112, 520), mouse_at(800, 530), release(800, 530), key_press(Key::escape),
                 press(200, 520), mouse_at(210, 520), release(210, 520)});
    EXPECT_EQ(par_word(6), 1002);
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
