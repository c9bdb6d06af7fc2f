#include "params/parameter_screen_test.h"
#include "model/document.h"

namespace {

constexpr std::uint32_t low = 0xFF00C800, selected = 0xFF00FAFA, clipped = 0xFFFF00FA, hovered = 0xFFFAFAFA,
                        idle = 0xFFB4A000;

} // namespace

TEST_F(ParameterScreenTest, DrawsItself) {
    play_screen({mouse_at(5, 590), look([this] {
                     EXPECT_EQ(shown(0, 0), Pixel{colour::background});
                     EXPECT_EQ(shown(959, 599), Pixel{colour::background});
                     EXPECT_TRUE(screen_shows(16, 16, "= PHYSICAL PARAMETERS =", colour::title));
                     EXPECT_TRUE(screen_shows(34, 42, "General", colour::section_title));
                     EXPECT_TRUE(screen_shows(344, 42, "Grip", colour::section_title));
                     EXPECT_TRUE(screen_shows(554, 42, "Gears", colour::section_title));
                     EXPECT_TRUE(screen_shows(764, 42, "Mysterious", colour::section_title));
                     EXPECT_TRUE(screen_shows(34, 212, "Torque curve", colour::section_title));
                     EXPECT_TRUE(screen_shows(764, 337, "Specifications", colour::section_title));
                     EXPECT_TRUE(screen_shows(750, 365, "New car", colour::value));
                     EXPECT_TRUE(screen_shows(25, 70, "Car name", colour::label));
                     EXPECT_TRUE(screen_shows(121, 118, "Flexible", colour::value));
                     EXPECT_TRUE(screen_shows(29, 237, "127", colour::label));
                 })});
}

TEST_F(ParameterScreenTest, FramesItsSections) {
    draw(state);
    const std::vector<Rectangle> sections{{10, 50, 300, 195},  {320, 50, 510, 180}, {530, 50, 720, 195},
                                          {740, 50, 948, 324}, {10, 220, 720, 570}, {740, 345, 948, 570}};
    for (const Rectangle& section : sections) {
        EXPECT_EQ(drawn(section.x2, section.y1), Pixel{colour::section_light}) << section.x1;
        EXPECT_EQ(drawn(section.x1, section.y2), Pixel{colour::section_light}) << section.x1;
        EXPECT_EQ(drawn(section.x2, section.y2), Pixel{colour::section_light}) << section.x1;
        EXPECT_EQ(drawn(section.x1 - 1, section.y1 - 1), Pixel{colour::section_dark}) << section.x1;
    }
}

TEST_F(ParameterScreenTest, TheRpmColumnIsNeverShown) { // ODDITY rpm-column-never-shown
    for (const auto& row : parameter_screen.keys)
        for (const char* key : row.keys) {
            press_key(key ? key : "");
            EXPECT_TRUE(state.mysterious) << row.words;
        }
    ASSERT_EQ(shown_rows(state).size(), 1U);
    EXPECT_EQ(shown_rows(state)[0].first, 1);
    EXPECT_EQ(shown_rows(state)[0].last, 35);
    draw(state);
    EXPECT_TRUE(screen_shows(755, 70, "Purple", colour::label));
}

TEST_F(ParameterScreenTest, NeitherMouseNorKeysShowTheRpmColumn) { // ODDITY rpm-column-never-shown
    std::vector<ScriptStep> steps;
    for (int y = 5; y < 600; y += 35)
        for (const int x : {5, 315, 525, 735, 760, 945})
            for (const int button : {1, 2})
                steps.push_back(at_once({click(x, y, button), key_press(Key::enter)}));
    steps.push_back(typed("iIdDuUmMzZrR "));
    for (const Key key : {Key::left, Key::right, Key::up, Key::down, Key::tab, Key::enter, Key::f1, Key::home})
        steps.push_back(key_press(key));
    steps.push_back(mouse_at(5, 590));
    steps.push_back(look([] {
        EXPECT_TRUE(screen_shows(764, 42, "Mysterious", colour::section_title));
        EXPECT_TRUE(screen_shows(755, 70, "Purple", colour::label));
        EXPECT_TRUE(screen_shows(755, 294, "Orange #5", colour::label));
    }));
    play_screen(std::move(steps));
}

