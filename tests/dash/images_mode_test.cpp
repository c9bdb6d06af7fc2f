// Selecting, placing, removing and exchanging bitmaps.
#include "dash_test.h"

#include "image/picture_file.h"
#include "support/picture_bytes.h"
#include "support/temporary_directory.h"
#include "widgets/strip.h"

namespace {

constexpr std::uint32_t outline = 0xFFFAFA00, bound = 0xFF00FA00, unbound = 0xFFC83200, bar = 0xFF646478;

class ImagesTest : public DashTest {
protected:
    void SetUp() override {
        DashTest::SetUp();
        enter(dash_mode::images);
    }
    static CockpitPoint place(std::string_view id) { return bitmap_position(id); }
    // A pixel of the view at zoom 2, of a canvas point.
    static int x_of(int canvas_x) { return 50 + 2 * canvas_x; }
    static int y_of(int canvas_y) { return 100 + 2 * canvas_y; }
    void press_at(int canvas_x, int canvas_y) { mouse_to(x_of(canvas_x), y_of(canvas_y), 1); }
};

} // namespace

TEST_F(ImagesTest, ListsTheItemsAndTheirBitmaps) {
    add("dash", 10, 8, 3, 4, ink::red);
    add("whl2", 10, 8, 30, 40, ink::red);
    state.item = 4;
    for (const int zoom : {2, 3}) {
        draw_at(zoom);
        EXPECT_TRUE(shows_section(740, 90, 917, 355, "Images"));
        EXPECT_TRUE(shows_section(740, 370, 917, 502, "Image info"));
        EXPECT_TRUE(screen_shows(760, 105, "Dashboard", bound));
        EXPECT_TRUE(screen_shows(760, 121, "Dashboard top", unbound));
        EXPECT_TRUE(screen_shows(760, 153, "Steering wheel", bound));
        EXPECT_TRUE(screen_shows(760, 329, "Speed digit 0", unbound));
        EXPECT_EQ(found(bar), (Rectangle{750, 153, 909, 168}));
        EXPECT_TRUE(shows_row(760, 390, "Coors", 824, "(30, 40)"));
        EXPECT_TRUE(shows_row(760, 406, "Dims", 824, "10x8"));
        EXPECT_TRUE(shows_row(760, 422, "Param", 824, "whl2"));
    }
}

TEST_F(ImagesTest, TellsTheMaskBesideTheName) {
    add("dast", 10, 8, 3, 4, ink::red);
    state.item = 2;
    draw();
    EXPECT_TRUE(shows_row(760, 422, "Param", 824, "dast/dasm"));
}

TEST_F(ImagesTest, WithoutABitmapTellsNothing) {
    draw();
    for (const auto& [y, label] : {std::pair{390, "Coors"}, {406, "Dims"}, {422, "Param"}})
        EXPECT_TRUE(shows_row(760, y, label, 824, ""));
    EXPECT_EQ(found(outline), Rectangle{});
}

TEST_F(ImagesTest, HasABlackGround) {
    draw();
    EXPECT_TRUE(shows_section(47, 90, 692, 502, "Dash view"));
    EXPECT_EQ(found(black), (Rectangle{50, 100, 689, 499}));
    EXPECT_EQ(drawn(49, 300), Pixel{colour::background});
    draw_at(3);
    EXPECT_EQ(found(black), (Rectangle{0, 0, 959, 599}));
    EXPECT_EQ(drawn(16, 20), Pixel{black}); // no title
}

TEST_F(ImagesTest, ShowsTheSelectedBitmapOnTopWithAFrameAndItsName) {
    add("whl2", 100, 60, 50, 30, ink::green);
    add("dash", 60, 40, 50, 30, ink::red);
    draw();
    EXPECT_EQ(drawn(x_of(80), y_of(60)), Pixel{colour_of(ink::red)});
    EXPECT_EQ(found(outline), (Rectangle{150, 160, 150 + 119, 160 + 79}));
    key(key::page_down);
    keys(key::page_down, 2);
    draw();
    EXPECT_EQ(drawn(x_of(80), y_of(60)), Pixel{colour_of(ink::green)});
    EXPECT_EQ(found(outline), (Rectangle{150, 160, 150 + 199, 160 + 119}));
    draw_at(3);
    EXPECT_EQ(found(outline), (Rectangle{150, 90, 150 + 299, 90 + 179}));
}

