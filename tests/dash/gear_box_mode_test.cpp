#include "dash_test.h"

namespace {

constexpr std::uint32_t current = 0xFFFA00C8, plain = 0xFF00FAFA, gate_colour = 0xFF00FA64, number = 0xFFFAFAFA;

class GearBoxTest : public DashTest {
protected:
    void SetUp() override {
        DashTest::SetUp();
        add("gbox", 50, 40, 200, 140, ink::brown);
        set_gear_count(5);
        set_knob(gate, {20, 25});
        for (int gear = 1; gear <= 6; ++gear)
            set_knob(gear, {7 * gear, 10 + gear});
        enter(dash_mode::gear_box);
    }
};

} // namespace

TEST_F(GearBoxTest, TellsWhatIsEdited) {
    for (const int zoom : {2, 3}) {
        draw_at(zoom);
        EXPECT_TRUE(shows_section(720, 90, 917, 296, "Gear box"));
        EXPECT_TRUE(shows_edit_row(100, "Editing", "Gear 1/5"));
    }
    key(key::page_down);
    draw();
    EXPECT_TRUE(shows_edit_row(100, "Editing", "Tabs"));
}

TEST_F(GearBoxTest, PageUpGoesThroughTheGearsToTheGate) { // ODDITY page-keys-differ-by-mode
    for (const int gear : {2, 3, 4, 5, tabs, 1, 2}) {
        key(key::page_up);
        EXPECT_EQ(state.gear, gear);
    }
    for (const int gear : {1, tabs, 5, 4}) {
        key(key::page_down);
        EXPECT_EQ(state.gear, gear);
    }
}

TEST_F(GearBoxTest, WithoutGearsThereAreTheFirstAndTheGate) {
    set_gear_count(0);
    enter(dash_mode::gear_box);
    EXPECT_EQ(state.gear, 1);
    key(key::page_up);
    EXPECT_EQ(state.gear, tabs);
    key(key::page_up);
    EXPECT_EQ(state.gear, 1);
    key(key::page_down);
    EXPECT_EQ(state.gear, tabs);
    key(key::page_down);
    EXPECT_EQ(state.gear, 1);
}

TEST_F(GearBoxTest, PlusStopsAtSixGears) {
    key("+");
    EXPECT_EQ(gear_count(), 6);
    key("=");
    key("+");
    EXPECT_EQ(par_byte(0), 6);
}

TEST_F(GearBoxTest, MinusKeepsTheGearWithinTheCount) {
    state.gear = 5;
    key("-");
    EXPECT_EQ(gear_count(), 4);
    EXPECT_EQ(state.gear, 4);
    state.gear = 2;
    key("-");
    EXPECT_EQ(state.gear, 2);
    state.gear = tabs;
    key("-");
    EXPECT_EQ(state.gear, tabs);
    state.gear = 1;
    key("-");
    EXPECT_EQ(gear_count(), 1);
    key("-");
    EXPECT_EQ(gear_count(), 0);
    EXPECT_EQ(state.gear, tabs);
    draw();
    EXPECT_TRUE(shows_edit_row(100, "Editing", "Tabs"));
    key("-");
    EXPECT_EQ(par_byte(0), 0);
}

TEST_F(GearBoxTest, AGearAboveACountThatWentDownIsTheLastOne) {
    state.gear = 5;
    set_gear_count(3); // as another car brings it
    draw();
    EXPECT_TRUE(shows_edit_row(100, "Editing", "Gear 3/3"));
    EXPECT_EQ(found(current).x1, view_at(2).at(CockpitPoint{200, 140} + knob(3)).x - 1);
    key(key::right);
    EXPECT_EQ(knob(3), (CockpitPoint{22, 13}));
    EXPECT_EQ(knob(5), (CockpitPoint{35, 15}));
    key(key::page_down);
    EXPECT_EQ(state.gear, 2);
    state.gear = 5;
    key(key::page_up);
    EXPECT_EQ(state.gear, tabs);
}

TEST_F(GearBoxTest, ACountBeyondSixIsUsedAsSixAndKept) {
    set_par_byte(0, 200);
    draw();
    EXPECT_TRUE(shows_edit_row(100, "Editing", "Gear 1/6"));
    key("+");
    EXPECT_EQ(par_byte(0), 200);
    key("-");
    EXPECT_EQ(par_byte(0), 5);
}

TEST_F(GearBoxTest, CursorKeysMoveTheKnobWithinTheBox) {
    key(key::left);
    key(key::up);
    EXPECT_EQ(knob(1), (CockpitPoint{6, 10}));
    keys(key::left, 100);
    keys(key::up, 100);
    EXPECT_EQ(knob(1), (CockpitPoint{0, 0}));
    keys(key::right, 100);
    keys(key::down, 100);
    EXPECT_EQ(knob(1), (CockpitPoint{49, 39}));
    state.gear = 3;
    key(key::right);
    EXPECT_EQ(knob(3), (CockpitPoint{22, 13}));
    state.gear = tabs;
    key(key::down);
    EXPECT_EQ(knob(gate), (CockpitPoint{20, 26}));
}

