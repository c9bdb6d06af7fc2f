// What a button may do on the parameter screen depends on where it went down: to drag a marker, to paint, to open, or
// to end an edit.
#include "model/document.h"
#include "params/parameter_screen_test.h"

namespace {

constexpr std::uint32_t edit_ground = 0xFF280A14, idle = 0xFFB4A000, hovered_value = 0xFF00FA00;

struct Place {
    int x, y;
};

class ParameterPresses : public ParameterScreenTest {
protected:
    // Where an edit is open: to the left of row 3's value, in the corner of the description.
    static bool row_is_edited() { return drawn(114, 134) == Pixel{edit_ground}; }
    static bool description_is_edited() { return drawn(746, 560) == Pixel{edit_ground}; }
    static ScriptStep expect_no_edit() {
        return look([] { EXPECT_FALSE(row_is_edited() || description_is_edited()); });
    }
    // One field of each kind.
    static std::vector<Place> fields() { return {{row_x(3), row_y(3)}, {800, 400}}; }
};

} // namespace

TEST_F(ParameterPresses, TheClickThatEndsAnEditActsWhereItIs) {
    play_screen({click_row(3), typed("5"), click(curve_x(10), curve_y(100)), click(800, 400), typed("x"),
                 click(curve_x(11), curve_y(90)), key_press(Key::i)});
    EXPECT_EQ(par_word(4), 300);
    EXPECT_EQ(torque(10), 100);
    EXPECT_EQ(CARINFO, "New car]");
    EXPECT_EQ(torque(11), 90);
    EXPECT_EQ(par_word(6), keyed_speed(curve_x(11)));
}

TEST_F(ParameterPresses, APressOnTheStripThatEndsAnEditDrags) {
    for (const Place field : fields()) {
        SCOPED_TRACE(field.x);
        set_par_word(6, 1000);
        CURMENU = screen_number::parameters;
        play_screen({click(field.x, field.y), typed("5"), press(112, 520), mouse_at(201, 520),
                     look([] { EXPECT_TRUE(screen_shows(72, 545, "Idle: 2901 RPM", idle)); }), release(201, 520)});
        EXPECT_EQ(par_word(6), 2901);
        EXPECT_EQ(par_word(4), 300);
        EXPECT_EQ(CARINFO, "New car]");
    }
}

TEST_F(ParameterPresses, AButtonStillHeldAfterEnterDragsNothing) {
    const auto before = PAR;
    for (const Place field : fields()) {
        CURMENU = screen_number::parameters;
        play_screen({mouse_at(field.x, field.y), press(field.x, field.y), key_press(Key::enter), mouse_at(112, 520),
                     mouse_at(201, 520), release(201, 520)});
        EXPECT_EQ(PAR, before);
    }
}

TEST_F(ParameterPresses, APressInTheFieldThatIsEditedOnlyEndsTheEdit) {
    for (const Place field : fields())
        for (const int away : {0, 1})
            for (const int button : {1, 2}) {
                SCOPED_TRACE(testing::Message() << field.x << " + " << away << ", button " << button);
                const int x = field.x + away;
                CURMENU = screen_number::parameters;
                play_screen({click(field.x, field.y), typed("5"), press(x, field.y, button), expect_no_edit(),
                             mouse_at(x + 1, field.y), expect_no_edit(), release(x + 1, field.y, button),
                             expect_no_edit()});
                EXPECT_EQ(par_word(4), 300);
                EXPECT_EQ(CARINFO, "New car]");
            }
}

TEST_F(ParameterPresses, ThatPressDoesNothingUntilItIsReleased) {
    const auto before = PAR;
    for (const Place field : fields()) {
        CURMENU = screen_number::parameters;
        play_screen({click(field.x, field.y), press(field.x + 1, field.y), mouse_at(curve_x(10), curve_y(100)),
                     mouse_at(112, 520), mouse_at(120, 520), mouse_at(801, 401), mouse_at(row_x(4), row_y(4)),
                     expect_no_edit(), release(row_x(4), row_y(4))});
        EXPECT_EQ(PAR, before);
    }
}

