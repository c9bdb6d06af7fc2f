// On the Physical parameters screen: strokes and drags that leave the work area, presses that began outside it.
#include "params/parameter_screen_test.h"

namespace {

class ParameterMenuPresses : public ParameterScreenTest {
protected:
    static ScriptStep still_here() {
        return look([] { EXPECT_EQ(CURMENU, screen_number::parameters); });
    }
};

} // namespace

TEST_F(ParameterMenuPresses, AStrokeThatOvershootsIntoTheMenuBarGoesOnAndChangesNoScreen) {
    play_screen({mouse_at(curve_x(10), curve_y(100)), press(curve_x(10), curve_y(100)), mouse_at(20, 620), still_here(),
                 mouse_at(curve_x(12), curve_y(90)), mouse_at(menu_cell + 5, 640), release(menu_cell + 5, 640),
                 still_here()});
    EXPECT_EQ(torque(10), 100);
    EXPECT_EQ(torque(12), 90);
}

TEST_F(ParameterMenuPresses, ADragThatOvershootsIntoTheMenuBarGoesOnAndChangesNoScreen) {
    play_screen({mouse_at(112, 530), press(112, 530), mouse_at(20, 620), still_here(), mouse_at(201, 540),
                 mouse_at(20, 620), release(20, 620), still_here()});
    EXPECT_EQ(par_word(6), 2901);
}

TEST_F(ParameterMenuPresses, APressOnTheMenuBarPaintsDragsAndOpensNothingUntilItsRelease) {
    const auto before = PAR;
    const int here = screen_number::parameters * menu_cell + 5;
    play_screen({press(here, 620), mouse_at(curve_x(10), curve_y(100)), mouse_at(112, 520), mouse_at(201, 520),
                 mouse_at(row_x(3), row_y(3)), mouse_at(800, 400), look([] {
                     EXPECT_NE(drawn(114, 134), Pixel{0xFF280A14});
                     EXPECT_NE(drawn(746, 560), Pixel{0xFF280A14});
                 }),
                 release(800, 400), still_here()});
    EXPECT_EQ(PAR, before);
}

TEST_F(ParameterMenuPresses, TheButtonThatBroughtTheScreenDoesNothingOnItUntilItsRelease) {
    CURMENU = screen_number::files;
    window.play({press(screen_number::parameters * menu_cell + 5, 620)});
    while (bar_mouse().buttons == 0)
        read_input();
    CURMENU = screen_number::parameters;
    play_screen({mouse_at(curve_x(10), curve_y(100)), release(curve_x(10), curve_y(100)),
                 look([] { EXPECT_EQ(torque(10), 0); }), click(curve_x(11), curve_y(90))});
    EXPECT_EQ(torque(11), 90);
}

TEST_F(ParameterMenuPresses, APressOnTheCurrentCellEndsAnEditAndNothingElse) {
    const int here = screen_number::parameters * menu_cell + 5;
    play_screen({click_row(3), typed("5"), press(here, 620),
                 look([] { EXPECT_NE(drawn(114, 134), Pixel{0xFF280A14}); }), release(here, 620), still_here(),
                 key_press(Key::z), look([] { EXPECT_TRUE(screen_shows(29, 237, "84", colour::label)); })});
    EXPECT_EQ(par_word(4), 300);
}

TEST_F(ParameterMenuPresses, AButtonStillDownAfterEscapePaintsNothing) {
    const auto before = PAR;
    play_screen({mouse_at(row_x(3), row_y(3)), press(row_x(3), row_y(3)), key_press(Key::escape),
                 mouse_at(curve_x(10), curve_y(100)), mouse_at(menu_cell + 5, 620), still_here(),
                 release(menu_cell + 5, 620), still_here()});
    EXPECT_EQ(PAR, before);
}
