#include "app/program.h"
#include "model/document.h"
#include "model/preview.h"

#include "base/config.h"
#include "base/file_status.h"
#include "editor3d/views.h"
#include "files/file_list.h"
#include "formats/bitmap_file.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/items.h"
#include "model/parameters.h"
#include "support/environment.h"
#include "support/play.h"
#include "support/text_file.h"
#include "widgets/menu_bar.h"
#include "widgets/widgets.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace {

const std::string built_program = KAROSMIT_DATA_DIR "karosmit";

class Program : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};
    EnvironmentVariable home{"HOME"}, appdata{"APPDATA"}, state{"XDG_STATE_HOME"};

    void SetUp() override {
        ScriptedTest::SetUp();
        home.set(directory / "home");
        appdata.unset();
        state.set(directory / "state");
    }

    void start(const std::string& invocation_path = built_program) {
        std::string error;
        ASSERT_TRUE(start_up(invocation_path, error)) << error;
    }
    void run(std::vector<ScriptStep> steps) { play(std::move(steps), run_screens); }

    static void copy_cars() {
        for (const auto& entry : std::filesystem::directory_iterator(KAROSMIT_DATA_DIR "garage"))
            std::filesystem::copy_file(entry.path(), entry.path().filename());
    }
};

std::map<std::string, Bytes> bitmaps_by_id(const std::string& file) {
    std::map<std::string, Bytes> bitmaps;
    for (const BitmapRecord& bitmap : decode_bitmap_file(get_file(file)).bitmaps)
        bitmaps[bitmap.name] = encode_bitmap(bitmap);
    return bitmaps;
}

ScriptStep control_key(Key pressed) { return key_press(pressed, {.control = true}); }

} // namespace

TEST_F(Program, AFreshStartShowsTheFilesScreenWithTheMenuBar) {
    start();
    EXPECT_EQ(window.title(), "Karosmit 1.0.4");
    EXPECT_EQ(CURMENU, screen_number::files);
    EXPECT_EQ(drawn(1, 601), Pixel{0xFF280A14});
    EXPECT_EQ(drawn(959, 647), Pixel{0xFF32141E}) << "the whole screen has the background";
    run({look([] { EXPECT_TRUE(screen_shows(16, 16, "= FILES =", 0xFFFAFAFA)); }), key_press(Key::escape)});
}

TEST_F(Program, TheFirstFrameOfTheStartIsTheWholeFilesScreen) {
    const int frames = window.frames();
    start();
    EXPECT_EQ(window.frames(), frames) << "nothing half done is shown";
    int at_first_wait = 0;
    run({look([&] { at_first_wait = window.frames(); }), key_press(Key::escape)});
    EXPECT_EQ(at_first_wait, frames + 1);
}

TEST_F(Program, AnotherScreenIsOneFrame) {
    start();
    std::vector<ScriptStep> steps{mouse_at(24, 620)};
    int frames = 0;
    for (const int cell : {1, 2, 3, 1, 3, 0, 2, 1, 0, 3, 2, 0}) {
        const int x = cell * 48 + 24;
        steps.push_back(mouse_at(x, 620));
        steps.push_back(look([&] { frames = window.frames(); }));
        steps.push_back(press(x, 620));
        steps.push_back(look([&, cell] {
            EXPECT_EQ(CURMENU, cell);
            EXPECT_EQ(window.frames(), frames + 1) << cell;
            EXPECT_EQ(shown(cell * 48 + 1, 601), Pixel{0xFF280A14}) << "the bar is part of it";
        }));
        steps.push_back(release(x, 620));
    }
    run(steps + std::vector<ScriptStep>{key_press(Key::escape)});
}

TEST_F(Program, TheStartFillsTheTablesAndReadsTheDataFiles) {
    write_text("pjobs.cfg", "1 2 3 4\n5 6 7 8\n");
    start();
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(DASHITEM[1].id, "dash");
    EXPECT_EQ(W3D[1].caption, "Top");
    EXPECT_EQ(W3D[4].zoom, 60.0);
    EXPECT_EQ(BITMAP[0].width, 320);
    EXPECT_EQ(PAL[15], 0xFFFFFFFFu);
    EXPECT_EQ(MATERIAL[200].colour, 0xFF804000u);
    EXPECT_EQ(PJCOLS, 2);
    EXPECT_GT(BITMAPS, 20);
    ASSERT_NE(MENUIMG, nullptr);
    EXPECT_EQ(MENUIMG->width(), 192);
    for (int item = 1; item <= dash_items; ++item)
        EXPECT_NE(DASHITEM[item].bitmap, 0) << DASHITEM[item].label;
}

TEST_F(Program, WithoutAnyDataFileItStartsAllTheSame) {
    start(directory / "nowhere/karosmit");
    EXPECT_EQ(BITMAPS, 0);
    EXPECT_EQ(MENUIMG, nullptr);
    EXPECT_EQ(PAL[15], 0u);
    run({look([] { EXPECT_TRUE(screen_shows(16, 16, "= FILES =", 0xFFFAFAFA)); }), key_press(Key::escape)});
}

TEST_F(Program, WithoutAWindowItDoesNotStartAndSaysWhyInOneLine) {
    window.refuse_to_open = true;
    std::string error;
    EXPECT_FALSE(start_up(built_program, error));
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(error.find('\n'), std::string::npos);
}