TEST_F(ParameterPresses, TheNextPressInTheFieldOpensItAgain) {
    play_screen({click(row_x(3), row_y(3)), click(row_x(3), row_y(3)), expect_no_edit(), click(row_x(3), row_y(3)),
                 typed("5"), key_press(Key::enter)});
    EXPECT_EQ(par_word(4), 3005);
    CURMENU = screen_number::parameters;
    play_screen(
        {click(800, 400), click(800, 400), expect_no_edit(), click(800, 400), typed("5"), key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "5New car]");
}

TEST_F(ParameterPresses, WhileAMarkerIsDraggedNothingElseReacts) {
    set_curve(60);
    const auto curve_before = torque(30);
    play_screen({mouse_at(112, 520), press(112, 520), mouse_at(curve_x(30), 400), mouse_at(row_x(3), row_y(3)),
                 expect_no_edit(), look([] {
                     EXPECT_TRUE(screen_shows(121, 134, "300", colour::value)); // not pointed at either
                     EXPECT_TRUE(is_filled(520, 545, 689, 560, colour::background));
                 }),
                 mouse_at(800, 400), expect_no_edit(), at_once({mouse_at(201, 520), mouse_at(row_x(3), row_y(3))}),
                 look([] { EXPECT_TRUE(screen_shows(121, 134, "300", colour::value)); }), release(row_x(3), row_y(3)),
                 look([] { EXPECT_TRUE(screen_shows(121, 134, "300", hovered_value)); })});
    EXPECT_EQ(torque(30), curve_before);
    EXPECT_EQ(par_word(6), 2901);
    EXPECT_EQ(par_word(8), 2000);
}

TEST_F(ParameterPresses, ADragThatWasReleasedElsewhereIsOver) {
    play_screen({mouse_at(112, 520), press(112, 520), mouse_at(800, 530), release(800, 530), mouse_at(200, 520),
                 press(200, 520), mouse_at(210, 520), release(210, 520)});
    EXPECT_EQ(par_word(6), 1002);
    EXPECT_EQ(par_word(8), 3093); // the nearest to the second press
}

TEST_F(ParameterPresses, TheSpeedOfADraggedMarkerGoesWithTheRelease) {
    play_screen({mouse_at(112, 530), press(112, 530), mouse_at(150, 530),
                 look([] { EXPECT_TRUE(screen_shows(72, 545, "Idle: 1813 RPM", idle)); }), release(150, 530),
                 look([] { EXPECT_TRUE(is_filled(72, 545, 231, 560, colour::background)); })});
}

TEST_F(ParameterPresses, AStrokeThatBeganOnTheCurveOpensNothing) {
    play_screen({mouse_at(curve_x(10), curve_y(100)), press(curve_x(10), curve_y(100)), mouse_at(row_x(3), row_y(3)),
                 expect_no_edit(), mouse_at(800, 400), expect_no_edit(), mouse_at(112, 520), mouse_at(120, 520),
                 mouse_at(curve_x(12), curve_y(90)), release(curve_x(12), curve_y(90)), mouse_at(800, 400),
                 expect_no_edit()});
    EXPECT_EQ(torque(10), 100);
    EXPECT_EQ(torque(12), 90);
    EXPECT_EQ(par_word(6), 1000);
}

TEST_F(ParameterPresses, AfterTheReleaseOfAStrokeThingsOpenAgain) {
    play_screen({mouse_at(curve_x(10), curve_y(100)), press(curve_x(10), curve_y(100)), mouse_at(row_x(3), row_y(3)),
                 release(row_x(3), row_y(3)), click_row(3), typed("5"), key_press(Key::enter)});
    EXPECT_EQ(par_word(4), 3005);
}

TEST_F(ParameterPresses, AButtonThatWentDownOnEmptyGroundOpensWhatItReaches) {
    play_screen({mouse_at(5, 590), press(5, 590), mouse_at(row_x(3), row_y(3)), release(row_x(3), row_y(3)), typed("5"),
                 key_press(Key::enter)});
    EXPECT_EQ(par_word(4), 3005);
    CURMENU = screen_number::parameters;
    play_screen(
        {mouse_at(5, 590), press(5, 590), mouse_at(800, 400), release(800, 400), typed("5"), key_press(Key::enter)});
    EXPECT_EQ(CARINFO, "5New car]");
}

TEST_F(ParameterPresses, AStrokeFasterThanTheMouseReportsLeavesNoGap) {
    set_curve(0);
    // Zoom 2: torque 20 at point 10, 100 at point 50, back to 40 at point 20.
    play_screen({mouse_at(curve_x(10), 500 - 40), press(curve_x(10), 500 - 40), mouse_at(curve_x(50), 500 - 200),
                 mouse_at(curve_x(20), 500 - 80), release(curve_x(20), 500 - 80)});
    EXPECT_EQ(torque(10), 20);
    EXPECT_EQ(torque(50), 100);
    EXPECT_EQ(torque(20), 40);
    for (int point = 21; point < 50; ++point)
        EXPECT_EQ(torque(point), 40 + (point - 20) * 2) << point; // the way back was painted last
    for (int point = 11; point < 20; ++point)
        EXPECT_EQ(torque(point), 20 + (point - 10) * 2) << point;
    EXPECT_EQ(torque(9), 0);
    EXPECT_EQ(torque(51), 0);
}

TEST_F(ParameterPresses, NothingIsPaintedOnTheWayFromOutsideTheCurve) {
    set_curve(0);
    play_screen({mouse_at(curve_x(10), 400), press(curve_x(10), 400), mouse_at(curve_x(20), 580),
                 mouse_at(curve_x(40), 400), release(curve_x(40), 400)});
    EXPECT_EQ(torque(10), 50);
    EXPECT_EQ(torque(40), 50);
    for (int point = 11; point < 40; ++point)
        EXPECT_EQ(torque(point), 0) << point;
}

TEST_F(ParameterPresses, AMoveWithoutTheButtonPaintsNothingBetween) {
    set_curve(0);
    play_screen({mouse_at(curve_x(10), 400), mouse_at(curve_x(40), 400), click(curve_x(40), 400)});
    for (int point = 0; point < 40; ++point)
        EXPECT_EQ(torque(point), 0) << point;
}
