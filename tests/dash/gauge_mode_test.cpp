// Speedometer and tachometer: every test for both.
#include "dash_test.h"

#include <numbers>

namespace {

constexpr std::uint32_t selected_colour = 0xFFC864FA, plain = 0xFF00FAFA, centre_colour = 0xFF00FA64,
                        arc_colour = 0xFFFAFA00;

struct Kind {
    std::uint8_t mode;
    const Gauge& gauge;
    PointEdit DashScreen::*edit;
    const char* title;
    const char* maximum_label;
    const char* of_three; // maximum of three points
    int most;
};
constexpr Kind kinds[] = {
    {dash_mode::speedometer, speedometer, &DashScreen::speed, "Speed-o-meter", "Max spd.", "7.5 mph", 103},
    {dash_mode::tachometer, tachometer, &DashScreen::revolutions, "Tach-o-meter", "Max RPM", "384 rpm", 127},
};

class GaugeTest : public DashTest, public testing::WithParamInterface<Kind> {
protected:
    void SetUp() override {
        DashTest::SetUp();
        add("ins2", 100, 60, 80, 120, ink::none);
        set_gauge_centre(gauge(), {30, 25});
        set_point_count(gauge(), 3);
        for (int tip = 0; tip <= 3; ++tip)
            set_needle_tip(gauge(), tip, {20 + 10 * tip, 5});
        enter(GetParam().mode);
        edit().arc = {.centre = {150, 150}, .radius = 20, .start = 3, .end = 1};
    }
    static const Gauge& gauge() { return GetParam().gauge; }
    PointEdit& edit() { return state.*GetParam().edit; }
    Arc& arc() { return edit().arc; }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Both, GaugeTest, testing::ValuesIn(kinds),
                         [](const auto& kind) { return kind.param.mode == dash_mode::speedometer ? "Speed" : "Rpm"; });

TEST_P(GaugeTest, BeginsWithTheArcOfItsTips) {
    enter(GetParam().mode);
    EXPECT_EQ(edit().selected, 0);
    EXPECT_EQ(arc().centre, (CockpitPoint{110, 145}));
    EXPECT_EQ(arc().direction, 1);
    EXPECT_NEAR(arc().start, std::numbers::pi / 2 + std::atan2(10, 20), 1e-9);
}

TEST_P(GaugeTest, TellsTipMaximumAndArc) {
    key(key::page_up);
    arc().eccentricity = 1.157625;
    for (const int zoom : {2, 3}) {
        draw_at(zoom);
        EXPECT_TRUE(shows_section(720, 90, 917, 296, GetParam().title));
        EXPECT_TRUE(shows_edit_row(100, "Spoke", "1 / 3"));
        EXPECT_TRUE(shows_edit_row(116, "Coors", "(30, 5)"));
        EXPECT_TRUE(shows_edit_row(132, GetParam().maximum_label, GetParam().of_three));
        EXPECT_TRUE(screen_shows(730, 164, "- ARC -", 0xFFFAFAFA));
        EXPECT_TRUE(shows_edit_row(180, "Spokes", "3"));
        EXPECT_TRUE(shows_edit_row(196, "Radius", "20"));
        EXPECT_TRUE(shows_edit_row(212, "Coors", "(150, 150)"));
        EXPECT_TRUE(shows_edit_row(228, "Eccent.", "1.15763") || shows_edit_row(228, "Eccent.", "1.15762"));
        EXPECT_TRUE(shows_edit_row(244, "Direct.", "CW"));
        EXPECT_TRUE(shows_edit_row(260, "Start", "171.887"));
        EXPECT_TRUE(shows_edit_row(276, "End", "57.2958"));
    }
}

TEST_P(GaugeTest, AnglesAreToldWithTheShortPiAndWithoutASign) {
    arc().start = -3.14159;
    arc().end = 3.92699;
    arc().direction = -1;
    draw();
    EXPECT_TRUE(shows_edit_row(260, "Start", "180"));
    EXPECT_TRUE(shows_edit_row(276, "End", "225"));
    EXPECT_TRUE(shows_edit_row(244, "Direct.", "CCW"));
}

TEST_P(GaugeTest, TheMaximumHasItsUnit) {
    set_point_count(gauge(), GetParam().most);
    draw();
    EXPECT_TRUE(shows_edit_row(132, GetParam().maximum_label, GetParam().most == 103 ? "257.5 mph" : "16256 rpm"));
    set_point_count(gauge(), 0);
    draw();
    EXPECT_TRUE(shows_edit_row(132, GetParam().maximum_label, GetParam().most == 103 ? "0 mph" : "0 rpm"));
}

TEST_P(GaugeTest, ACountBeyondTheBoundIsUsedAsTheBoundAndKept) {
    const int offset = gauge().offset + 4;
    set_par_word(offset, 1000);
    draw();
    EXPECT_TRUE(shows_edit_row(100, "Spoke", "0 / " + std::to_string(GetParam().most)));
    keys(key::page_up, 200);
    EXPECT_EQ(edit().selected, GetParam().most);
    key("+");
    EXPECT_EQ(par_word(offset), 1000);
    key("-");
    EXPECT_EQ(par_word(offset), GetParam().most - 1);
}

// --- marks ----------------------------------------------------------------------------------------------------------

TEST_P(GaugeTest, MarksTipsAndTheSelectedOne) { // ODDITY selected-tip-larger
    set_point_count(gauge(), 1);
    set_needle_tip(gauge(), 0, {20, 5});
    set_needle_tip(gauge(), 1, {60, 5});
    draw_at(2); // "ins2" at (80, 120): tips at (100, 125) and (140, 125)
    EXPECT_EQ(found(selected_colour), (Rectangle{249, 349, 253, 353}));
    EXPECT_EQ(count(screen().image(), selected_colour), 25);
    EXPECT_EQ(found(plain), (Rectangle{330, 350, 332, 352}));
    EXPECT_EQ(count(screen().image(), plain), 8);
    draw_at(3);
    EXPECT_EQ(found(selected_colour), (Rectangle{299, 374, 305, 380}));
    EXPECT_EQ(count(screen().image(), selected_colour), 49);
    EXPECT_EQ(found(plain), (Rectangle{420, 375, 423, 378}));
    EXPECT_EQ(count(screen().image(), plain), 12);
}

TEST_P(GaugeTest, MarksTheCentreWithACross) {
    draw_at(2); // (110, 145)
    EXPECT_EQ(found(centre_colour), (Rectangle{269, 389, 272, 392}));
    EXPECT_EQ(count(screen().image(), centre_colour), 8);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(drawn(269 + i, 389 + i), Pixel{centre_colour});
        EXPECT_EQ(drawn(269 + i, 392 - i), Pixel{centre_colour});
    }
    draw_at(3);
    EXPECT_EQ(found(centre_colour), (Rectangle{329, 432, 334, 439}));
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(drawn(329 + i, 434 + i), Pixel{centre_colour});
        EXPECT_EQ(drawn(329 + i, 437 - i), Pixel{centre_colour});
    }
}

