// What the 3D editor shows, what the mouse does, and what each key redraws.
#include "editor3d/editor_test.h"

#include "base/file_io.h"
#include "model/body.h"
#include "model/dimensions.h"
#include "model/shading.h"
#include "model/wheels.h"
#include "support/text_file.h"

#include <cmath>

namespace {

using testing::ElementsAre;

constexpr std::uint32_t many = 0xFFC8B400;

std::set<int> views_and_panel() { return {1, 2, 3, 4, panel}; }
std::set<int> all_views() { return {1, 2, 3, 4}; }

} // namespace

TEST_F(EditorTest, DrawsItself) {
    play_editor({mouse_at(5, 595), look([this] {
                     EXPECT_EQ(shown(0, 0), Pixel{colour::background});
                     EXPECT_EQ(shown(959, 599), Pixel{colour::background});
                     EXPECT_TRUE(screen_shows(16, 16, "= 3D EDITOR =", colour::title));
                     EXPECT_TRUE(screen_shows(44, 42, "Top", colour::section_title));
                     EXPECT_TRUE(screen_shows(404, 42, "Front", colour::section_title));
                     EXPECT_TRUE(screen_shows(44, 307, "Side", colour::section_title));
                     EXPECT_TRUE(screen_shows(404, 307, "3D view", colour::section_title));
                     EXPECT_TRUE(screen_shows(764, 42, "Info panel", colour::section_title));
                     for (int view = 1; view <= views; ++view)
                         EXPECT_EQ(shown(W3D[view].right, W3D[view].bottom), Pixel{colour::section_light});
                     EXPECT_EQ(shown(949, 565), Pixel{colour::section_light});
                     EXPECT_EQ(shown(739, 49), Pixel{colour::section_dark});
                     EXPECT_EQ(shown(555, 400), Pixel{MATERIAL[60].colour}); // the face, in the 3D view
                 })});
}

TEST_F(EditorTest, ThePanelSaysWhatIsShown) {
    CURPJ = 2;
    play_editor({over(0), look([] {
                     const std::vector<std::tuple<int, std::string, std::string>> rows{
                         {64, "Model", "Showroom"}, {80, "Paint job", "3/7"},  {96, "Vertices", "35"},
                         {112, "Primitives", "5"},  {144, "Move mode", "Car"}, {160, "Move snap", "0.1m"}};
                     for (const auto& [y, label, value] : rows) {
                         EXPECT_TRUE(screen_shows(760, y, label, colour::label)) << label;
                         EXPECT_TRUE(screen_shows(860, y, value, colour::value)) << label;
                     }
                 })});
}

TEST_F(EditorTest, SlotNamesInThePanel) {
    std::vector<ScriptStep> steps{over(0)};
    for (const char* name : {"Showroom", "Game", "Intro", "Aux 1", "Aux 2", "Showroom"}) {
        steps.push_back(look([name] { EXPECT_TRUE(screen_shows(860, 64, name, colour::value)) << name; }));
        steps.push_back(typed("m"));
    }
    play_editor(std::move(steps));
}

TEST_F(EditorTest, CountsAbove255HaveAColourOfTheirOwn) {
    CAR[0].edit().nverts = 255;
    CAR[0].edit().nprims = 256;
    CAR[1].edit().nverts = 256;
    CAR[1].edit().nprims = 255;
    play_editor({over(0), look([] {
                     EXPECT_TRUE(screen_shows(860, 96, "255", colour::value));
                     EXPECT_TRUE(screen_shows(860, 112, "256", many));
                 }),
                 typed("2"), look([] {
                     EXPECT_TRUE(screen_shows(860, 96, "256", many));
                     EXPECT_TRUE(screen_shows(860, 112, "255", colour::value));
                 })});
}

// ODDITY slot-begins-at-showroom
TEST_F(EditorTest, BeginsWithSlotZeroAndSnapAndModeAnewAndKeepsTheRest) {
    play_editor(
        {over(0), typed("3*pp"), key_press(Key::tab), key_press(Key::right), key_press(Key::up), wheel(30, 60, 2)});
    EXPECT_EQ(CURMODEL, 2);
    const double zoom = W3D[1].zoom;
    EXPECT_GT(zoom, 40);
    play_editor({over(0), look([&] {
                     EXPECT_EQ(CURMODEL, 0);
                     EXPECT_TRUE(screen_shows(860, 160, "0.1m", colour::value));
                     EXPECT_TRUE(screen_shows(860, 144, "Car", colour::value));
                     EXPECT_EQ(CURPJ, 2);
                     EXPECT_EQ(CURYAW, 0.196349375);
                     EXPECT_EQ(CURPITCH, 0.0981746875);
                     EXPECT_EQ(W3D[1].zoom, zoom);
                 })});
}