TEST_F(ParameterScreenTest, RowsPastTheLastAreNeverDrawn) {
    for (int row = 40; row <= 100; ++row) {
        PTARGET[row] = PTARGET[mass_row];
        PTARGET[row].label = "Row";
        PTARGET[row].label_y = PTARGET[row].value_y = 4;
    }
    const auto nothing = look([] { EXPECT_TRUE(is_filled(25, 4, 300, 15, colour::background)); });
    play_screen({mouse_at(5, 590), nothing, mouse_at(30, 10), nothing, click(30, 10), typed("5"), key_press(Key::enter),
                 key_press(Key::z), nothing});
    EXPECT_EQ(par_word(par_offset::mass), 20);
    state.mysterious = false;
    draw(state);
    EXPECT_TRUE(is_filled(25, 4, 300, 15, colour::background));
}

TEST_F(ParameterScreenTest, TheRpmColumnStillDraws) {
    state.mysterious = false;
    draw(state);
    EXPECT_TRUE(screen_shows(764, 42, "RPM", colour::section_title));
    EXPECT_EQ(drawn(948, 144), Pixel{colour::section_light});
    EXPECT_TRUE(screen_shows(755, 70, "Idle RPM", colour::label));
    EXPECT_TRUE(screen_shows(875, 118, "10000", colour::value));
    EXPECT_TRUE(is_filled(755, 150, 940, 320, colour::background));
    EXPECT_TRUE(screen_shows(25, 86, "Sign name", colour::label));
    // The rows follow a marker at once.
    move(112, 520, 1);
    move(200, 520, 1);
    draw(state);
    EXPECT_TRUE(screen_shows(875, 70, "2880", colour::value));
}