TEST_P(GaugeTest, ACentreLeftOfTheInstrumentsIsDrawnWhereItIs) {
    set_gauge_centre(gauge(), {-30, -50});
    draw();
    EXPECT_EQ(found(centre_colour), (Rectangle{149, 239, 152, 242})); // (50, 70)
}

// ODDITY gauge-arc-other-side, ODDITY gauge-arc-joined
TEST_P(GaugeTest, DrawsTheArcThatLayingLeavesFree) {
    constexpr double pi = std::numbers::pi;
    arc() = {.centre = {150, 100}, .radius = 20, .start = pi, .end = 0.5 * pi};
    draw();
    EXPECT_EQ(found(arc_colour), Rectangle{});
    key(" ");
    draw(); // from the left counter-clockwise by the bottom to the top, joined to the centre there
    const Point centre = view_at(2).at({150, 100});
    EXPECT_EQ(found(arc_colour), (Rectangle{centre.x - 40, centre.y - 40, centre.x + 40, centre.y + 40}));
    EXPECT_EQ(drawn(centre.x, centre.y + 40), Pixel{arc_colour});
    EXPECT_EQ(drawn(centre.x, centre.y - 20), Pixel{arc_colour}); // the line to the end
    EXPECT_NE(drawn(centre.x - 20, centre.y), Pixel{arc_colour});
    EXPECT_NE(drawn(centre.x - 28, centre.y - 28), Pixel{arc_colour}); // the quarter that laying fills
    key(key::enter);
    EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{70, -20}));
    EXPECT_EQ(needle_tip(gauge(), 0), (CockpitPoint{50, 236}));

    key("d");
    draw_at(3); // a negative start: joined there, clockwise is as before
    const Point large = view_at(3).at({150, 100});
    EXPECT_EQ(drawn(large.x - 30, large.y), Pixel{arc_colour});
    EXPECT_EQ(found(arc_colour).x1, large.x - 60);
}