// --- mouse ----------------------------------------------------------------------------------------------------------

TEST_F(EditorTest, TheCaptionOfTheViewUnderThePointerIsHighlighted) {
    const std::array<std::pair<int, int>, 5> captions{{{0, 0}, {44, 42}, {404, 42}, {44, 307}, {404, 307}}};
    const std::array<const char*, 5> names{"", "Top", "Front", "Side", "3D view"};
    std::vector<ScriptStep> steps;
    for (const int view : {1, 2, 3, 4, 1}) {
        steps.push_back(over(view));
        steps.push_back(look([=] {
            for (std::size_t other = 1; other <= 4; ++other)
                EXPECT_TRUE(screen_shows(captions[other].first, captions[other].second, names[other],
                                         static_cast<int>(other) == view ? colour::title : colour::section_title))
                    << view << ' ' << other;
        }));
    }
    play_editor(std::move(steps));
}

// ODDITY highlight-stays
TEST_F(EditorTest, APointerThatLeavesTheViewsLeavesTheHighlightBehind) {
    play_editor({over(1), over(0), look([] { EXPECT_TRUE(screen_shows(44, 42, "Top", colour::title)); })});
    EXPECT_EQ(redrawn_by({over(1)}, over(0)), std::set<int>{});
    EXPECT_EQ(redrawn_by({over(1), over(0)}, over(1)), std::set<int>{});
    EXPECT_EQ(redrawn_by({over(1), over(0)}, over(2)), (std::set<int>{0, 1, 2, 3, 4, panel}));
}

TEST_F(EditorTest, EdgesBelongToTheView) {
    for (const auto& [x, y, hovered] : {std::tuple{20, 50, 1},
                                        {370, 300, 1},
                                        {371, 300, 0},
                                        {370, 301, 0},
                                        {19, 50, 0},
                                        {20, 49, 0},
                                        {380, 50, 2},
                                        {730, 565, 4},
                                        {730, 314, 0},
                                        {20, 315, 3}}) {
        EditorScreen state;
        state.input.mouse = {x, y, 0, 0};
        editor_screen.on_mouse(state);
        EXPECT_EQ(state.hovered, hovered) << x << ',' << y;
        EXPECT_EQ(state.last_hovered, hovered);
    }
}

TEST_F(EditorTest, ADisabledViewIsNeitherHoveredNorDrawn) {
    W3D[2].enabled = 0;
    play_editor({mouse_at(500, 100), look([] {
                     EXPECT_TRUE(screen_shows(404, 42, "Front", colour::section_title));
                     EXPECT_EQ(drawn(555, 275), Pixel{colour::background}); // no origin
                     EXPECT_NE(drawn(195, 175), Pixel{colour::background});
                 })});
}

TEST_F(EditorTest, ThePointerInModelUnits) {
    EditorScreen state;
    state.input.mouse = {555 + 40, 275 - 120, 0, 0};
    editor_screen.on_mouse(state);
    EXPECT_EQ(state.x, 0.5);
    EXPECT_EQ(state.y, 1.5);
    state.input.before = state.input.mouse;
    state.input.mouse = {5, 595, 0, 0}; // in no view: stays
    editor_screen.on_mouse(state);
    EXPECT_EQ(state.x, 0.5);
}

TEST_F(EditorTest, TheWheelZoomsTheHoveredViewAlone) {
    play_editor({over(3), wheel(40, 400, 3)});
    EXPECT_DOUBLE_EQ(W3D[3].zoom, 60 * std::pow(1.1, 3));
    EXPECT_EQ(W3D[1].zoom, 40);
    EXPECT_EQ(W3D[4].zoom, 60);
    play_editor({over(3), wheel(40, 400, -1), wheel(40, 400, -1), wheel(5, 590, -8)});
    EXPECT_DOUBLE_EQ(W3D[3].zoom, 60 * std::pow(1.1, 3) * std::pow(1.1, -1) * std::pow(1.1, -1));
    for (int view = 1; view <= views; ++view)
        EXPECT_EQ(redrawn_by({over(view)}, wheel(inside(view).first, inside(view).second, 1)), std::set<int>{view});
    EXPECT_EQ(redrawn_by({over(1)}, wheel(5, 590, 1)), std::set<int>{});
}

