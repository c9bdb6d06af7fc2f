// The Dash manager in a real window: its modes, its keys, the mouse, and what the saved files have of them.
#include "program/sample_car_test.h"

#include "dash/dash_screen.h"
#include "formats/bitmap_export.h"
#include "formats/bitmap_file.h"
#include "formats/bitmap_import.h"
#include "formats/parameter_file.h"
#include "model/bitmap_table.h"
#include "model/items.h"
#include "model/placement.h"
#include "support/text_file.h"
#include "window/window.h"

#include <cstdlib>
#include <utility>

namespace {

class DashManager : public SampleCarTest {
protected:
    std::optional<DashScreen> here; // what the screen in the window must be like

    void SetUp() override {
        SampleCarTest::SetUp();
        go_to(2, "= DASH MANAGER =");
        UPDATEDASHITEMS();
        here.emplace();
        OPMODE = dash_mode::driving;
    }

    void keys(const std::string& name, int times) {
        for (int i = 0; i < times; ++i)
            window->key(name);
    }
    void tab_to(std::uint8_t mode) {
        for (; OPMODE != mode; ++OPMODE)
            window->key("Tab");
        EXPECT_TRUE(screen_becomes_ours()) << int{mode};
    }
    // Cockpit, marks and panel.
    bool screen_becomes_ours() {
        here->redraw = true;
        redraw_screen(*here, dash_screen);
        return work_area_becomes_ours();
    }
    // In the view at zoom 2.
    static std::pair<int, int> pixel_of(CockpitPoint place) {
        const Point at = view_at(small_zoom).at(place);
        return {at.x, at.y};
    }
    void click_on(CockpitPoint place) {
        const auto [x, y] = pixel_of(place);
        window->click(x, y);
    }

    // In the file picker, and what the strip says then.
    void choose(const std::string& name, const std::string& key, const std::string& message) {
        ASSERT_TRUE(screen_becomes("= FILES ="));
        type_identifier(name);
        window->key(key, {"Control_L"});
        ASSERT_TRUE(screen_becomes("= DASH MANAGER ="));
        EXPECT_TRUE(window->wait_for_text(208, 616, message, colour::title)) << message;
    }
    void expect_same_car_saved() {
        save_as_xrux();
        SAVERES(folder / "expected.res");
        SAVEVSH(folder / "stdaexpected.vsh");
        SAVEVSH(folder / "stdbexpected.vsh");
        EXPECT_TRUE(content_of("carxrux.res") == content_of("expected.res"));
        EXPECT_TRUE(content_of("stdaxrux.vsh") == content_of("stdaexpected.vsh"));
        EXPECT_TRUE(content_of("stdbxrux.vsh") == content_of("stdbexpected.vsh"));
    }

    // Of tips at one place the first is taken.
    static int first_tip_there(const Gauge& gauge, int tip) {
        int first = 0;
        while (needle_tip(gauge, first) != needle_tip(gauge, tip))
            ++first;
        return first;
    }
    // The keys of a gauge's mode, and the same done here.
    void edit_gauge(const Gauge& gauge, PointEdit& edit) {
        const CockpitPoint instruments = bitmap_position("ins2");
        keys("Prior", 5);
        keys("Next", 2);
        keys("Left", 1);
        keys("Right", 4);
        keys("Up", 2);
        keys("Down", 5);
        set_needle_tip(gauge, 3, needle_tip(gauge, 3) + CockpitPoint{3, 3});
        window->type("+=-");
        set_point_count(gauge, point_count(gauge) + 1);
        edit.selected = 3;
        EXPECT_TRUE(screen_becomes_ours()) << gauge.title;

        window->type(" ");
        here->arcs = true;
        keys("Prior", 2);
        keys("Next", 1);
        keys("Left", 3);
        keys("Right", 1);
        keys("Up", 1);
        keys("Down", 2);
        window->type("++=->.<d");
        edit.arc.radius = edit.arc.radius + 1 + 1 - 1;
        edit.arc.centre = edit.arc.centre + CockpitPoint{-2, 1};
        edit.arc.start = edit.arc.start + 0.05 + 0.05 + 0.05 - 0.05; // it lies behind
        edit.arc.eccentricity = edit.arc.eccentricity * 1.05 * 1.05 / 1.05;
        edit.arc.direction = -1;
        EXPECT_TRUE(screen_becomes_ours()) << gauge.title;
        window->type("Oo");
        keys("Return", 1);
        lay_gauge(gauge, edit.arc, instruments);
        EXPECT_TRUE(screen_becomes_ours()) << gauge.title;
        window->type("o");
        std::swap(edit.arc.start, edit.arc.end);
        click_on(instruments + needle_tip(gauge, 20));
        edit.selected = first_tip_there(gauge, 20);
        EXPECT_TRUE(screen_becomes_ours()) << gauge.title;
        window->move(300, 250);
        window->type("c ");
        set_gauge_centre(gauge, CockpitPoint{150, 125} - instruments); // as if the cockpit filled the work area
        here->arcs = false;
    }
};

} // namespace

