// The page of checks, the way from it to where each finding is mended, and what is dropped on other screens.
#include "app/check_page.h"

#include "app/check_places.h"
#include "app/everywhere.h"
#include "app/program.h"
#include "base/config.h"
#include "dash/dash_screen.h"
#include "editor3d/views.h"
#include "files/transfer.h"
#include "model/car.h"
#include "model/check_car.h"
#include "model/colours.h"
#include "model/items.h"
#include "params/parameter_table.h"
#include "support/faultless_car.h"
#include "support/play.h"
#include "support/temporary_directory.h"
#include "widgets/page.h"
#include "widgets/screen_loop.h"
#include "widgets/strip.h"
#include "widgets/widgets.h"

namespace {

class CheckPage : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        ScriptedTest::SetUp();
        fill_tables();
        PAL.fill(0xFF808080);
        set_loop_hooks({.everywhere = act_everywhere, .dropped = load_dropped});
        DOCUMENT = faultless_car();
        UPDATEDASHITEMS();
    }
    void run(std::vector<ScriptStep> steps, std::uint8_t screen = screen_number::files) {
        CURMENU = screen;
        steps.insert(steps.begin(), mouse_at(5, 590));
        steps.push_back(close_window());
        play(std::move(steps), run_screens);
    }
    // F2, a click on the only finding, and what is to be seen then.
    void follow(const std::function<void()>& expect, std::uint8_t from = screen_number::files) {
        ASSERT_EQ(check_car(DOCUMENT).size(), 1U);
        run({key_press(Key::f2), look([] { EXPECT_TRUE(screen_shows(16, 16, "= CHECKS =", colour::title)); }),
             press(100, line_y(0)), release(100, line_y(0)), look(expect)},
            from);
    }
    static int line_y(std::size_t number) { return page_text.y1 + finding_height * static_cast<int>(number) + 10; }
    static bool shows_title(const char* title) { return screen_shows(16, 16, title, colour::title); }
    static void add_tips(const Gauge& gauge, int tip) {
        set_word(PAR, gauge.offset + 4, 9);
        PAR[static_cast<std::size_t>(gauge.offset + 6 + 2 * tip)] = std::byte{200};
    }
};

} // namespace

TEST_F(CheckPage, SaysWhenNothingIsFound) {
    run({key_press(Key::f2), look([] {
             EXPECT_TRUE(screen_shows(page_text.x1, page_text.y1,
                                      "Nothing found: the files and the game take this car.", colour::success));
         }),
         click(100, line_y(0)), look([] { EXPECT_TRUE(shows_title("= FILES =")); })});
}

TEST_F(CheckPage, TellsWhereWhatAndWhatToDo) {
    set_word(PAR, 18, 0);
    run({key_press(Key::f2), look([] {
             EXPECT_TRUE(screen_shows(page_text.x1, page_text.y1, "Gear 2", colour::error));
             EXPECT_TRUE(screen_shows(page_text.x1 + 160, page_text.y1, "It has no ratio", colour::title));
             EXPECT_TRUE(screen_shows(page_text.x1 + 160, page_text.y1 + 16, "type one", colour::label));
         }),
         mouse_at(300, line_y(0)),
         look([] { EXPECT_EQ(drawn(page_text.x2, line_y(0)), Pixel{colour::hover}) << "it is pointed at"; }),
         mouse_at(300, line_y(1)), look([] { EXPECT_EQ(drawn(page_text.x2, line_y(0)), Pixel{colour::background}); })});
}

TEST_F(CheckPage, CountsTheRestThatHasNoRoom) {
    DOCUMENT = CarDocument();
    const std::size_t found = check_car(DOCUMENT).size();
    ASSERT_GT(found, findings_on_page);
    run({key_press(Key::f2), look([&] {
             const std::string rest = "and " + std::to_string(found - findings_on_page) + " more";
             EXPECT_TRUE(screen_shows(page_text.x1, page_text.y1 + finding_height * 15, rest, colour::label));
         })});
}

TEST_F(CheckPage, EveryFindingFitsALineOfThePage) {
    const auto expect_short = [](const CarDocument& car) {
        for (const Finding& finding : check_car(car)) {
            EXPECT_LE(finding.where.size(), 19U) << finding.where;
            EXPECT_LE(finding.what.size(), 94U) << finding.what;
            EXPECT_LE(finding.remedy.size(), 94U) << finding.remedy;
        }
    };
    expect_short(CarDocument());
    CarDocument wreck = faultless_car();
    wreck.par.fill(std::byte{0xFF});
    for (auto& block : wreck.models) {
        block.edit().nverts = block.edit().nprims = 65535;
        for (SHAPEPRIM& primitive : block.edit().prims) {
            primitive.type = 14;
            primitive.material.fill(999);
        }
    }
    wreck.name = wreck.sign_name = wreck.information = std::string(60000, 'x');
    expect_short(wreck);
}