TEST_F(Program, WithoutAWindowNothingIsFilledOrRead) {
    window.refuse_to_open = true;
    std::string error;
    EXPECT_FALSE(start_up(built_program, error));
    EXPECT_EQ(CARNAME, "");
    EXPECT_EQ(PROGDIR, "");
}

TEST_F(Program, TablesAndDataNeedNoWindow) {
    use_backend(nullptr);
    fill_tables();
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(DASHITEM[1].id, "dash");
    EXPECT_EQ(BITMAPS, 0);
    read_data_files(built_program);
    EXPECT_GT(BITMAPS, 20);
    EXPECT_EQ(PAL[15], 0xFFFFFFFFu);
    EXPECT_NE(MENUIMG, nullptr);
}

TEST_F(Program, EveryScreenIsReachedByItsMenuCellAndEndsByEscapeAndTheCloseRequest) {
    const char* titles[] = {"= FILES =", "= 3D EDITOR =", "= DASH MANAGER =", "= PHYSICAL PARAMETERS ="};
    for (const ScriptStep& ending : {key_press(Key::escape), close_window()}) {
        for (int screen_of = 0; screen_of < menu_cells; ++screen_of) {
            reset_menu_bar();
            start();
            run({click(screen_of * menu_cell + 10, 620), look([&] {
                     EXPECT_TRUE(screen_shows(16, 16, titles[screen_of], 0xFFFAFAFA)) << titles[screen_of];
                     EXPECT_EQ(CURMENU, screen_of);
                 }),
                 ending});
            EXPECT_EQ(CURMENU, screen_number::quit);
        }
    }
}

TEST_F(Program, ANumberWithoutAScreenPollsTheMenuBarUntilACellIsClicked) {
    for (const int number : {4, 254}) {
        reset_menu_bar();
        start();
        CURMENU = static_cast<std::uint8_t>(number);
        run({mouse_at(300, 300), typed("x"), key_press(Key::escape), look([&] { EXPECT_EQ(CURMENU, number); }),
             click(2 * menu_cell + 1, 620), look([] { EXPECT_EQ(CURMENU, screen_number::dash_manager); }),
             close_window()});
    }
    CURMENU = 77;
    run({close_window()});
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(Program, QuittingFreesExactlyTheBitmapsInUse) {
    start();
    const int in_use = BITMAPS;
    ASSERT_GT(in_use, 0);
    BITMAP[in_use + 1].pixels = Pixels{1, 2, 3};
    for (int i = 1; i <= in_use; ++i)
        ASSERT_TRUE(preview(BITMAP[i], 2) && preview(BITMAP[i], 3)) << i;
    shut_down();
    EXPECT_EQ(MENUIMG, nullptr);
    for (int i = 1; i <= in_use; ++i) {
        EXPECT_EQ(BITMAP[i].pixels->capacity(), 0u) << i;
    }
    EXPECT_EQ(BITMAP[in_use + 1].pixels->size(), 3u);
    EXPECT_EQ(kept_previews(), 0u);
}

// The whole way of a car: listed by its name, clicked, loaded, saved under another identifier.
TEST_F(Program, ASampleCarLoadedAfterTheStartAndSavedUnderAnotherNameIsTheSameByteForByte) {
    copy_cars();
    int row = 0;
    for (const std::string id : {"brux", "vela", "tarn"}) {
        ++row;
        reset_menu_bar();
        reset_bitmaps();
        start();
        run({click(100, 130 + 16 * row + 8), control_key(Key::l), look([&] {
                 EXPECT_TRUE(screen_shows(650, 150, "Loaded " + id, 0xFF00DC64)) << id;
                 EXPECT_EQ(window.title(), "Karosmit 1.0.4 - " + CARNAME);
             }),
             key_press(Key::home), key_press(Key::delete_), typed("x"), control_key(Key::s), key_press(Key::escape)});
        const std::string copy = "x" + id.substr(1);
        for (const auto& [front, back] :
             {std::pair("car", ".res"), {"st", ".3sh"}, {"stda", ".vsh"}, {"stdb", ".vsh"}}) {
            EXPECT_EQ(get_file(front + copy + back), get_file(front + id + back)) << front << id << back;
            std::filesystem::remove(front + copy + back);
        }
    }
}

TEST_F(Program, ACarThatWasNotChangedIsSavedAsItWasEvenAfterOthersWereLoaded) {
    copy_cars();
    start();
    run({typed("vela"), control_key(Key::l), key_press(Key::home), key_press(Key::delete_), key_press(Key::delete_),
         key_press(Key::delete_), key_press(Key::delete_), typed("tarn"), control_key(Key::l), key_press(Key::end),
         key_press(Key::backspace), typed("x"), control_key(Key::s), key_press(Key::escape)});
    EXPECT_EQ(get_file("cartarx.res"), get_file("cartarn.res"));
    EXPECT_EQ(get_file("sttarx.3sh"), get_file("sttarn.3sh"));
    // The bitmaps may stand in another order now; they are the same ones.
    EXPECT_EQ(bitmaps_by_id("stdatarx.vsh"), bitmaps_by_id("stdatarn.vsh"));
    EXPECT_EQ(bitmaps_by_id("stdbtarx.vsh"), bitmaps_by_id("stdbtarn.vsh"));
}