TEST_F(EditorTest, AZoomStaysBetweenOneAndTenThousand) {
    std::vector<ScriptStep> in{over(1)}, out{over(1)};
    for (int i = 0; i < 3; ++i) {
        in.push_back(wheel(40, 70, 1000));
        out.push_back(wheel(40, 70, -1000));
    }
    play_editor(in);
    EXPECT_EQ(W3D[1].zoom, 10000);
    play_editor(out);
    EXPECT_EQ(W3D[1].zoom, 1);
}

TEST_F(EditorTest, ButtonsDoNothing) {
    const CarDocument before = DOCUMENT;
    for (const int button : {1, 2})
        for (int view = 1; view <= views; ++view)
            EXPECT_EQ(redrawn_by({over(view)}, click(inside(view).first, inside(view).second, button)),
                      std::set<int>{});
    EXPECT_TRUE(DOCUMENT == before);
}

TEST_F(EditorTest, TheMenuBarLeavesForAnotherScreen) {
    play({over(1), mouse_at(3 * 48 + 5, 610), press(3 * 48 + 5, 610)}, EDIT3D);
    EXPECT_EQ(CURMENU, screen_number::parameters);
    EXPECT_EQ(drawn(20, 50), Pixel{colour::background});
    EXPECT_EQ(drawn(949, 565), Pixel{colour::background});
}

TEST_F(EditorTest, EscapeAndTheCloseRequestEndTheProgram) {
    play({over(1), key_press(Key::escape)}, EDIT3D);
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_EQ(drawn(20, 50), Pixel{colour::background});
    CURMENU = screen_number::editor_3d;
    play({over(1), close_window()}, EDIT3D);
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_EQ(drawn(20, 50), Pixel{colour::background});
}

// --- what each key redraws ------------------------------------------------------------------------------------------

TEST_F(EditorTest, KeysRedrawWhatTheyChange) {
    struct Case {
        ScriptStep key;
        std::set<int> parts;
        const char* name;
    };
    const std::vector<Case> cases{
        {typed("p"), views_and_panel(), "p"},
        {typed("P"), views_and_panel(), "P"},
        {typed("."), views_and_panel(), "."},
        {typed(","), views_and_panel(), ","},
        {typed("m"), views_and_panel(), "m"},
        {typed("M"), views_and_panel(), "M"},
        {typed("1"), views_and_panel(), "1"},
        {typed("5"), views_and_panel(), "5"},
        {typed("*"), {panel}, "*"},
        {typed("/"), {panel}, "/"},
        {key_press(Key::tab), {panel}, "Tab"},
        {control(Key::p), views_and_panel(), "Ctrl+P"},
        {control(Key::o), views_and_panel(), "Ctrl+O"},
        {control(Key::c), {}, "Ctrl+C"},
        {control(Key::v), all_views(), "Ctrl+V"},
        {control(Key::a), {4}, "Ctrl+A"},
        {control(Key::b), all_views(), "Ctrl+B"},
        {control(Key::d), {}, "Ctrl+D"},
        {control(Key::w), all_views(), "Ctrl+W"},
        {typed("`"), {}, "`"},
        {typed("0"), {}, "0"},
        {typed("6"), {}, "6"},
        {typed("x"), {}, "x"},
        {control(Key::s), {}, "Ctrl+S"},
        {key_press(Key::home), {}, "Home"},
        {key_press(Key::tab, {.shift = true}), {}, "Shift+Tab"},
    };
    for (int view = 0; view <= views; ++view)
        for (const Case& key : cases)
            EXPECT_EQ(redrawn_by({over(view)}, key.key), key.parts) << key.name << " over view " << view;
}

// --- keys -----------------------------------------------------------------------------------------------------------

TEST_F(EditorTest, SlotsByNumberAndInTurn) {
    const std::vector<std::pair<std::string, int>> keys{{"1", 0}, {"2", 1}, {"3", 2}, {"4", 3}, {"5", 4},
                                                        {"m", 0}, {"M", 1}, {"5", 4}, {"M", 0}};
    std::vector<ScriptStep> steps;
    for (const auto& [key, slot] : keys) {
        steps.push_back(typed(key));
        steps.push_back(look([slot = slot] { EXPECT_EQ(CURMODEL, slot); }));
    }
    play_editor(std::move(steps));
}

