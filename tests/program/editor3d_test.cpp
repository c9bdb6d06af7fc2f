// The 3D editor in a real window: its keys, and what the saved files and the screen have of them.
#include "program/sample_car_test.h"

#include "base/config.h"
#include "base/file_status.h"
#include "base/reset.h"
#include "editor3d/views.h"
#include "formats/material_file.h"
#include "formats/obj_file.h"
#include "formats/parameter_file.h"
#include "formats/shape_file.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/generators.h"
#include "model/paint_jobs.h"
#include "model/parameters.h"
#include "support/arrow_table.h"
#include "support/text_file.h"
#include "window/window.h"

#include <cmath>

namespace {

constexpr std::array<std::pair<int, int>, 5> in_view{{{5, 595}, {40, 70}, {400, 70}, {40, 340}, {400, 540}}};
constexpr std::array<const char*, 4> arrow_names{"Right", "Left", "Up", "Down"};

class Editor3d : public SampleCarTest {
protected:
    void SetUp() override {
        SampleCarTest::SetUp();
        INIT3DWINDOWS();
        go_to(1, "= 3D EDITOR =");
    }

    void point_at(int view) {
        const auto [x, y] = in_view[static_cast<std::size_t>(view)];
        window->move(x, y);
    }
    // Also gives Control time to come up before it goes down again: within two milliseconds SDL takes that for a
    // repetition.
    void choose_slot(const std::string& digit, const std::string& name) {
        window->type(digit);
        ASSERT_TRUE(panel_becomes(64, name));
    }
    bool panel_becomes(int y, const std::string& value) const {
        return window->wait_for_text(860, y, value, colour::value);
    }

    // The files that the window saves are those of the car here.
    void expect_same_car_saved() {
        save_as_xrux();
        SAVE3SH(folder / "expected.3sh");
        SAVERES(folder / "expected.res");
        EXPECT_TRUE(content_of("stxrux.3sh") == content_of("expected.3sh"));
        EXPECT_TRUE(content_of("carxrux.res") == content_of("expected.res"));
        EXPECT_FALSE(content_of("stxrux.3sh") == content_of("stbrux.3sh"));
    }

    // A view as it is drawn here.
    bool view_becomes(int number = view_3d) const {
        UPDATE3DWINDOW(static_cast<std::uint8_t>(number));
        const WINDOW3D& view = W3D[number];
        const Rectangle inside{view.left + 2, view.top + 8, view.right - 2, view.bottom - 2};
        return wait_until([&] { return window->shows_picture(screen().image(), inside); });
    }
};

// What an arrow does here.
void do_arrow(const ArrowEffect& effect, int mode, double snap) {
    const auto apply = [snap](auto change, const std::array<double, 3>& by) {
        change(by[0] * snap, by[1] * snap, by[2] * snap);
    };
    if (mode == 0) apply(MOVECAR, effect.car);
    if (mode == 1) apply(MOVEWHEELS, effect.wheels);
    if (mode == 2) apply(RESIZEWHEELS, effect.size);
    if (mode != 3) return;
    const int word = par_word(static_cast<int>(effect.word));
    if (word != arrow_bound(effect.word, effect.step))
        set_par_word(static_cast<int>(effect.word), static_cast<std::uint16_t>(word + effect.step));
}

} // namespace

// Each arrow as often as none of the others, so that a missing press or a wrong one shows.
TEST_F(Editor3d, ArrowsInEveryViewAndModeAreInTheSavedFiles) {
    window->type("*");
    ASSERT_TRUE(panel_becomes(160, "0.2m"));
    constexpr std::array<int, 4> presses{5, 1, 4, 2}; // right, left, up, down
    for (int view = 1; view <= 3; ++view) {
        point_at(view);
        for (int mode = 0; mode < 4; ++mode) {
            for (const ArrowEffect& effect : arrow_table) {
                if (effect.view != view) continue;
                const auto arrow = static_cast<std::size_t>(effect.key);
                for (int i = 0; i < presses[arrow]; ++i) {
                    window->key(arrow_names[arrow]);
                    do_arrow(effect, mode, 0.2);
                }
            }
            window->key("Tab");
        }
    }
    ASSERT_TRUE(panel_becomes(144, "Car"));
    expect_same_car_saved();
}

TEST_F(Editor3d, ArrowsOverTheShadedViewAndOverNoneTurnIt) {
    EXPECT_TRUE(view_becomes());
    point_at(4);
    for (int i = 0; i < 3; ++i)
        window->key("Right");
    window->key("Up");
    CURYAW = 0.196349375 + 0.196349375 + 0.196349375;
    CURPITCH = 0.0981746875;
    EXPECT_TRUE(view_becomes());
    point_at(0);
    window->key("Left");
    for (int i = 0; i < 3; ++i)
        window->key("Down");
    CURYAW -= 0.196349375;
    CURPITCH = CURPITCH - 0.0981746875 - 0.0981746875 - 0.0981746875;
    EXPECT_TRUE(view_becomes());
}

TEST_F(Editor3d, TheWheelZoomsTheViewUnderThePointer) {
    for (int view = 1; view <= views; ++view) {
        const auto [x, y] = in_view[static_cast<std::size_t>(view)];
        window->move(x, y);
        window->wheel(x, y, view);
        W3D[view].zoom *= std::pow(1.1, view);
        EXPECT_TRUE(view_becomes(view)) << view;
    }
}

TEST_F(Editor3d, EnterOpensThePanelOverTheShadedViewOnly) {
    for (const int view : {0, 1, 2, 3}) {
        point_at(view);
        window->key("Return");
    }
    window->type("*"); // an open panel would take it
    EXPECT_TRUE(panel_becomes(160, "0.2m"));
}