TEST_F(ImagesTest, TheNameHasAShadow) {
    add("roof", 100, 60, 10, 10, ink::green);
    state.item = 3;
    draw();
    const std::uint8_t* rows = glyph_rows('r');
    int light = 0, dark = 0;
    for (int y = 0; y < glyph_height; ++y)
        for (int x = 0; x < glyph_width; ++x) {
            if (!(rows[y] >> (7 - x) & 1)) continue;
            light += drawn(70 + x, 120 + y) == Pixel{outline};
            dark += drawn(71 + x, 121 + y) == Pixel{black};
        }
    EXPECT_GT(light, 5);
    EXPECT_GT(dark, 2);
}

TEST_F(ImagesTest, DrawsNoInstrumentsAndNoOtherWheel) {
    add("ins2", 10, 10, 0, 0, ink::red);
    add("whl1", 10, 10, 20, 0, ink::green);
    add("gbox", 10, 10, 40, 0, ink::blue);
    draw();
    for (const std::uint8_t ink : {ink::red, ink::green, ink::blue})
        EXPECT_EQ(found(colour_of(ink)), Rectangle{});
}

// --- keys -----------------------------------------------------------------------------------------------------------

TEST_F(ImagesTest, PageKeysGoRoundTheItems) {
    for (int item = 2; item <= 15; ++item) {
        key(key::page_down);
        EXPECT_EQ(state.item, item);
    }
    key(key::page_down);
    EXPECT_EQ(state.item, 1);
    key(key::page_up); // ODDITY page-keys-differ-by-mode
    EXPECT_EQ(state.item, 15);
    key(key::page_up);
    EXPECT_EQ(state.item, 14);
}

TEST_F(ImagesTest, CursorKeysMoveTheBitmapByAPixel) {
    add("dash", 10, 8, 30, 40, ink::red);
    key(key::left);
    EXPECT_EQ(place("dash"), (CockpitPoint{29, 40}));
    key(key::up);
    EXPECT_EQ(place("dash"), (CockpitPoint{29, 39}));
    keys(key::right, 2);
    keys(key::down, 2);
    EXPECT_EQ(place("dash"), (CockpitPoint{31, 41}));
    keys(key::right, 400);
    keys(key::down, 400);
    EXPECT_EQ(place("dash"), (CockpitPoint{310, 192}));
}

TEST_F(ImagesTest, CursorKeysMoveAPanelFromWhereItStandsOnTheCanvas) {
    add("ins2", 100, 50, 80, 120, ink::red);
    add("ins1", 10, 10, 5, 6, ink::green);
    state.item = 8;
    key(key::right);
    EXPECT_EQ(place("ins1"), (CockpitPoint{86, 126}));
    EXPECT_EQ(bitmap("ins1").relative_x, 6);
}

TEST_F(ImagesTest, CursorKeysWithoutABitmapDoNothing) {
    const auto before = DOCUMENT;
    for (const char* arrow : {key::left, key::right, key::up, key::down})
        key(arrow);
    EXPECT_TRUE(DOCUMENT == before);
}

TEST_F(ImagesTest, DeleteRemovesBitmapAndMask) {
    add("dast", 10, 8, 30, 40, ink::red);
    add("dasm", 10, 8, 30, 40, 0);
    add("dash", 10, 8, 30, 40, ink::red);
    state.item = 2;
    key(key::delete_);
    EXPECT_EQ(BITMAPS, 1);
    EXPECT_EQ(DASHITEM[2].bitmap, 0);
    EXPECT_EQ(DASHITEM[1].bitmap, 1);
    key(key::delete_);
    EXPECT_EQ(BITMAPS, 1);
}

TEST_F(ImagesTest, DigitsChooseTheDigitOfTheLastItem) {
    add("dig0", 10, 8, 30, 40, ink::red);
    add("dig7", 10, 8, 30, 40, ink::red);
    EXPECT_EQ(DASHITEM[15].bitmap, 1);
    key("7");
    EXPECT_EQ(DASHITEM[15].label, "Speed digit 7");
    EXPECT_EQ(DASHITEM[15].id, "dig7");
    EXPECT_EQ(DASHITEM[15].bitmap, 2);
    for (const char digit : std::string("0123456789")) {
        key(std::string(1, digit));
        EXPECT_EQ(DASHITEM[15].label, std::string("Speed digit ") + digit);
        EXPECT_EQ(DASHITEM[15].id, std::string("dig") + digit);
    }
    EXPECT_EQ(DASHITEM[15].bitmap, 0);
    EXPECT_EQ(state.item, 1);
}