TEST_F(ParameterScreenTest, EscapeAndTheCloseRequestEndTheProgram) {
    play({key_press(Key::escape)}, EDITPARAMS);
    EXPECT_EQ(CURMENU, screen_number::quit);
    CURMENU = screen_number::parameters;
    play({close_window()}, EDITPARAMS);
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(ParameterScreenTest, TheMenuBarLeavesTheScreen) {
    play({click(menu_cell + 10, 620)}, EDITPARAMS);
    EXPECT_EQ(CURMENU, screen_number::editor_3d);
    EXPECT_TRUE(is_filled(0, 0, 959, 599, colour::background));
}

TEST_F(ParameterScreenTest, AClickOnTheCurveStoresTheTorque) {
    play_screen({click(curve_x(10), curve_y(100))});
    EXPECT_EQ(par_byte(58 + 10), 100);
    EXPECT_EQ(par_byte(58 + 9), 0);
    EXPECT_EQ(par_byte(58 + 11), 0);
}

TEST_F(ParameterScreenTest, AClickOnTheTopLineStoresWhatTheZoomGives) {
    state.graph.zoom = 1;
    move(curve_x(5), 245, 1);
    EXPECT_EQ(par_byte(63), 255);
    state.graph.zoom = 4;
    move(curve_x(6), 245, 1);
    EXPECT_EQ(par_byte(64), 63);
}

TEST_F(ParameterScreenTest, AStrokePaintsEveryPositionThatWasReported) {
    // All of it arrives before the program looks once.
    std::vector<std::pair<int, int>> path;
    for (int point = 0; point < torque_points; ++point)
        path.emplace_back(curve_x(point), curve_y(point));
    play_screen({at_once(drag(path))});
    for (int point = 0; point < torque_points; ++point)
        EXPECT_EQ(torque(point), point) << point;
}

TEST_F(ParameterScreenTest, TheRightButtonSelectsAndLeavesTheTorque) {
    set_curve(60);
    play_screen({click(curve_x(30), 300, 2), key_press(Key::up), look([] {
                     EXPECT_TRUE(has_point_box(30, 122, selected));
                     EXPECT_TRUE(has_point_box(0, 120, low));
                 })});
    EXPECT_EQ(torque(30), 61);
    EXPECT_EQ(torque(0), 60);
}

TEST_F(ParameterScreenTest, BothButtonsNeitherPaintNorSelect) {
    move(curve_x(30), 300, 3);
    EXPECT_EQ(torque(30), 0);
    EXPECT_EQ(state.graph.selected, 0);
}

TEST_F(ParameterScreenTest, HoverShowsThePoint) {
    set_curve(60);
    play_screen({mouse_at(curve_x(30), 300), look([] {
                     EXPECT_TRUE(has_point_box(30, 120, hovered));
                     EXPECT_TRUE(screen_shows(520, 545, "3840 RPM", colour::label));
                     EXPECT_TRUE(screen_shows(610, 545, "Torque=60", colour::label));
                 }),
                 mouse_at(curve_x(31), 320), look([] {
                     EXPECT_TRUE(has_point_box(30, 120, low));
                     EXPECT_TRUE(has_point_box(31, 120, hovered));
                     EXPECT_TRUE(screen_shows(520, 545, "3968 RPM", colour::label));
                 })});
}

TEST_F(ParameterScreenTest, ReachingTheSelectedPointColoursTheOneLeft) { // ODDITY hover-box-takes-selected-colour
    set_curve(60);
    state.graph.selected = 31;
    draw(state);
    move(curve_x(30), 300);
    move(curve_x(31), 300);
    EXPECT_TRUE(has_point_box(30, 120, selected));
}

TEST_F(ParameterScreenTest, ARedrawTakesTheReadoutAwayUntilAnotherPointIsReached) { // ODDITY hover-readout-vanishes
    set_curve(60);
    const auto no_readout = look([] { EXPECT_TRUE(is_filled(520, 545, 689, 560, colour::background)); });
    play_screen({mouse_at(curve_x(30), 300), look([] {
                     EXPECT_TRUE(has_point_box(30, 120, hovered));
                     EXPECT_TRUE(screen_shows(520, 545, "3840 RPM", colour::label));
                 }),
                 key_press(Key::right), no_readout, look([] { EXPECT_TRUE(has_point_box(30, 120, low)); }),
                 mouse_at(curve_x(30) + 1, 310), no_readout, mouse_at(5, 590), mouse_at(curve_x(30), 300), no_readout,
                 mouse_at(curve_x(31), 300),
                 look([] { EXPECT_TRUE(screen_shows(520, 545, "3968 RPM", colour::label)); })});
}

TEST_F(ParameterScreenTest, TheFirstPointShowsNothingWhenItIsReachedFirst) { // ODDITY hover-readout-vanishes
    set_curve(60);
    play_screen({mouse_at(curve_x(0), 300), look([] {
                     EXPECT_TRUE(is_filled(520, 545, 689, 560, colour::background));
                     EXPECT_TRUE(has_point_box(0, 120, selected));
                 }),
                 mouse_at(curve_x(1), 300), mouse_at(curve_x(0), 300), look([] {
                     EXPECT_TRUE(screen_shows(520, 545, "0 RPM", colour::label));
                     EXPECT_TRUE(has_point_box(0, 120, hovered));
                 })});
}

TEST_F(ParameterScreenTest, AHoverMoveShowsTheBoxesAndTheReadoutApart) {
    set_curve(60);
    draw(state);
    move(curve_x(30), 300);
    const int frames_before = window.frames();
    move(curve_x(31), 300);
    EXPECT_EQ(window.frames(), frames_before + 1);
    ASSERT_EQ(window.last_rectangles().size(), 2U);
    EXPECT_LE(window.last_rectangles()[0].y2, 400) << "the boxes";
    EXPECT_GE(window.last_rectangles()[1].y1, 545) << "the readout";
}

TEST_F(ParameterScreenTest, DragsAMarker) {
    play_screen({mouse_at(112, 530), press(112, 530), mouse_at(150, 512), mouse_at(201, 540), look([] {
                     EXPECT_EQ(par_word(6), 2901); // 2901.33
                     EXPECT_TRUE(screen_shows(72, 545, "Idle: 2901 RPM", idle));
                     EXPECT_EQ(drawn(65 + 136, 300), Pixel{idle});
                 }),
                 release(201, 540), mouse_at(300, 520)});
    EXPECT_EQ(par_word(6), 2901);
}

TEST_F(ParameterScreenTest, DragsEachOfTheFourMarkers) {
    const std::array<int, 4> places{112, 159, 487, 534}; // where a new car's markers stand
    for (std::size_t i = 0; i < 4; ++i) {
        move(places[i], 520);
        move(places[i], 520, 1);
        EXPECT_EQ(state.graph.dragged, static_cast<int>(i + 1));
        move(300 + static_cast<int>(i), 520, 1);
        move(300, 520);
        EXPECT_EQ(state.graph.dragged, 0);
        EXPECT_EQ(par_word(6 + 2 * static_cast<int>(i)), 128 * (235 + static_cast<int>(i)) / 6);
    }
}

TEST_F(ParameterScreenTest, FarFromEveryMarkerNothingIsDragged) {
    const auto before = PAR;
    move(300, 520);
    move(300, 520, 1); // 5013
    EXPECT_EQ(state.graph.dragged, 0);
    move(160, 520, 1); // over one now, but the button went down elsewhere
    EXPECT_EQ(state.graph.dragged, 0);
    EXPECT_EQ(PAR, before);
}

TEST_F(ParameterScreenTest, ADragPausesOutsideTheStrip) {
    move(112, 520);
    move(112, 520, 1);
    move(150, 505, 1); // between curve and strip
    EXPECT_EQ(par_word(6), 1002);
    EXPECT_EQ(state.graph.dragged, 1);
    move(160, 520, 1);
    EXPECT_EQ(par_word(6), 2026);
    move(160, 505, 0); // released outside
    EXPECT_EQ(state.graph.dragged, 0);
    move(170, 520, 1);
    EXPECT_NE(state.graph.dragged, 0); // a new press picks anew
}

TEST_F(ParameterScreenTest, ADragEndsWithAnyOtherButtons) {
    move(112, 520);
    move(112, 520, 1);
    move(112, 520, 3);
    EXPECT_EQ(state.graph.dragged, 0);
}

TEST_F(ParameterScreenTest, AMarkerStaysInRangeAtBothEndsOfTheStrip) {
    move(112, 520);
    move(112, 520, 1);
    move(65, 520, 1);
    EXPECT_EQ(par_word(6), 0);
    move(-1, -1, 1);
    EXPECT_EQ(par_word(6), 0);
    move(686, 520, 1);
    EXPECT_EQ(par_word(6), 13248);
    move(687, 520, 1);
    EXPECT_EQ(par_word(6), 13248);
}

TEST_F(ParameterScreenTest, OfTwoMarkersAtOneSpeedTheEarlierIsDragged) {
    set_par_word(8, 1000);
    move(112, 520);
    move(112, 520, 1);
    move(200, 520, 1);
    EXPECT_EQ(par_word(6), 2880);
    EXPECT_EQ(par_word(8), 1000);
}

TEST_F(ParameterScreenTest, KeysSetTheMarkersWhereTheMouseIs) { // ODDITY marker-drag-truncates-key-rounds
    const std::array<std::pair<const char*, const char*>, 4> letters{{{"i", "I"}, {"d", "D"}, {"u", "U"}, {"m", "M"}}};
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const int offset = 6 + 2 * static_cast<int>(i);
        move(67, 300); // 42.67
        press_key(letters[i].first);
        EXPECT_EQ(par_word(offset), 43) << letters[i].first;
        move(68, 300); // 64
        press_key(letters[i].second);
        EXPECT_EQ(par_word(offset), 64) << letters[i].second;
    }
    set_par_word(6, 1000);
    move(112, 520);
    move(112, 520, 1);
    move(67, 520, 1);
    EXPECT_EQ(par_word(6), 42);
}