TEST_F(GearBoxTest, WithoutTheBoxTheCanvasBoundsTheKnob) {
    reset_bitmaps();
    INITDASHITEMS();
    keys(key::right, 400);
    keys(key::down, 400);
    EXPECT_EQ(knob(1), (CockpitPoint{319, 199}));
    draw();
    EXPECT_EQ(found(current), (Rectangle{50 + 638 - 1, 100 + 398 - 1, 50 + 638 + 1, 100 + 398 + 1}));
    EXPECT_EQ(drawn(50, 100 + 2 * 25), Pixel{gate_colour});
    EXPECT_EQ(drawn(50 + 639, 100 + 2 * 25), Pixel{gate_colour});
    EXPECT_EQ(drawn(50 + 2 * 20, 499), Pixel{gate_colour});
}

TEST_F(GearBoxTest, AKnobOutsideOnlyComesBack) {
    set_knob(1, {-3, 100});
    key(key::left);
    key(key::down);
    EXPECT_EQ(knob(1), (CockpitPoint{-3, 100}));
    key(key::right);
    key(key::up);
    EXPECT_EQ(knob(1), (CockpitPoint{-2, 99}));
}

TEST_F(GearBoxTest, DrawsTheBoxWithItsMarks) {
    set_gear_count(1);
    set_knob(1, {40, 5}); // on the canvas at (240, 145)
    draw();
    EXPECT_EQ(drawn(50 + 400, 100 + 280), Pixel{colour_of(ink::brown)});
    EXPECT_EQ(found(current), (Rectangle{529, 389, 531, 391}));
    EXPECT_EQ(count(screen().image(), current), 8);
    draw_at(3);
    EXPECT_EQ(found(current), (Rectangle{719, 434, 722, 437}));
    EXPECT_EQ(count(screen().image(), current), 12);
}

TEST_F(GearBoxTest, OtherGearsHaveAnotherColour) {
    set_gear_count(2);
    set_knob(2, {30, 5});
    state.gear = 1;
    draw();
    EXPECT_EQ(found(plain), (Rectangle{509, 389, 511, 391}));
    state.gear = 2;
    draw();
    EXPECT_EQ(found(current), (Rectangle{509, 389, 511, 391}));
}

TEST_F(GearBoxTest, NumbersHaveAShadow) {
    set_gear_count(1);
    set_knob(1, {40, 5});
    for (const int zoom : {2, 3}) {
        draw_at(zoom);
        const Point at = view_at(zoom).at({240, 145});
        EXPECT_TRUE(screen_shows(at.x - 3, at.y + 4, "1", number));
        const std::uint8_t* rows = glyph_rows('1');
        for (int y = 0; y < glyph_height - 1; ++y)
            for (int x = 0; x < glyph_width - 1; ++x) {
                const bool dark = rows[y] >> (7 - x) & 1, light = rows[y + 1] >> (6 - x) & 1;
                EXPECT_TRUE(light || !dark || drawn(at.x - 2 + x, at.y + 5 + y) == Pixel{black});
            }
    }
}

TEST_F(GearBoxTest, TheGateGoesThroughTheWholeBox) {
    set_gear_count(0);
    draw(); // the box from (450, 380), the gate at (220, 165)
    EXPECT_EQ(found(gate_colour), (Rectangle{450, 380, 450 + 99, 380 + 79}));
    EXPECT_EQ(drawn(490, 380), Pixel{gate_colour});
    EXPECT_EQ(drawn(450, 430), Pixel{gate_colour});
    EXPECT_EQ(count(screen().image(), gate_colour), 100 + 80 - 1);
    state.gear = tabs;
    draw();
    EXPECT_EQ(found(current), (Rectangle{450, 380, 549, 459}));
    draw_at(3);
    EXPECT_EQ(found(current), (Rectangle{600, 420, 600 + 149, 420 + 119}));
    EXPECT_EQ(drawn(660, 420), Pixel{current});
    EXPECT_EQ(drawn(600, 495), Pixel{current});
}

TEST_F(GearBoxTest, APressSelectsTheNearestGear) {
    mouse_to(50 + 2 * 214, 100 + 2 * 152, 1); // gear 2 is at (214, 152)
    EXPECT_EQ(state.gear, 2);
    mouse_to(50 + 2 * 242, 100 + 2 * 156, 1); // the sixth does not count
    EXPECT_EQ(state.gear, 2);
    mouse_to(50 + 2 * 220, 100 + 2 * 165, 1); // the gate neither
    EXPECT_EQ(state.gear, 2);
    state.gear = tabs;
    mouse_to(50 + 2 * 207, 100 + 2 * 151, 1);
    EXPECT_EQ(state.gear, 1);
}

TEST_F(GearBoxTest, DrawsTheCockpitBeneath) {
    add("whl2", 10, 10, 0, 0, ink::green);
    draw();
    EXPECT_EQ(drawn(55, 105), Pixel{colour_of(ink::green)});
    EXPECT_TRUE(shows_section(47, 90, 692, 502, "Dash view"));
}