// --- mouse ----------------------------------------------------------------------------------------------------------

TEST_F(ImagesTest, APressSelectsTheFirstItemOfTheListThere) {
    add("whl2", 40, 40, 10, 10, ink::red);
    add("roof", 40, 40, 30, 30, ink::red);
    const auto item_pressed = [this](int x, int y) {
        press_at(x, y);
        mouse_to(0, 0);
        return state.item;
    };
    EXPECT_EQ(item_pressed(35, 35), 3); // the roof stands before the wheel
    EXPECT_EQ(item_pressed(10, 10), 4);
    EXPECT_EQ(item_pressed(69, 69), 3); // past the wheel, the last pixel of the roof
    EXPECT_EQ(item_pressed(29, 49), 4);
    EXPECT_EQ(item_pressed(9, 9), 4); // on neither
    EXPECT_EQ(item_pressed(70, 70), 4);
}

TEST_F(ImagesTest, APressIsTakenByTheWholeViewAtZoomThree) {
    add("gbox", 10, 10, 310, 190, ink::red);
    key("q");
    mouse_to(930, 570, 1);
    EXPECT_EQ(state.item, 10);
}

TEST_F(ImagesTest, ADragKeepsThePointThatWasGrabbed) {
    add("gbox", 40, 30, 100, 50, ink::red);
    press_at(110, 60);
    EXPECT_EQ(place("gbox"), (CockpitPoint{100, 50}));
    mouse_to(x_of(115), y_of(58), 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{105, 48}));
    mouse_to(x_of(10), y_of(10), 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{0, 0}));
    mouse_to(x_of(11), y_of(11), 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{1, 1}));
    mouse_to(x_of(50), y_of(50), 0);
    mouse_to(x_of(60), y_of(60), 0);
    EXPECT_EQ(place("gbox"), (CockpitPoint{1, 1}));
}

TEST_F(ImagesTest, ADragKeepsItsBitmapWhateverItPasses) {
    add("dash", 10, 10, 200, 100, ink::red);
    add("gbox", 10, 10, 0, 0, ink::green);
    press_at(5, 5);
    mouse_to(x_of(205), y_of(105), 1);
    mouse_to(x_of(100), y_of(50), 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{95, 45}));
    EXPECT_EQ(place("dash"), (CockpitPoint{200, 100}));
    EXPECT_EQ(state.item, 10);
}

TEST_F(ImagesTest, ADragThatBeganOnNoBitmapDragsNothing) {
    add("gbox", 10, 10, 0, 0, ink::green);
    press_at(100, 100);
    mouse_to(x_of(5), y_of(5), 1);
    mouse_to(x_of(50), y_of(50), 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{0, 0}));
    EXPECT_EQ(state.item, 1);
}

TEST_F(ImagesTest, ADragPausesOutsideTheView) {
    add("gbox", 10, 10, 0, 0, ink::green);
    press_at(5, 5);
    mouse_to(x_of(50), y_of(50), 1);
    mouse_to(20, 20, 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{45, 45}));
    mouse_to(x_of(60), y_of(50), 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{55, 45}));
}

TEST_F(ImagesTest, ABitmapThatIsRemovedWhileItIsDraggedTakesNoOtherAlong) {
    add("gbox", 10, 10, 0, 0, ink::green);
    add("whl2", 10, 10, 100, 100, ink::red);
    press_at(5, 5);
    key(key::delete_); // the wheel takes the gear box's place in the table
    mouse_to(x_of(50), y_of(50), 1);
    EXPECT_EQ(place("whl2"), (CockpitPoint{100, 100}));
    add("gbox", 10, 10, 0, 0, ink::green);
    mouse_to(x_of(60), y_of(60), 1);
    EXPECT_EQ(place("gbox"), (CockpitPoint{0, 0}));
}

TEST_F(ImagesTest, TheLastBitmapThatIsRemovedWhileItIsDraggedEndsTheDrag) {
    add("gbox", 10, 10, 0, 0, ink::green);
    press_at(5, 5);
    key(key::delete_);
    mouse_to(x_of(50), y_of(50), 1);
    EXPECT_EQ(BITMAPS, 0);
    EXPECT_FALSE(state.drag);
}