TEST_F(Editor3d, ABodyGoesOutAsObjAndComesBackIntoTheSlotThatIsShown) {
    choose_slot("2", "Game");
    go_to(0, "= FILES =");
    type_identifier("body.obj");
    window->key("s", {"Control_L"});
    ASSERT_TRUE(window->wait_for_text(650, 150, "Saved body.obj", colour::success));
    SAVEOBJ(folder / "expected.obj", 1);
    EXPECT_EQ(content_of("body.obj"), content_of("expected.obj"));

    go_to(1, "= 3D EDITOR =");
    choose_slot("3", "Intro");
    go_to(0, "= FILES =");
    type_identifier("body.obj");
    window->key("l", {"Control_L"});
    ASSERT_TRUE(window->wait_for_text(650, 150, "Loaded body.obj", colour::success));
    LOADOBJ(folder / "expected.obj", 2);
    go_to(1, "= 3D EDITOR =");
    expect_same_car_saved();
}

TEST_F(Editor3d, SlotsPaintJobsModesAndSnapsAreInThePanel) {
    for (const auto& [keys, slot] : {std::pair{"2", "Game"},
                                     {"3", "Intro"},
                                     {"4", "Aux 1"},
                                     {"5", "Aux 2"},
                                     {"1", "Showroom"},
                                     {"m", "Game"},
                                     {"M", "Intro"}}) {
        window->type(keys);
        EXPECT_TRUE(panel_becomes(64, slot)) << keys;
    }
    for (const auto& [keys, job] :
         {std::pair{"p", "2/7"}, {"P", "3/7"}, {".", "4/7"}, {",", "3/7"}, {",,,", "7/7"}, {"p", "1/7"}}) {
        window->type(keys);
        EXPECT_TRUE(panel_becomes(80, job)) << keys;
    }
    for (const char* mode : {"Wheels", "Resize W.", "Collision"}) {
        window->key("Tab");
        EXPECT_TRUE(panel_becomes(144, mode));
    }
    window->key("Tab", {"Control_L"});
    EXPECT_TRUE(panel_becomes(144, "Resize W."));
    for (const auto& [keys, snap] :
         {std::pair{"*", "0.2m"}, {"****", "1.6m"}, {"/", "0.8m"}, {"//////////", "0.00625m"}}) {
        window->type(keys);
        EXPECT_TRUE(panel_becomes(160, snap)) << keys;
    }
}

TEST_F(Editor3d, CopiesShadesAndPaintJobsAreInTheSavedFile) {
    choose_slot("2", "Game");
    window->key("c", {"Control_L"});
    choose_slot("3", "Intro");
    window->key("v", {"Control_L"});
    CAR[2] = CAR[1];

    choose_slot("1", "Showroom");
    window->type("pp");
    ASSERT_TRUE(panel_becomes(80, "3/7"));
    window->key("a", {"Control_L"});
    CURMODEL = 0;
    CURPJ = 2;
    AUTOSHADE();
    EXPECT_TRUE(view_becomes());

    point_at(4);
    window->key("Return");
    ASSERT_TRUE(window->wait_for_text(764, 42, "Paint jobs", colour::section_title));
    window->click(800, 70 + 16 * 4 + 8);
    recolour(CAR[0].edit(), 2, PJCOL[5]);
    window->key("p", {"Control_L"});
    EXPECT_TRUE(panel_becomes(80, "8/8"));
    add_paint_job();
    EXPECT_TRUE(view_becomes());
    window->type(",,");
    window->key("o", {"Control_L"});
    EXPECT_TRUE(panel_becomes(80, "6/7"));
    CURPJ = 5;
    remove_current_paint_job();
    expect_same_car_saved();
}

TEST_F(Editor3d, WheelsAndDimensionsThatWereGeneratedAreInTheSavedFiles) {
    choose_slot("2", "Game");
    window->key("w", {"Control_L"});
    choose_slot("1", "Showroom");
    window->key("b", {"Control_L"});
    CURMODEL = 1;
    GENERATEWHEELS(1);
    GENERATEINFO(true, true);
    expect_same_car_saved();
}

TEST_F(Editor3d, DebrisIsInTheSavedFile) {
    window->key("d", {"Control_L"});
    save_as_xrux();
    LOAD3SH(folder / "stxrux.3sh", all_shapes);
    for (const auto& piece : CEXP) {
        EXPECT_EQ(piece->nprims, 1);
        EXPECT_EQ(piece->nverts, piece->prims[0].type);
        EXPECT_GE(piece->nverts, 2);
        EXPECT_LE(piece->nverts, 5);
    }
}

TEST_F(Editor3d, TheMaterialsOfTheWheelsAreWritten) {
    window->type("`");
    ASSERT_TRUE(wait_until([&] { return std::filesystem::exists(folder / "coso.txt"); }));
    const std::string text = content_of("coso.txt");
    EXPECT_EQ(std::ranges::count(text, '\n'), 4);
    EXPECT_EQ(std::ranges::count(text, ' '), 64);
}

TEST_F(Editor3d, EscapeLeavesThePanelFirstAndThenTheProgram) {
    point_at(4);
    window->key("Return");
    ASSERT_TRUE(window->wait_for_text(764, 42, "Paint jobs", colour::section_title));
    window->key("Escape");
    ASSERT_TRUE(window->wait_for_pixel(949, 565, colour::background));
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);
}

TEST_F(Editor3d, TheCloseButtonEndsThePanelAndTheProgram) {
    point_at(4);
    window->key("Return");
    ASSERT_TRUE(window->wait_for_text(764, 42, "Paint jobs", colour::section_title));
    window->ask_to_close();
    EXPECT_EQ(program->wait_for_end(), 0);
}