TEST_P(GaugeTest, DrawsTheCockpitWithAStraightWheel) {
    add("whl2", 10, 10, 0, 0, ink::green);
    add("whl1", 10, 10, 0, 0, ink::red);
    state.steering = Steering::left;
    draw();
    EXPECT_EQ(drawn(55, 105), Pixel{colour_of(ink::green)});
    EXPECT_TRUE(shows_section(47, 90, 692, 502, "Dash view"));
    EXPECT_EQ(drawn(300, 200), Pixel{colour::background});
}

// --- keys -----------------------------------------------------------------------------------------------------------

TEST_P(GaugeTest, PageKeysChooseTheTipOrTheRadius) {
    keys(key::page_up, 5);
    EXPECT_EQ(edit().selected, 3);
    keys(key::page_down, 9);
    EXPECT_EQ(edit().selected, 0);
    key(" ");
    key(key::page_up);
    EXPECT_EQ(arc().radius, 21);
    keys(key::page_up, 200);
    EXPECT_EQ(arc().radius, 150);
    keys(key::page_down, 300);
    EXPECT_EQ(arc().radius, 8);
    EXPECT_EQ(edit().selected, 0);
}

TEST_P(GaugeTest, CursorKeysMoveTheTip) {
    key(key::page_up);
    key(key::left);
    key(key::up);
    EXPECT_EQ(needle_tip(gauge(), 1), (CockpitPoint{29, 4}));
    keys(key::left, 300);
    keys(key::up, 300);
    EXPECT_EQ(needle_tip(gauge(), 1), (CockpitPoint{0, 0}));
    keys(key::right, 300);
    keys(key::down, 300);
    EXPECT_EQ(needle_tip(gauge(), 1), (CockpitPoint{255, 199}));
    EXPECT_EQ(needle_tip(gauge(), 0), (CockpitPoint{20, 5}));
}

TEST_P(GaugeTest, CursorKeysMoveTheArc) {
    key(" ");
    key(key::right);
    key(key::down);
    EXPECT_EQ(arc().centre, (CockpitPoint{151, 151}));
    keys(key::up, 300);
    keys(key::left, 300);
    EXPECT_EQ(arc().centre, (CockpitPoint{0, 0}));
    keys(key::right, 300);
    keys(key::down, 300);
    EXPECT_EQ(arc().centre, (CockpitPoint{255, 199}));
    EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{30, 25}));
}

TEST_P(GaugeTest, PlusAndMinusChangeTheCount) {
    key("+");
    EXPECT_EQ(point_count(gauge()), 4);
    keys("=", 200);
    EXPECT_EQ(point_count(gauge()), GetParam().most);
    keys("-", 2);
    EXPECT_EQ(point_count(gauge()), GetParam().most - 2);
    keys("-", 200);
    EXPECT_EQ(point_count(gauge()), 0);
}

TEST_P(GaugeTest, ASelectedTipAboveTheCountBecomesTheCount) {
    keys(key::page_up, 3);
    key("-");
    EXPECT_EQ(edit().selected, 2);
    key("+");
    EXPECT_EQ(edit().selected, 2);
    set_point_count(gauge(), 1); // by another car
    draw();
    EXPECT_TRUE(shows_edit_row(100, "Spoke", "1 / 1"));
}

TEST_P(GaugeTest, PlusAndMinusOnTheArcTurnTheAngleThatIsBehind) {
    key(" ");
    key("+"); // start above end, clockwise: the end
    EXPECT_DOUBLE_EQ(arc().end, 1.05);
    EXPECT_EQ(arc().start, 3);
    key("d");
    key("+");
    EXPECT_DOUBLE_EQ(arc().start, 3.05);
    key("d");
    key("o"); // start below end, clockwise: the start
    key("-");
    EXPECT_DOUBLE_EQ(arc().start, 1.0);
    EXPECT_DOUBLE_EQ(arc().end, 3.05);
    arc().start = arc().end = 2; // equal: the start
    key("=");
    EXPECT_DOUBLE_EQ(arc().start, 2.05);
    EXPECT_EQ(arc().end, 2);
    EXPECT_EQ(point_count(gauge()), 3);
}

// ODDITY angles-of-five-decimals
TEST_P(GaugeTest, AnglesWrapAtAWholeTurn) {
    key(" ");
    arc() = {.centre = {}, .start = 6.27, .end = 6.28, .direction = 1};
    key("+");
    EXPECT_NEAR(arc().start, 6.27 + 0.05 - 6.28318, 1e-12);
    arc() = {.centre = {}, .start = 0.02, .end = 1, .direction = 1};
    key("-");
    EXPECT_NEAR(arc().start, 0.02 - 0.05 + 6.28318, 1e-12);
}

