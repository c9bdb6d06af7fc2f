// The panel of colour schemes.
#include "editor3d/paint_job_panel.h"

#include "editor3d/editor_test.h"

namespace {

constexpr std::uint32_t highlight = 0xFFFAFA00;

} // namespace

class PaintJobPanelTest : public EditorTest {
protected:
    void SetUp() override {
        EditorTest::SetUp();
        PJCOLS = 3;
        PJCOL[1] = {10, 11, 12, 13};
        PJCOL[2] = {20, 21, 22, 23};
        PJCOL[3] = {30, 31, 32, 33};
        CURPJ = 2;
        for (auto& slot : CAR)
            slot = shaded_car({60, 61, 63, 120});
    }

    // Faces of these materials.
    static SHAPEMODEL shaded_car(const std::vector<std::uint16_t>& materials) {
        SHAPEMODEL model = model_with_wheels();
        for (const std::uint16_t material : materials)
            add_triangle(model, {{{-1, 0, 0.2}, {1, 0, 0.2}, {0, 0, 1.2}}}, material);
        return model;
    }
    static std::vector<int> body_materials(int slot = 0, std::size_t job = 2) {
        std::vector<int> materials;
        for (const SHAPEPRIM& prim : body_primitives(*CAR[static_cast<std::size_t>(slot)]))
            materials.push_back(prim.material[job]);
        return materials;
    }

    // A place on a scheme's row.
    static int row_y(int scheme) { return 70 + 16 * (scheme - 1) + 5; }

    // The panel alone, as the editor opens it.
    void play_panel(std::vector<ScriptStep> steps) { play(std::move(steps), PJSELECTION); }

    static bool is_clear() {
        for (int y = 42; y <= 570; ++y)
            for (int x = 735; x <= 954; ++x)
                if (drawn(x, y) != Pixel{colour::background}) return false;
        return true;
    }
    static bool has_highlight(int scheme, std::uint32_t colour = highlight) {
        const int top = 53 + 16 * scheme;
        for (int x = 764; x <= 764 + 158; ++x)
            if (drawn(x, top) != Pixel{colour} || drawn(x, top + 15) != Pixel{colour}) return false;
        for (int y = top; y <= top + 15; ++y)
            if (drawn(764, y) != Pixel{colour} || drawn(764 + 158, y) != Pixel{colour}) return false;
        return true;
    }
};

TEST_F(PaintJobPanelTest, DrawsItself) {
    fill_box(screen(), 0, 0, 959, 599, 0xFF123456);
    play_panel({mouse_at(5, 595), look([] {
                    EXPECT_TRUE(screen_shows(764, 42, "Paint jobs", colour::section_title));
                    EXPECT_EQ(drawn(949, 565), Pixel{colour::section_light});
                    for (const auto& [x, y] : {std::pair{735, 42}, {954, 570}, {745, 300}})
                        EXPECT_EQ(drawn(x, y), Pixel{colour::background});
                    for (const auto& [x, y] : {std::pair{734, 42}, {955, 570}, {735, 41}, {954, 571}})
                        EXPECT_EQ(drawn(x, y), Pixel{0xFF123456});
                    for (int scheme = 1; scheme <= 3; ++scheme)
                        for (int shade = 1; shade <= 4; ++shade) {
                            const int left = 725 + 40 * shade, top = 54 + 16 * scheme;
                            const Pixel material{MATERIAL[static_cast<std::size_t>(10 * scheme + shade - 1)].colour};
                            EXPECT_EQ(drawn(left, top), material);
                            EXPECT_EQ(drawn(left + 36, top + 13), material);
                            EXPECT_EQ(drawn(left - 1, top), Pixel{colour::background});
                            EXPECT_EQ(drawn(left + 37, top), Pixel{colour::background});
                            EXPECT_EQ(drawn(left, top + 14), Pixel{colour::background});
                        }
                    EXPECT_EQ(drawn(765, 54 + 16 * 4), Pixel{colour::background});
                }),
                key_press(Key::escape)});
}

TEST_F(PaintJobPanelTest, TheSchemeUnderThePointerIsHighlighted) {
    play_panel({mouse_at(800, row_y(1)), look([] { EXPECT_TRUE(has_highlight(1)); }), mouse_at(900, row_y(3)), look([] {
                    EXPECT_TRUE(has_highlight(3));
                    EXPECT_TRUE(has_highlight(1, colour::background));
                }),
                mouse_at(5, 595), look([] { EXPECT_TRUE(has_highlight(3, colour::background)); }),
                key_press(Key::escape)});
}