TEST_F(CheckPage, IsThereOnEveryScreen) {
    for (std::uint8_t screen = 0; screen < 4; ++screen)
        run({key_press(Key::f2), look([] { EXPECT_TRUE(shows_title("= CHECKS =")); }), key_press(Key::escape),
             look([] { EXPECT_FALSE(shows_title("= CHECKS =")); })},
            screen);
}

TEST_F(CheckPage, LeadsToTheSlot) {
    CAR[2] = SHAPEMODEL();
    const auto expect = [] {
        EXPECT_TRUE(shows_title("= 3D EDITOR ="));
        EXPECT_EQ(CURMODEL, 2);
    };
    for (std::uint8_t from = 0; from < 4; ++from)
        follow(expect, from);
}

TEST_F(CheckPage, LeadsToTheItem) {
    bitmap_of(DOCUMENT, "gnob").absolute_x = 300;
    const auto expect = [] {
        EXPECT_EQ(OPMODE, dash_mode::images);
        EXPECT_TRUE(screen_shows(760, 16 * 11 + 89, "Gear knob", 0xFF00FA00));
        EXPECT_EQ(drawn(751, 16 * 11 + 90), Pixel{0xFF646478}) << "the bar of the selected one";
    };
    for (OPMODE = 0; OPMODE < dash_mode::count; ++OPMODE) {
        const std::uint8_t before = OPMODE;
        follow(expect);
        follow(expect, screen_number::dash_manager);
        OPMODE = before;
    }
    OPMODE = 0;
}

TEST_F(CheckPage, LeadsToTheDigit) {
    remove_bitmap_of(DOCUMENT, "dig7");
    follow([] {
        EXPECT_EQ(OPMODE, dash_mode::images);
        EXPECT_TRUE(screen_shows(760, 16 * 15 + 89, "Speed digit 7", 0xFFC83200));
        EXPECT_EQ(drawn(751, 16 * 15 + 90), Pixel{0xFF646478});
    });
    OPMODE = 0;
}

TEST_F(CheckPage, LeadsToTheTip) {
    add_tips(speedometer, 4);
    follow([] {
        EXPECT_EQ(OPMODE, dash_mode::speedometer);
        EXPECT_TRUE(screen_shows(815, 100, "4 / 9", colour::value));
    });
    PAR[static_cast<std::size_t>(speedometer.offset + 6 + 8)] = std::byte{0};
    add_tips(tachometer, 7);
    follow([] {
        EXPECT_EQ(OPMODE, dash_mode::tachometer);
        EXPECT_TRUE(screen_shows(815, 100, "7 / 9", colour::value));
    });
    OPMODE = 0;
}

TEST_F(CheckPage, LeadsToTheGearOrTheGate) {
    set_word(PAR, par_offset::knobs + 8, 200);
    follow([] { EXPECT_TRUE(screen_shows(815, 100, "Gear 2/2", colour::value)); });
    set_word(PAR, par_offset::knobs + 8, 0);
    set_word(PAR, par_offset::knobs, 200);
    follow([] { EXPECT_TRUE(screen_shows(815, 100, "Tabs", colour::value)); });
    EXPECT_EQ(OPMODE, dash_mode::gear_box);
    OPMODE = 0;
}

TEST_F(CheckPage, LeadsToTheRowWhichIsOpen) {
    set_word(PAR, 18, 0);
    follow([] {
        EXPECT_TRUE(shows_title("= PHYSICAL PARAMETERS ="));
        EXPECT_EQ(drawn(PTARGET[14].value_x - 4, PTARGET[14].value_y), Pixel{colour::pressed}) << "the field is open";
    });
    EXPECT_EQ(word_of(PAR, 18), 0);
    set_word(PAR, 18, 2000);
    CARNAME = std::string(25, 'n');
    follow([] { EXPECT_EQ(drawn(PTARGET[34].value_x - 4, PTARGET[34].value_y), Pixel{colour::pressed}); });
    CARNAME = "n";
    CARSIGNNAME = "five!";
    follow([] { EXPECT_EQ(drawn(PTARGET[35].value_x - 4, PTARGET[35].value_y), Pixel{colour::pressed}); },
           screen_number::parameters);
    CARSIGNNAME = "n";
    PAR[0] = std::byte{0};
    follow([] { EXPECT_EQ(drawn(PTARGET[12].value_x - 4, PTARGET[12].value_y), Pixel{colour::pressed}); });
}