TEST_P(GaugeTest, KeysOfTheArcActOnlyOnTheArc) {
    const Arc before = arc();
    for (const char* typed : {">", ".", "<", ",", "d", "D", "o", "O"})
        key(typed);
    EXPECT_EQ(arc().eccentricity, before.eccentricity);
    EXPECT_EQ(arc().direction, before.direction);
    EXPECT_EQ(arc().start, before.start);
    key(" ");
    key("D");
    EXPECT_EQ(arc().direction, -1);
    key("d");
    EXPECT_EQ(arc().direction, 1);
    key("O");
    EXPECT_EQ(arc().start, before.end);
    EXPECT_EQ(arc().end, before.start);
    key(".");
    EXPECT_DOUBLE_EQ(arc().eccentricity, 1.05);
    key(",");
    EXPECT_DOUBLE_EQ(arc().eccentricity, 1);
}

TEST_P(GaugeTest, EnterLaysTheTipsWhateverTheFlag) {
    for (const bool arcs : {false, true}) {
        state.arcs = arcs;
        set_point_count(gauge(), 2);
        arc() = {.centre = {150, 140}, .radius = 10, .start = std::numbers::pi, .end = 0};
        key(key::enter);
        EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{70, 20}));
        EXPECT_EQ(needle_tip(gauge(), 0), (CockpitPoint{60, 20}));
        EXPECT_EQ(needle_tip(gauge(), 1), (CockpitPoint{70, 10}));
        EXPECT_EQ(needle_tip(gauge(), 2), (CockpitPoint{80, 20}));
        EXPECT_EQ(needle_tip(gauge(), 3), (CockpitPoint{50, 5})); // not reached
        EXPECT_EQ(arc().start, std::numbers::pi);
    }
}

// ODDITY centre-key-other-view
TEST_P(GaugeTest, TheCentreKeyTakesThePointerInTheOtherView) {
    mouse_to(400, 300);
    key("c"); // twice its size: as if it stood over the whole area
    EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{200 - 80, 150 - 120}));
    mouse_to(10, 20); // outside the view
    key("C");
    EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{5 - 80, 10 - 120}));
    mouse_to(960, 300);
    key("c");
    mouse_to(300, 600);
    key("c");
    mouse_to(-1, -1);
    key("c");
    EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{5 - 80, 10 - 120}));

    key("q");
    mouse_to(350, 400); // three times its size: as if it stood in its section
    key("c");
    EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{100 - 80, 100 - 120}));
    for (const Point outside : {Point{49, 300}, Point{690, 300}, Point{300, 99}, Point{300, 500}}) {
        mouse_to(outside.x, outside.y);
        key("c");
    }
    EXPECT_EQ(gauge_centre(gauge()), (CockpitPoint{100 - 80, 100 - 120}));
    EXPECT_EQ(arc().centre, (CockpitPoint{150, 150}));
}

TEST_P(GaugeTest, TheOtherGaugeStaysAsItIs) {
    const Gauge& other = GetParam().mode == dash_mode::speedometer ? tachometer : speedometer;
    set_point_count(other, 5);
    set_needle_tip(other, 0, {7, 7});
    const auto keep = PAR;
    for (const char* typed : {"+", key::right, "c", key::enter, key::page_up, " ", "+", "d"})
        key(typed);
    for (std::size_t i = 0; i < PAR.size(); ++i) {
        const auto from = static_cast<std::size_t>(other.offset);
        EXPECT_TRUE(i < from || i >= from + 214 || PAR[i] == keep[i]) << i;
    }
}

// --- mouse ----------------------------------------------------------------------------------------------------------

TEST_P(GaugeTest, APressSelectsTheNearestTip) {
    mouse_to(50 + 2 * 121, 100 + 2 * 126, 1); // tip 2 is at (120, 125)
    EXPECT_EQ(edit().selected, 2);
    mouse_to(50 + 2 * 105, 100 + 2 * 125, 1); // between 0 and 1: the lower one
    EXPECT_EQ(edit().selected, 0);
    mouse_to(50 + 2 * 120, 100 + 2 * 140, 1); // near none
    EXPECT_EQ(edit().selected, 0);
    mouse_to(50 + 2 * 120, 100 + 2 * 125, 2); // the right button
    EXPECT_EQ(edit().selected, 0);
    key("q");
    mouse_to(3 * 130 + 2, 3 * 125, 1);
    EXPECT_EQ(edit().selected, 3);
}