TEST_F(EditorTest, PaintJobsWrapBothWays) {
    PAINTJOBS = 3;
    const std::vector<std::pair<std::string, int>> keys{{"p", 1}, {"P", 2}, {".", 0}, {",", 2}, {",", 1}, {",", 0}};
    std::vector<ScriptStep> steps;
    for (const auto& [key, job] : keys) {
        steps.push_back(typed(key));
        steps.push_back(look([job = job] { EXPECT_EQ(CURPJ, job); }));
    }
    play_editor(std::move(steps));
}

TEST_F(EditorTest, TheShownPaintJobGivesTheColours) {
    CAR[0].edit().prims[4].material[1] = 88;
    play_editor({look([] { EXPECT_EQ(drawn(555, 400), Pixel{MATERIAL[60].colour}); }), typed("p"),
                 look([] { EXPECT_EQ(drawn(555, 400), Pixel{MATERIAL[88].colour}); })});
}

TEST_F(EditorTest, MoveModesInTurnAndBackWithControl) {
    std::vector<ScriptStep> steps;
    const auto expect = [&](const char* name) {
        steps.push_back(look([name] { EXPECT_TRUE(screen_shows(860, 144, name, colour::value)) << name; }));
    };
    for (const char* name : {"Wheels", "Resize W.", "Collision", "Car"}) {
        steps.push_back(key_press(Key::tab));
        expect(name);
    }
    for (const char* name : {"Collision", "Resize W.", "Wheels", "Car"}) {
        steps.push_back(key_press(Key::tab, {.control = true}));
        expect(name);
    }
    play_editor(std::move(steps));
}

TEST_F(EditorTest, TheSnapDoublesTo1_6AndHalvesTo0_00625) {
    std::vector<ScriptStep> steps;
    const auto expect = [&](const std::string& key, const char* snap) {
        steps.push_back(typed(key));
        steps.push_back(look([snap] { EXPECT_TRUE(screen_shows(860, 160, snap, colour::value)) << snap; }));
    };
    for (const char* snap : {"0.2m", "0.4m", "0.8m", "1.6m", "1.6m"})
        expect("*", snap);
    for (const char* snap : {"0.8m", "0.4m", "0.2m", "0.1m", "0.05m", "0.025m", "0.0125m", "0.00625m", "0.00625m"})
        expect("/", snap);
    play_editor(std::move(steps));
}

TEST_F(EditorTest, AShorterSnapLeavesNothingOfALongerOne) {
    play_editor({typed("////"), typed("****"), look([] {
                     EXPECT_TRUE(screen_shows(860, 160, "0.1m", colour::value));
                     for (int x = 860 + 4 * 8; x < 930; ++x)
                         for (int y = 160; y < 175; ++y)
                             EXPECT_EQ(drawn(x, y), Pixel{colour::background});
                 })});
}

TEST_F(EditorTest, CopyAndPasteCarryTheWholeRecord) {
    SHAPEMODEL& source = CAR[1].edit();
    source.verts[500] = {1, 2, 3, 4};
    source.prims[511].material[16] = 77;
    source.prims[4].mark = 9;
    const SHAPEMODEL copied = source;
    play_editor(
        {typed("2"), control(Key::c), look([] { EXPECT_EQ(said(), "Game copied"); }), typed("5"), control(Key::v)});
    EXPECT_TRUE(model(4) == copied);
    EXPECT_TRUE(model(1) == copied);
    EXPECT_EQ(CURMODEL, 4);
}

TEST_F(EditorTest, ACopyDoesNotFollowItsSource) {
    const SHAPEMODEL before = model(0);
    play_editor({over(1), control(Key::c), key_press(Key::right), control(Key::v)});
    EXPECT_TRUE(model(0) == before);
}

TEST_F(EditorTest, PastingAnEmptyClipboardClearsTheSlotAndSaysSo) {
    play_editor({typed("3"), control(Key::v)});
    EXPECT_TRUE(model(2) == SHAPEMODEL{});
    EXPECT_TRUE(model(1) == car_with_a_face());
    EXPECT_EQ(said(), "The clipboard is empty, and now Intro is, too");
}