TEST_F(ParameterScreenTest, CapitalLettersSetTheMarkersToo) {
    const Modifiers shift{.shift = true};
    play_screen({mouse_at(201, 300), key_press(Key::i, shift), key_press(Key::d, shift), key_press(Key::u, shift),
                 key_press(Key::m, shift)});
    for (const int offset : {6, 8, 10, 12})
        EXPECT_EQ(par_word(offset), 2901) << offset;
}

TEST_F(ParameterScreenTest, KeysSetNoMarkerWhenTheMouseIsElsewhere) {
    const auto before = PAR;
    for (const auto& [x, y] :
         std::vector<std::pair<int, int>>{{64, 300}, {687, 300}, {300, 244}, {300, 501}, {-1, -1}}) {
        move(x, y);
        for (const char* letter : {"i", "D", "u", "M"})
            press_key(letter);
    }
    EXPECT_EQ(PAR, before);
}

TEST_F(ParameterScreenTest, ZoomGoesRound) {
    for (const int zoom : {3, 4, 1, 2, 3}) {
        press_key(zoom % 2 == 0 ? "z" : "Z");
        EXPECT_EQ(state.graph.zoom, zoom);
    }
    set_curve(200);
    play_screen({key_press(Key::z), key_press(Key::z), key_press(Key::z),
                 look([] { EXPECT_TRUE(screen_shows(29, 237, "255", colour::label)); }), key_press(Key::z),
                 look([] { EXPECT_TRUE(has_point_box(50, 255, clipped)); })});
}