TEST_F(PaintJobPanelTest, ASchemeUnderThePointerFromTheStartIsHighlighted) {
    play({mouse_at(800, row_y(2)), look([] { EXPECT_TRUE(has_highlight(2)); }), key_press(Key::escape)}, [] {
        while (mouse().x != 800)
            read_input();
        PJSELECTION();
    });
}

TEST_F(PaintJobPanelTest, EdgesOfTheRows) {
    for (const auto& [x, y, scheme] : {std::tuple{765, 70, 1},
                                       {924, 85, 1},
                                       {765, 86, 2},
                                       {800, 117, 3},
                                       {764, 75, 0},
                                       {925, 75, 0},
                                       {800, 69, 0},
                                       {800, 118, 0}}) {
        int shown = 0;
        play_panel({mouse_at(x, y), look([&shown] {
                        for (int row = 1; row <= 3; ++row)
                            if (has_highlight(row)) shown = row;
                    }),
                    key_press(Key::escape)});
        EXPECT_EQ(shown, scheme) << x << ',' << y;
    }
}

TEST_F(PaintJobPanelTest, AClickRecoloursTheShownPaintJobOfTheShownSlot) {
    CURMODEL = 1;
    const auto before = body_materials(1, 3);
    play_panel({click(800, row_y(2))});
    EXPECT_EQ(body_materials(1), (std::vector{20, 21, 23, 120}));
    EXPECT_EQ(body_materials(1, 3), before);
    EXPECT_EQ(body_materials(0), (std::vector{60, 61, 63, 120}));
    EXPECT_EQ(said(), "3 faces recoloured");
    EXPECT_TRUE(is_clear());
}

TEST_F(PaintJobPanelTest, AModelShadedByFacingIsRecolouredAsItsShades) {
    CAR[0] = shaded_car({60, 61, 62, 63, 203, 200});
    play_panel({click(800, row_y(3))});
    EXPECT_EQ(body_materials(), (std::vector{60, 61, 62, 63, 33, 30}));
}

TEST_F(PaintJobPanelTest, OfTwoEquallyCommonGroupsTheLowerOneIsRecoloured) {
    CAR[0] = shaded_car({84, 85, 52, 55});
    play_panel({click(800, row_y(1))});
    EXPECT_EQ(body_materials(), (std::vector{84, 85, 10, 13}));
}

TEST_F(PaintJobPanelTest, WithoutAGroupNothingIsRecolouredAndThePanelSaysSo) {
    CAR[0] = shaded_car({120, 47, 92});
    play_panel({click(800, row_y(1))});
    EXPECT_EQ(body_materials(), (std::vector{120, 47, 92}));
    EXPECT_EQ(said(), "No face of a group: nothing recoloured");
    CAR[0] = shaded_car({2});
    play_panel({click(800, row_y(1))});
    EXPECT_EQ(body_materials(), (std::vector{12}));
    EXPECT_EQ(said(), "1 face recoloured");
}

TEST_F(PaintJobPanelTest, EscapeAndTheRightButtonChangeNothing) {
    const CarDocument before = DOCUMENT;
    play_panel({mouse_at(800, row_y(1)), key_press(Key::escape)});
    EXPECT_TRUE(DOCUMENT == before);
    EXPECT_TRUE(is_clear());
    fill_box(screen(), 740, 50, 800, 80, highlight);
    play_panel({click(800, row_y(1), 2)});
    EXPECT_TRUE(DOCUMENT == before);
    EXPECT_TRUE(is_clear());
    EXPECT_EQ(said(), "");
}

TEST_F(PaintJobPanelTest, BothButtonsAndOtherKeysAreNoChoice) {
    const CarDocument before = DOCUMENT;
    play_panel({press(5, 595, 1), press(5, 595, 2), mouse_at(800, row_y(1)), look([] { EXPECT_FALSE(is_clear()); }),
                release(5, 595, 2), release(5, 595, 1), key_press(Key::enter), typed("p1 "),
                look([] { EXPECT_FALSE(is_clear()); }), key_press(Key::escape)});
    EXPECT_TRUE(DOCUMENT == before);
}

TEST_F(PaintJobPanelTest, AClickOutsideTheRowsKeepsThePanelOpen) {
    const CarDocument before = DOCUMENT;
    play_panel({click(750, 300), click(100, 100), click(800, 118), look([] { EXPECT_FALSE(is_clear()); }),
                key_press(Key::escape)});
    EXPECT_TRUE(DOCUMENT == before);
}