// ODDITY counts-wait-for-the-panel
TEST_F(EditorTest, CountsInThePanelWaitForItsNextRedraw) {
    CAR[0] = SHAPEMODEL{};
    play_editor({typed("2"), control(Key::c), typed("1"), control(Key::v), look([] {
                     EXPECT_EQ(model(0).nverts, 35);
                     EXPECT_TRUE(screen_shows(860, 96, "0", colour::value));
                 }),
                 typed("*"), look([] { EXPECT_TRUE(screen_shows(860, 96, "35", colour::value)); })});
    CAR[0] = SHAPEMODEL{};
    play_editor({control(Key::w), look([] {
                     EXPECT_EQ(model(0).nprims, 4);
                     EXPECT_TRUE(screen_shows(860, 112, "0", colour::value));
                 })});
}

TEST_F(EditorTest, AddingAPaintJobCopiesTheShownOneInThreeSlots) {
    for (auto& slot : CAR)
        slot.edit().prims[4].material[2] = 99;
    CURPJ = 2;
    play_editor({control(Key::p), look([] { EXPECT_TRUE(screen_shows(860, 80, "8/8", colour::value)); })});
    EXPECT_EQ(PAINTJOBS, 8);
    EXPECT_EQ(CURPJ, 7);
    for (int slot = 0; slot < car_slots; ++slot)
        EXPECT_EQ(model(slot).prims[4].material[7], slot < 3 ? 99 : 60) << slot;
}

TEST_F(EditorTest, SixteenPaintJobsAtMost) {
    PAINTJOBS = 15;
    play_editor({control(Key::p), look([] { EXPECT_EQ(PAINTJOBS, 16); }), control(Key::p)});
    EXPECT_EQ(PAINTJOBS, 16);
    EXPECT_EQ(CURPJ, 15);
    EXPECT_EQ(said(), "16 paint jobs at most");
    EXPECT_EQ(redrawn_by({over(0)}, control(Key::p)), std::set<int>{});
}

TEST_F(EditorTest, RemovingAPaintJobMovesTheLaterOnesDown) {
    for (std::uint16_t job = 0; job < 7; ++job)
        CAR[1].edit().prims[4].material[job] = static_cast<std::uint16_t>(50 + job);
    CURPJ = 2;
    play_editor({control(Key::o), look([] { EXPECT_TRUE(screen_shows(860, 80, "3/6", colour::value)); })});
    EXPECT_EQ(PAINTJOBS, 6);
    EXPECT_EQ(CURPJ, 2);
    const auto& materials = model(1).prims[4].material;
    EXPECT_THAT(std::vector<int>(materials.begin(), materials.begin() + 7), ElementsAre(50, 51, 53, 54, 55, 56, 56));
}

TEST_F(EditorTest, RemovingTheLastPaintJobLeavesTheNewLastOne) {
    PAINTJOBS = 3;
    CURPJ = 2;
    play_editor({control(Key::o)});
    EXPECT_EQ(PAINTJOBS, 2);
    EXPECT_EQ(CURPJ, 1);
}

TEST_F(EditorTest, TheOnlyPaintJobStays) {
    PAINTJOBS = 1;
    const CarDocument before = DOCUMENT;
    play_editor({control(Key::o)});
    EXPECT_TRUE(DOCUMENT == before);
    EXPECT_EQ(said(), "The only paint job stays");
    EXPECT_EQ(redrawn_by({over(0)}, control(Key::o)), std::set<int>{});
}

TEST_F(EditorTest, GeneratorsWorkOnTheShownSlot) {
    SHAPEMODEL expected = model(3);
    shade_by_facing(expected, 2);
    CURPJ = 2;
    play_editor({typed("4"), control(Key::a)});
    EXPECT_TRUE(model(3) == expected);
    EXPECT_FALSE(model(3) == car_with_a_face());

    CAR[2] = SHAPEMODEL{};
    play_editor({typed("3"), control(Key::w)});
    EXPECT_TRUE(model(2) == model_with_wheels());
    EXPECT_TRUE(model(0) == car_with_a_face());
}

TEST_F(EditorTest, InfoComesFromTheGameModelWhateverIsShown) {
    CAR[0] = SHAPEMODEL{};
    move_body(CAR[1].edit(), 0.3, 1.5, 0.2);
    ParameterBlock expected = PAR;
    store_dimensions(model(1), expected);
    store_wheel_positions(model(1), expected);
    play_editor({control(Key::b)});
    EXPECT_TRUE(PAR == expected);
    EXPECT_NE(par_word(200), 0);
    EXPECT_NE(par_word(210), 0);
    EXPECT_EQ(said(), "Dimensions and wheel positions taken from the Game model");
}