TEST_F(DashManager, EveryModeIsShownAtBothZoomsWithAndWithoutTheArc) {
    for (std::uint8_t mode = 0; mode < dash_mode::count; ++mode) {
        tab_to(mode);
        for (const auto& [key, zoom, arcs] :
             {std::tuple{"q", 3, false}, {" ", 3, true}, {"Q", 2, true}, {" ", 2, false}}) {
            window->type(key);
            here->zoom = zoom;
            here->arcs = arcs;
            EXPECT_TRUE(screen_becomes_ours()) << "mode " << int{mode} << " at zoom " << zoom;
        }
    }
    window->key("Tab");
    OPMODE = dash_mode::driving;
    EXPECT_TRUE(screen_becomes_ours());
    window->key("Tab", {"Shift_L"});
    OPMODE = dash_mode::gear_box;
    EXPECT_TRUE(screen_becomes_ours());
    window->key("Tab", {"Control_L"});
    OPMODE = dash_mode::tachometer;
    EXPECT_TRUE(screen_becomes_ours());
}

TEST_F(DashManager, TheWheelTurnsWhileAnArrowIsHeld) {
    for (const auto& [name, steering] : {std::pair{"Left", Steering::left}, {"Right", Steering::right}}) {
        window->key_down(name);
        here->steering = steering;
        EXPECT_TRUE(screen_becomes_ours()) << name;
        window->key_up(name);
        here->steering = Steering::straight;
        EXPECT_TRUE(screen_becomes_ours()) << name;
    }
}

TEST_F(DashManager, BitmapsMovedRemovedAndExchangedAreInTheSavedFiles) {
    tab_to(dash_mode::images);
    keys("Next", 10);
    keys("Prior", 1);
    here->item = 10;
    keys("Left", 3);
    keys("Up", 5);
    keys("Right", 1);
    keys("Down", 2);
    const CockpitPoint box = bitmap_position("gbox");
    MOVEDASHIMAGETO(RBM("gbox"), box.x - 2, box.y - 3);
    EXPECT_TRUE(screen_becomes_ours());

    keys("Next", 5);
    window->type("7");
    here->item = 15;
    DASHITEM[15] = {"Speed digit 7", "dig7", static_cast<std::uint8_t>(RBM("dig7"))};
    keys("Left", 4);
    const CockpitPoint digit = bitmap_position("dig7");
    MOVEDASHIMAGETO(RBM("dig7"), digit.x - 4, digit.y);
    EXPECT_TRUE(screen_becomes_ours());

    // The dashboard's top, where the dashboard itself is not; it is as wide as the canvas.
    const CockpitPoint top = bitmap_position("dast");
    const auto [x, y] = pixel_of(top + CockpitPoint{160, 3});
    window->drag({{x, y}, {x + 9, y - 8}, {x + 20, y - 24}});
    here->item = 2;
    MOVEDASHIMAGETO(RBM("dast"), 0, top.y - 12);
    EXPECT_EQ(bitmap_position("dasm"), (CockpitPoint{0, top.y - 12}));
    EXPECT_TRUE(screen_becomes_ours());

    keys("Next", 1);
    keys("Delete", 1);
    here->item = 3;
    REMOVEBITMAP(RBM("roof"));
    EXPECT_TRUE(screen_becomes_ours());

    keys("Next", 4);
    window->key("Return");
    choose("badge.png", "l", "Imported ins2 from badge.png");
    here->item = 7;
    EXPECT_TRUE(LOADBITMAP("ins2", folder / "badge.png").done);
    EXPECT_TRUE(screen_becomes_ours());

    window->key("s", {"Control_L"});
    choose("out.png", "s", "Exported ins2 to out.png");
    EXPECT_TRUE(SAVEBITMAP("ins2", folder / "expected.png").done);
    EXPECT_TRUE(content_of("out.png") == content_of("expected.png"));

    expect_same_car_saved();
    EXPECT_FALSE(content_of("stdaxrux.vsh") == content_of("stdabrux.vsh"));
    EXPECT_FALSE(content_of("stdbxrux.vsh") == content_of("stdbbrux.vsh"));
}