TEST_F(ParameterScreenTest, CursorKeysMoveTheSelectionWithinTheCurve) {
    press_key(key::left);
    EXPECT_EQ(state.graph.selected, 0);
    for (int i = 0; i < 110; ++i)
        press_key(key::right);
    EXPECT_EQ(state.graph.selected, 103);
    press_key(key::left);
    EXPECT_EQ(state.graph.selected, 102);
}

TEST_F(ParameterScreenTest, CursorKeysChangeTheTorqueWithinAByte) {
    press_key(key::down);
    EXPECT_EQ(torque(0), 0);
    press_key(key::up);
    press_key(key::up);
    press_key(key::down);
    EXPECT_EQ(torque(0), 1);
    set_torque(0, 254);
    press_key(key::up);
    press_key(key::up);
    EXPECT_EQ(torque(0), 255);
    EXPECT_EQ(par_byte(57), 0);
    EXPECT_EQ(par_byte(59), 0);
}

TEST_F(ParameterScreenTest, EveryKeyRedrawsOrLeaves) {
    move(300, 300);
    int keys = 0;
    for (const auto& row : parameter_screen.keys)
        for (const char* key : row.keys) {
            if (!key) continue;
            ++keys;
            state.redraw = false;
            state.leave = false;
            press_key(key);
            EXPECT_TRUE(state.redraw || state.leave) << row.words;
        }
    EXPECT_EQ(keys, 16);
    state.redraw = false;
    for (const char* other : {"", "q", "\t", "\r", " "})
        press_key(other);
    EXPECT_FALSE(state.redraw);
}

TEST_F(ParameterScreenTest, NothingIsLeftOfASelectedPointAboveTheGraph) {
    set_curve(150);
    draw(state);
    EXPECT_TRUE(has_point_box(0, 300, selected));
    press_key(key::right);
    draw(state);
    EXPECT_TRUE(has_point_box(1, 300, selected));
    EXPECT_TRUE(is_filled(64, 199, 66, 201, colour::background));
    press_key("z");
    press_key("z");
    press_key("z"); // back in the graph
    draw(state);
    EXPECT_TRUE(is_filled(70, 199, 72, 201, colour::background));
    EXPECT_FALSE(state.overdrawn);
}

TEST_F(ParameterScreenTest, NothingIsLeftOfAMarkerBesideTheGraph) {
    set_par_word(12, 15000);
    draw(state);
    EXPECT_EQ(drawn(65 + 703, 335), Pixel{0xFFF05000});
    move(300, 300);
    press_key("m");
    draw(state);
    EXPECT_TRUE(is_filled(768, 326, 768, 336, colour::background));
    EXPECT_TRUE(screen_shows(764, 337, "Specifications", colour::section_title));
    EXPECT_TRUE(screen_shows(750, 365, "New car", colour::value));
}

TEST_F(ParameterScreenTest, TheStripTellsOfThePointThatWasSelected) {
    const auto fact = [](const std::string& text) {
        return look([text] {
            const int x = 960 - 8 - 8 * static_cast<int>(text.size());
            EXPECT_TRUE(screen_shows(x - 8, 616, " " + text, 0xFFB4B4B4)) << text;
        });
    };
    const auto plain = look([] {
        for (int y = 600; y < 648; ++y)
            for (int x = 700; x < 960; ++x)
                ASSERT_NE(drawn(x, y), Pixel{0xFFB4B4B4}) << x << "," << y;
    });
    play_screen({mouse_at(curve_x(9), 300), plain, click(curve_x(10), curve_y(57)), fact("1280 RPM, torque 57"),
                 key_press(Key::up), fact("1280 RPM, torque 58"), key_press(Key::left), fact("1152 RPM, torque 0"),
                 click(curve_x(10), 300, 2), fact("1280 RPM, torque 58"), mouse_at(5, 5), fact("1280 RPM, torque 58")});
    play_screen({plain});
}