TEST_F(EditorTest, InfoWithoutWheelsSaysThatTheirPositionsStay) {
    CAR[1].edit().prims[1].type = 3;
    set_par_word(210, 1234);
    play_editor({control(Key::b)});
    EXPECT_EQ(par_word(210), 1234);
    EXPECT_NE(par_word(200), 0);
    EXPECT_EQ(said(),
              "Dimensions taken from the Game model; its first two primitives are not both wheels, the positions stay");
}

TEST_F(EditorTest, DebrisComesFromTheGameModel) {
    play_editor({control(Key::d)});
    for (const auto& piece : CEXP) {
        EXPECT_EQ(piece->nverts, 3);
        EXPECT_EQ(piece->nprims, 1);
        EXPECT_EQ(piece->prims[0].material[6], 60);
    }
    EXPECT_EQ(said(), "Four explosion models made from the Game model");
}

TEST_F(EditorTest, DebrisSaysWhyThereIsNone) {
    CAR[1] = model_with_wheels();
    const double begin = window.clock;
    play_editor({control(Key::d)});
    EXPECT_LT(window.clock - begin, 1);
    EXPECT_EQ(CEXP[0]->nprims, 0);
    EXPECT_EQ(said(), "No explosion models: the Game model has no line and no polygon of up to five corners");
}

// The clock is looked at when it begins and before every pick, and moves on by 0.7 seconds each time.
TEST_F(EditorTest, DebrisGivesUpAfterTwoSeconds) {
    for (SHAPEPRIM& prim : CAR[1].edit().prims)
        prim.type = primitive_type::triangle;
    play_editor({look([this] { window.tick = 0.7; }), control(Key::d), look([this] { window.tick = 0.001; })});
    EXPECT_EQ(CEXP[1]->nprims, 1);
    EXPECT_EQ(CEXP[2]->nprims, 0);
    EXPECT_EQ(said(), "Time is up: 2 explosion models made");
}

TEST_F(EditorTest, TheMaterialsOfTheFirstFourPrimitivesGoIntoAText) {
    SHAPEMODEL& shown = CAR[1].edit();
    for (std::size_t i = 0; i < 17; ++i)
        shown.prims[0].material[i] = static_cast<std::uint16_t>(i);
    shown.prims[1].material.fill(255);
    shown.prims[2].material.fill(65535);
    shown.nprims = 2; // the others' fields are written all the same
    put_file(directory / "coso.txt",
             bytes_of("an older and longer one, which is replaced as a whole by what comes now"));
    play_editor({typed("2`")});
    EXPECT_EQ(read_text(directory / "coso.txt"), "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 \n"
                                                 "255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 255 \n"
                                                 "-1 -1 -1 -1 -1 -1 -1 -1 -1 -1 -1 -1 -1 -1 -1 -1 \n"
                                                 "38 38 38 38 38 38 38 38 38 38 38 38 38 38 38 38 \n");
    EXPECT_EQ(said(), "coso.txt written");
}

TEST_F(EditorTest, ATextThatCannotBeWrittenIsSaid) {
    std::filesystem::create_directory(directory / "coso.txt");
    play_editor({typed("`")});
    EXPECT_EQ(said(), "coso.txt is not writable");
}

TEST_F(EditorTest, EnterOutsideThe3dViewDoesNothing) {
    for (int view = 0; view < 4; ++view)
        EXPECT_EQ(redrawn_by({over(view)}, key_press(Key::enter)), std::set<int>{}) << view;
}

TEST_F(EditorTest, LettersWorkInEitherCaseOfTheirControl) {
    EXPECT_EQ(redrawn_by({over(0)}, key_press(Key::w, {.control = true, .shift = true})), all_views());
}

TEST_F(EditorTest, EveryKeyIsToldInWords) {
    for (const auto& row : editor_screen.keys) {
        EXPECT_NE(row.words, std::string());
        EXPECT_TRUE(row.action || row.label);
    }
    EXPECT_EQ(editor_screen_keys().size(), 3U);
    EXPECT_EQ(arrow_key_help().rows.size(), arrow_rows().size() + 1);
}