TEST_F(CheckPage, LeadsToTheDescriptionAndToTheCurve) {
    CARINFO = std::string(30, 'w') + "]";
    follow([] { EXPECT_EQ(drawn(746, 560), Pixel{colour::pressed}) << "the box is open"; });
    CARINFO = "]";
    set_word(PAR, par_offset::maximum_rpm, 1);
    follow([] { EXPECT_TRUE(shows_title("= PHYSICAL PARAMETERS =")); });
}

TEST_F(CheckPage, LeadsOutOfAnEditWhichChangesNothing) {
    set_word(PAR, par_offset::mass, 20);
    CAR[2] = SHAPEMODEL();
    run({click(30, 110), typed("7"), key_press(Key::f2), press(100, line_y(0)), release(100, line_y(0)),
         look([] { EXPECT_TRUE(shows_title("= 3D EDITOR =")); })},
        screen_number::parameters);
    EXPECT_EQ(word_of(PAR, par_offset::mass), 20);
}

TEST_F(CheckPage, LeadsOutOfThePickerAndOfThePaintJobPanel) {
    CAR[2] = SHAPEMODEL();
    OPMODE = dash_mode::images;
    run({key_press(Key::enter), look([] { EXPECT_TRUE(shows_title("= FILES =")); }), key_press(Key::f2),
         press(100, line_y(0)), release(100, line_y(0)), look([] { EXPECT_TRUE(shows_title("= 3D EDITOR =")); })},
        screen_number::dash_manager);
    OPMODE = 0;
    run({mouse_at(500, 540), key_press(Key::enter), key_press(Key::f2), press(100, line_y(0)), release(100, line_y(0)),
         look([] { EXPECT_EQ(CURMODEL, 2); })},
        screen_number::editor_3d);
}

TEST_F(CheckPage, AClickBesideTheFindingsLeadsNowhere) {
    CAR[2] = SHAPEMODEL();
    for (const int y : {line_y(1), 30, 620})
        run({key_press(Key::f2), press(100, y), release(100, y), look([] {
                 EXPECT_TRUE(shows_title("= FILES ="));
                 EXPECT_EQ(CURMENU, screen_number::files);
             })});
    run({key_press(Key::f2), press(100, line_y(0), 2), release(100, line_y(0), 2),
         look([] { EXPECT_TRUE(shows_title("= FILES =")) << "the right button"; })});
}

TEST_F(CheckPage, WhatIsDroppedOnAnotherScreenIsLoadedOnTheFilesScreen) {
    CARNAME = "Dropped";
    transfer(Transfer::save, "abcd");
    for (std::uint8_t screen = 0; screen < 4; ++screen) {
        CARNAME = "Other";
        run({drop(directory / "carabcd.res"), look([] {
                 EXPECT_TRUE(shows_title("= FILES ="));
                 EXPECT_TRUE(screen_shows(650, 150, "Loaded abcd", colour::success));
             })},
            screen);
        EXPECT_EQ(CARNAME, "Dropped") << int{screen};
    }
}

TEST_F(CheckPage, ADropCancelsAnEditThePickerAndAPage) {
    CARNAME = "Dropped";
    transfer(Transfer::save, "abcd");
    CARNAME = "Other";
    set_word(PAR, par_offset::mass, 20);
    CARINFO = "info]";
    const auto loaded = look([] { EXPECT_TRUE(screen_shows(650, 150, "Loaded stabcd.3sh", colour::success)); });
    const ScriptStep shape = drop(directory / "stabcd.3sh");
    run({click(30, 110), typed("7"), shape, loaded}, screen_number::parameters);
    EXPECT_EQ(word_of(PAR, par_offset::mass), 20);
    run({click(800, 400), typed("7"), shape, loaded}, screen_number::parameters);
    EXPECT_EQ(CARINFO, "info]");
    run({key_press(Key::f1), shape, loaded}, screen_number::parameters);
    run({mouse_at(500, 540), key_press(Key::enter), shape, loaded}, screen_number::editor_3d);
    OPMODE = dash_mode::images;
    run({key_press(Key::enter), key_press(Key::f2), drop(directory.path()),
         look([] { EXPECT_TRUE(shows_title("= FILES =")); }), typed("x")},
        screen_number::dash_manager);
    OPMODE = 0;
}

TEST_F(CheckPage, TheProgramStartsWithAFileAsIfItWereDropped) {
    CARNAME = "Dropped";
    transfer(Transfer::save, "abcd");
    CARNAME = "Other";
    start_with("carabcd.res");
    run({look([] { EXPECT_TRUE(screen_shows(650, 150, "Loaded abcd", colour::success)); })});
    EXPECT_EQ(CARNAME, "Dropped");
    start_with("");
    run({look([] { EXPECT_FALSE(screen_shows(650, 150, "Loaded abcd", colour::success)); })});
}