TEST_F(ImagesTest, OtherButtonsDoNothing) {
    add("gbox", 10, 10, 0, 0, ink::green);
    mouse_to(x_of(5), y_of(5), 2);
    mouse_to(x_of(50), y_of(50), 2);
    EXPECT_EQ(state.item, 1);
    press_at(5, 5);
    mouse_to(x_of(5), y_of(5), 3); // the right one besides ends the drag
    mouse_to(x_of(50), y_of(50), 3);
    EXPECT_EQ(place("gbox"), (CockpitPoint{0, 0}));
}

TEST_F(ImagesTest, DragsByRealSteps) {
    add("gbox", 40, 30, 100, 50, ink::red);
    play_screen(drag({{x_of(110), y_of(60)}, {x_of(120), y_of(61)}, {x_of(150), y_of(90)}}));
    EXPECT_EQ(place("gbox"), (CockpitPoint{140, 80}));
}

// --- picture files --------------------------------------------------------------------------------------------------

namespace {

class ExchangeTest : public ImagesTest {
protected:
    const TemporaryDirectory directory;
    const CurrentDirectory here{directory.path()};

    // Into the picker, a name, and load or save.
    static std::vector<ScriptStep> choose(const std::string& name, Key key) {
        return {key_press(Key::enter), typed(name), key_press(key, {.control = true})};
    }
    void play_dialogue(const std::vector<ScriptStep>& steps) { play_screen(std::vector{mouse_at(5, 590)} + steps); }
};

Bytes red_png() { return png::file_of(*create_image(3, 2, 0xFFFF0000)); }

} // namespace

TEST_F(ExchangeTest, EnterImportsTheFileThatIsLoaded) {
    put_file("x.png", red_png());
    std::string message;
    play_dialogue(choose("x.png", Key::l) + std::vector{look([&] {
                      EXPECT_TRUE(screen_shows(16, 16, "= DASH MANAGER =", colour::title));
                      message = said();
                  })});
    EXPECT_EQ(message, "Imported dash from x.png");
    EXPECT_EQ(bitmap("dash").width, 3);
    EXPECT_EQ(*bitmap("dash").pixels, Pixels(6, ink::red));
}

TEST_F(ExchangeTest, EnterExportsToTheFileThatIsSaved) {
    add("dash", 3, 2, 0, 0, ink::red);
    std::string message;
    play_dialogue(choose("y.png", Key::s) + std::vector{look([&] { message = said(); })});
    EXPECT_EQ(message, "Exported dash to y.png");
    EXPECT_EQ(LoadRGBAFile("y.png")->pixel(2, 1), 0xFFFF0000);
}

TEST_F(ExchangeTest, ItIsTheSelectedItemThatIsExchanged) {
    put_file("x.png", red_png());
    std::vector<ScriptStep> steps{key_press(Key::page_down)};
    play_dialogue(steps + choose("x.png", Key::l));
    EXPECT_EQ(RBM("dash"), 0);
    EXPECT_NE(RBM("dast"), 0);
    EXPECT_NE(RBM("dasm"), 0);
}

TEST_F(ExchangeTest, ControlSSavesOnly) {
    add("dash", 3, 2, 0, 0, ink::green);
    put_file("x.png", red_png());
    const auto dialogue = [](const std::string& name, Key key) {
        return std::vector{key_press(Key::s, {.control = true}), typed(name), key_press(key, {.control = true})};
    };
    std::string after_load, after_save;
    play_dialogue(dialogue("x.png", Key::l) + std::vector{look([&] { after_load = said(); })} +
                  dialogue("y.png", Key::s) + std::vector{look([&] { after_save = said(); })});
    EXPECT_EQ(after_load, "Ctrl+S saves a bitmap: nothing was loaded");
    EXPECT_EQ(after_save, "Exported dash to y.png");
    EXPECT_EQ(bitmap("dash").pixels->front(), ink::green);
}