TEST_F(PaintJobPanelTest, AButtonThatIsDownWhenItOpensIsWaitedFor) {
    const CarDocument before = DOCUMENT;
    play({press(800, row_y(1)), mouse_at(801, row_y(1)), look([&] {
              EXPECT_TRUE(DOCUMENT == before);
              EXPECT_FALSE(is_clear());
          }),
          release(801, row_y(1)), click(801, row_y(2))},
         [] {
             while (mouse().buttons == 0)
                 read_input();
             PJSELECTION();
         });
    EXPECT_EQ(body_materials(), (std::vector{20, 21, 23, 120}));
}

TEST_F(PaintJobPanelTest, TheButtonThatChoseIsWaitedFor) {
    play_panel({mouse_at(800, row_y(1)), press(800, row_y(1)), look([] {
                    EXPECT_EQ(body_materials(), (std::vector{10, 11, 13, 120}));
                    EXPECT_FALSE(is_clear());
                }),
                release(800, row_y(1))});
    EXPECT_TRUE(is_clear());
}

TEST_F(PaintJobPanelTest, WithoutSchemesThereIsNothingToChoose) {
    PJCOLS = 0;
    const CarDocument before = DOCUMENT;
    play_panel({click(800, row_y(1)), key_press(Key::escape)});
    EXPECT_TRUE(DOCUMENT == before);
}

TEST_F(PaintJobPanelTest, WithoutSchemesTheStripTellsWhereTheyComeFrom) {
    play_panel({key_press(Key::escape)});
    EXPECT_EQ(said(), "");
    PJCOLS = 0;
    play_panel({key_press(Key::escape)});
    EXPECT_THAT(said(), testing::HasSubstr("pjobs.cfg"));
}

TEST_F(PaintJobPanelTest, ThirtyTwoSchemesHaveRoom) {
    PJCOLS = 32;
    PJCOL[32] = {1, 2, 3, 4};
    play_panel({mouse_at(800, row_y(32)), look([] { EXPECT_TRUE(has_highlight(32)); }), click(800, row_y(32))});
    EXPECT_EQ(body_materials(), (std::vector{1, 2, 4, 120}));
}

// --- in the editor
// ----------------------------------------------------------------------------------------------------

// ODDITY panel-leaves-a-gap
TEST_F(PaintJobPanelTest, TheEditorDrawsNothingInItsPlaceUntilItIsAskedTo) {
    const auto material_60 = Pixel{MATERIAL[60].colour};
    CAR[0] = shaded_car({60});
    play_editor({over(4), key_press(Key::enter), look([] { EXPECT_FALSE(is_clear()); }), click(800, row_y(1)),
                 look([&] {
                     EXPECT_TRUE(is_clear());
                     EXPECT_EQ(drawn(555, 400), material_60);
                     EXPECT_EQ(body_materials(), std::vector{10});
                 }),
                 typed("*"), look([&] {
                     EXPECT_TRUE(screen_shows(760, 64, "Model", colour::label));
                     EXPECT_EQ(drawn(555, 400), material_60);
                 }),
                 key_press(Key::right), look([&] { EXPECT_NE(drawn(555, 400), material_60); })});
}

TEST_F(PaintJobPanelTest, TheCloseRequestEndsPanelAndEditor) {
    const CarDocument before = DOCUMENT;
    play_editor({over(4), key_press(Key::enter), mouse_at(800, row_y(1))}); // the close request comes now
    EXPECT_TRUE(DOCUMENT == before);
    play_editor({over(4), key_press(Key::enter), press(5, 595)}); // and now while a button is down
    EXPECT_TRUE(DOCUMENT == before);
}

TEST_F(PaintJobPanelTest, EscapeLeavesThePanelAloneAndAnotherTheEditor) {
    play({over(4), key_press(Key::enter), key_press(Key::escape), look([] {
              EXPECT_EQ(CURMENU, screen_number::editor_3d);
              EXPECT_TRUE(is_clear());
          }),
          key_press(Key::escape)},
         EDIT3D);
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(PaintJobPanelTest, AChoiceNearTheMenuBarPicksNoScreen) {
    PJCOLS = 32;
    play_editor({over(4), key_press(Key::enter), click(800, row_y(32)), click(20, 590)});
}

TEST_F(PaintJobPanelTest, ItsKeysAreToldInWords) {
    const KeyHelpTable help = paint_job_panel_keys();
    EXPECT_EQ(help.heading, "In the paint-job panel:");
    EXPECT_EQ(help.rows.size(), 2U);
}