TEST_F(DashManager, ABitmapGoesThroughAnotherProgramAndComesBack) {
    tab_to(dash_mode::images);
    window->key("Next");
    here->item = 2;
    window->key("Return");
    choose("ours.png", "s", "Exported dast to ours.png");
    const std::string convert = "cd " + folder.string() + " && convert ours.png -strip theirs.png";
    ASSERT_EQ(std::system(convert.c_str()), 0);
    window->key("Return");
    choose("theirs.png", "l", "Imported dast from theirs.png");
    window->key("s", {"Control_L"});
    choose("theirs.JPG", "s", "Exported dast to theirs.JPG");
    EXPECT_EQ(content_of("theirs.JPG").substr(0, 3), "\xFF\xD8\xFF");

    const Pixels top = *BITMAP[RBM("dast")].pixels, mask = *BITMAP[RBM("dasm")].pixels;
    EXPECT_TRUE(LOADBITMAP("dast", folder / "theirs.png").done);
    EXPECT_TRUE(*BITMAP[RBM("dast")].pixels == top);
    EXPECT_TRUE(*BITMAP[RBM("dasm")].pixels == mask);
    EXPECT_TRUE(screen_becomes_ours());
    expect_same_car_saved();
}

TEST_F(DashManager, EscapeEndsAConverterThatTakesTooLong) {
    make_file("converter", "sleep 100\necho late > \"$2\"\n");
    make_file("x.jpg", "earlier");
    tab_to(dash_mode::images);
    window->key("s", {"Control_L"});
    ASSERT_TRUE(screen_becomes("= FILES ="));
    type_identifier("x.jpg");
    window->key("s", {"Control_L"});
    ASSERT_TRUE(window->wait_for_text(208, 616, "Waiting for the image converter. Escape ends it.", colour::title));
    window->key("Escape");
    EXPECT_TRUE(window->wait_for_text(208, 616, "The image converter: cancelled: x.jpg", colour::title));
    EXPECT_TRUE(screen_becomes_ours());
    EXPECT_EQ(content_of("x.jpg"), "earlier");
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);
}

TEST_F(DashManager, MarkersOfTheWheelAreInTheSavedFile) {
    tab_to(dash_mode::wheel);
    keys("Prior", 4);
    keys("Next", 1);
    keys("Left", 2);
    keys("Right", 5);
    keys("Up", 3);
    keys("Down", 1);
    window->type("--=-+");
    here->wheel.selected = 3;
    here->spokes = 29;
    set_wheel_marker(3, wheel_marker(3) + CockpitPoint{3, -2});
    EXPECT_TRUE(screen_becomes_ours());
    const CockpitPoint image = mirrored_marker(20);
    click_on(image);
    here->wheel.selected = 20;
    EXPECT_TRUE(screen_becomes_ours());

    window->type(" ");
    keys("Prior", 3);
    keys("Next", 1);
    keys("Left", 4);
    keys("Right", 1);
    keys("Up", 3);
    keys("Down", 1);
    window->type(">.,<>");
    here->arcs = true;
    Arc& arc = here->wheel.arc;
    arc.radius += 2;
    arc.centre = arc.centre + CockpitPoint{-3, -2};
    arc.eccentricity = arc.eccentricity * 1.05 * 1.05 / 1.05 / 1.05 * 1.05;
    EXPECT_TRUE(screen_becomes_ours());
    keys("Return", 1);
    lay_wheel(arc);
    EXPECT_TRUE(screen_becomes_ours());
    expect_same_car_saved();
    EXPECT_FALSE(content_of("carxrux.res") == content_of("carbrux.res"));
}

TEST_F(DashManager, GaugesAreInTheSavedFile) {
    tab_to(dash_mode::speedometer);
    edit_gauge(speedometer, here->speed);
    tab_to(dash_mode::tachometer);
    edit_gauge(tachometer, here->revolutions);
    EXPECT_TRUE(screen_becomes_ours());
    expect_same_car_saved();
    EXPECT_FALSE(content_of("carxrux.res") == content_of("carbrux.res"));
}

TEST_F(DashManager, GearsAreInTheSavedFile) {
    tab_to(dash_mode::gear_box);
    keys("Prior", 3);
    keys("Next", 1);
    keys("Left", 2);
    keys("Right", 5);
    keys("Up", 4);
    keys("Down", 1);
    here->gear = 3;
    set_knob(3, knob(3) + CockpitPoint{3, -3});
    EXPECT_TRUE(screen_becomes_ours());
    window->type("+");
    set_gear_count(6);
    keys("Prior", 4);
    keys("Right", 2);
    keys("Down", 3);
    here->gear = tabs;
    set_knob(gate, knob(gate) + CockpitPoint{2, 3});
    EXPECT_TRUE(screen_becomes_ours());
    window->type("--");
    set_gear_count(4);
    click_on(bitmap_position("gbox") + knob(2));
    here->gear = 2;
    EXPECT_TRUE(screen_becomes_ours());
    expect_same_car_saved();
    EXPECT_EQ(static_cast<int>(PAR[0]), 4);
    EXPECT_FALSE(content_of("carxrux.res") == content_of("carbrux.res"));
}

TEST_F(DashManager, EscapeEndsTheProgram) {
    tab_to(dash_mode::gear_box);
    window->key("Escape");
    EXPECT_EQ(program->wait_for_end(), 0);
}