TEST_F(ExchangeTest, FailuresAreTold) {
    put_file("bad.png", bytes_of("nothing"));
    put_file("wide.png", png::file_of(*create_image(321, 1, 0)));
    std::vector<std::string> messages;
    const std::vector keep{look([&] { messages.push_back(said()); })};
    play_dialogue(choose("bad.png", Key::l) + keep + choose("wide.png", Key::l) + keep + choose("no.png", Key::l) +
                  keep + choose("y.png", Key::s) + keep);
    EXPECT_EQ(messages, (std::vector<std::string>{std::string(not_a_picture), "Larger than 320 x 200",
                                                  "File not found: no.png", "No such bitmap"}));
    EXPECT_EQ(directory.names(), (std::vector<std::string>{"bad.png", "wide.png"}));
}

TEST_F(ExchangeTest, EscapeInThePickerEndsTheProgram) {
    play({mouse_at(5, 590), key_press(Key::enter), key_press(Key::escape)}, DASHMANAGER);
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(ExchangeTest, ClosingTheWindowInThePickerEndsTheProgram) {
    play({mouse_at(5, 590), key_press(Key::enter), close_window()}, DASHMANAGER);
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(ExchangeTest, AnotherScreenPickedInThePickerIsTheNextOne) {
    play({mouse_at(5, 590), key_press(Key::enter), click(150, 620)}, DASHMANAGER);
    EXPECT_EQ(CURMENU, screen_number::parameters);
}

TEST_F(ExchangeTest, TheScreensOwnCellKeepsThePicker) {
    put_file("x.png", red_png());
    play_dialogue(
        std::vector{key_press(Key::enter), click(100, 620), typed("x.png"), key_press(Key::l, {.control = true})});
    EXPECT_EQ(bitmap("dash").width, 3);
}

TEST_F(ExchangeTest, InOtherModesThereIsNoPicker) {
    for (const std::uint8_t mode : {dash_mode::driving, dash_mode::gear_box}) {
        OPMODE = mode;
        CURMENU = screen_number::dash_manager;
        play({mouse_at(5, 590), key_press(Key::enter), key_press(Key::s, {.control = true}),
              look([] { EXPECT_TRUE(screen_shows(16, 16, "= DASH MANAGER =", colour::title)); }), close_window()},
             DASHMANAGER);
    }
}

TEST_F(ExchangeTest, ADroppedPictureIsImportedAsTheSelectedItem) {
    std::filesystem::create_directory(directory / "far");
    put_file(directory / "far/x.png", red_png());
    std::string message;
    play_dialogue({key_press(Key::page_down), drop(directory / "far/x.png"), look([&] {
                       EXPECT_TRUE(screen_shows(16, 16, "= DASH MANAGER =", colour::title));
                       message = said();
                   })});
    EXPECT_EQ(message, "Imported dast from x.png");
    EXPECT_EQ(*bitmap("dast").pixels, Pixels(6, ink::red));
    EXPECT_EQ(std::filesystem::current_path().filename(), "far");
}

TEST_F(ExchangeTest, WhatIsNoPictureIsNotForThisScreen) {
    state.input.dropped = "x.res";
    EXPECT_FALSE(dash_screen.on_drop(state));
    state.input.dropped = directory.path();
    EXPECT_FALSE(dash_screen.on_drop(state));
    put_file("x.png", red_png());
    state.input.dropped = "x.png";
    OPMODE = dash_mode::wheel;
    EXPECT_FALSE(dash_screen.on_drop(state));
    OPMODE = dash_mode::images;
    EXPECT_TRUE(dash_screen.on_drop(state));
}

TEST_F(ExchangeTest, DitheringIsChosenForThisRun) {
    PAL.fill(0xFF000000);
    PAL[9] = 0xFFFFFFFF;
    put_file("x.png", png::file_of(*create_image(8, 8, 0xFF707070)));
    const auto whites = [] { return std::ranges::count(*bitmap("dash").pixels, 9); };
    std::vector<std::string> messages;
    const ScriptStep note = look([&] { messages.push_back(said()); });
    const ScriptStep dropped = drop(directory / "x.png");
    std::vector<long> found;
    const ScriptStep count = look([&] { found.push_back(whites()); });
    play_dialogue({dropped, count, typed("t"), note, dropped, count, typed("T"), note, dropped, count, typed("t"), note,
                   dropped, count});
    EXPECT_THAT(messages, testing::ElementsAre("Dithering of imported pictures: ordered",
                                               "Dithering of imported pictures: Floyd-Steinberg",
                                               "Dithering of imported pictures: none"));
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[0], 0);
    EXPECT_GT(found[2], 20);
    EXPECT_EQ(found[3], 0);
}
