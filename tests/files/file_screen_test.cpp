#include "files/file_screen_test.h"

TEST_F(FileScreenTest, ShowsItsTitleSectionsFieldsAndButtons) {
    visit({mouse_at(700, 400), look([&] {
               EXPECT_TRUE(screen_shows(16, 16, "= FILES =", 0xFFFAFAFA));
               EXPECT_TRUE(screen_shows(40, 42, "Input", 0xFFDC7896));
               EXPECT_TRUE(screen_shows(40, 111, "Files", 0xFFDC7896));
               EXPECT_TRUE(screen_shows(644, 42, "Options", 0xFFDC7896));
               EXPECT_EQ(drawn(599, 589), Pixel{0xFF64283C});
               EXPECT_EQ(drawn(939, 199), Pixel{0xFF64283C});
               EXPECT_TRUE(screen_shows(30, 60, "Dir:", file_grey));
               EXPECT_TRUE(screen_shows(30, 76, "File:", file_grey));
               EXPECT_TRUE(screen_shows(90, 60, directory.path(), text_green));
               EXPECT_EQ(drawn(90, 76), Pixel{0xFF00FA00}) << "the caret stands in the File field";
               EXPECT_EQ(drawn(90, 90), Pixel{0xFF00FA00});
               EXPECT_EQ(drawn(90, 91), Pixel{0xFF32141E});
               EXPECT_TRUE(screen_shows(666, 78, " Load File ", file_grey));
               EXPECT_TRUE(screen_shows(650 + 120 + 16 + 16, 78, " Save File ", file_grey));
               EXPECT_TRUE(screen_shows(666, 118, " Toggle Cars/Files ", file_grey));
           }),
           shows_row(0, "[..]", directory_green)});
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_EQ(BUTTONS, 0);
    EXPECT_EQ(drawn(16, 50), Pixel{0xFF32141E}) << "the work area is cleared on leaving";
}

TEST_F(FileScreenTest, TypingAnIdentifierAndControlLLoadsTheFourLowerCaseFiles) {
    visit({typed("abcd"), ctrl_key(Key::s), shows_status("Saved abcd", success_green)});
    CARNAME = "";
    visit({typed("ABCD"), ctrl_key(Key::l), shows_status("Loaded ABCD", success_green)});
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(window.title(), "Karosmit 1.0.4 - New car");
}

TEST_F(FileScreenTest, ChoosingACarPutsItsIdentifierIntoTheFileField) {
    put_car("carvela.res", "Vela");
    visit({mouse_at(100, 155), shows_row(1, "Vela (VELA)", file_white), row_click(1), shows_file("vela"),
           look([] { EXPECT_EQ(drawn(90 + 8 * 4, 76), Pixel{0xFF00FA00}) << "the caret is behind it"; })});
}

TEST_F(FileScreenTest, ChoosingADirectoryEntersIt) {
    std::filesystem::create_directory("sub");
    visit({row_click(1), look([&] {
               EXPECT_EQ(current_directory(), directory / "sub");
               EXPECT_TRUE(screen_shows(90, 60, directory / "sub", text_green));
           }),
           row_click(0), look([&] { EXPECT_EQ(current_directory(), directory.path()); })});
}

TEST_F(FileScreenTest, BothClicksOfAFastDoubleClickCount) {
    std::filesystem::create_directories("one/two");
    std::filesystem::current_path("one/two");
    visit({at_once({row_click(0), row_click(0)}), look([&] { EXPECT_EQ(current_directory(), directory.path()); })});
}

TEST_F(FileScreenTest, ALinkThatIsOnlyAPathLeadsThere) {
    std::filesystem::create_directory("far");
    CONFIGS = 2;
    CONFIG_ID[1] = CONFIG_ID[2] = "dirlink";
    CONFIG_VALUE[1] = directory / "far";
    CONFIG_VALUE[2] = ""; // switched off
    visit({shows_row(0, "[ - " + directory / "far" + " - ]", directory_green), shows_row(1, "[..]", directory_green),
           row_click(0), look([&] { EXPECT_EQ(current_directory(), directory / "far"); })});
}

TEST_F(FileScreenTest, ChoosingALinkLeadsToItsDirectory) {
    std::filesystem::create_directory("far");
    CONFIGS = 1;
    CONFIG_ID[1] = "dirlink";
    CONFIG_VALUE[1] = "Cars:" + (directory / "far");
    visit({shows_row(0, "[ - Cars - ]", directory_green), row_click(0),
           look([&] { EXPECT_EQ(current_directory(), directory / "far"); })});
}

TEST_F(FileScreenTest, AReservedKindOfLinkIsEnteredByItsNameAndADot) {
    std::filesystem::create_directory("drive");
    visit({look([] {
               LFILES = 1;
               LFILE[1] = {.name = "drive/", .shown = "Drive", .kind = entry_kind::completed_link};
           }),
           mouse_at(100, 138), shows_row(0, "[ - Drive - ]", directory_pale), row_click(0),
           look([&] { EXPECT_EQ(current_directory(), directory / "drive"); })});
}

TEST_F(FileScreenTest, ADirectoryThatCannotBeEnteredResetsTheField) {
    visit({key_press(Key::tab), typed("/nowhere"), key_press(Key::enter), look([&] {
               EXPECT_EQ(current_directory(), directory.path());
               EXPECT_TRUE(screen_shows(90, 60, directory.path() + "  ", text_green));
           })});
}

TEST_F(FileScreenTest, EnterInTheDirFieldChangesTheDirectoryAndInTheFileFieldDoesNothing) {
    std::filesystem::create_directory("sub");
    visit({typed("sub"), key_press(Key::enter), look([&] { EXPECT_EQ(current_directory(), directory.path()); }),
           key_press(Key::up), typed("/sub"), key_press(Key::enter),
           look([&] { EXPECT_EQ(current_directory(), directory / "sub"); })});
}

TEST_F(FileScreenTest, KeysEditTheFieldWithTheCaret) {
    visit({typed("acd"), key_press(Key::home), key_press(Key::right), typed("b"), shows_file("abcd"),
           key_press(Key::end), key_press(Key::backspace), shows_file("abc"), key_press(Key::left),
           key_press(Key::delete_), shows_file("ab"), key_press(Key::right), typed("~ "), shows_file("ab~ ")});
}

TEST_F(FileScreenTest, TabUpAndDownSwitchTheFieldAndPutTheCaretBehindItsText) {
    for (const Key switching : {Key::tab, Key::up, Key::down}) {
        visit({key_press(switching), look([&] {
                   EXPECT_EQ(drawn(90 + 8 * static_cast<int>(directory.path().size()), 60), Pixel{0xFF00FA00});
                   EXPECT_EQ(drawn(90, 90), Pixel{0xFF32141E});
               })});
    }
}

TEST_F(FileScreenTest, TheFieldHolds62Characters) {
    visit({typed(std::string(61, 'x') + "yz"),
           look([] { EXPECT_TRUE(screen_shows(90, 76, std::string(61, 'x') + "y ", text_green)); })});
}

TEST_F(FileScreenTest, ALongDirectoryIsShownFromWhereItsCaretIsSeen) {
    const std::string deep(80, 'd');
    std::filesystem::create_directory(deep);
    visit({row_click(1), look([&] {
               const std::string path = directory / deep;
               EXPECT_TRUE(screen_shows(90, 60, path.substr(0, 63), text_green));
               for (int y = 60; y < 92; ++y)
                   EXPECT_NE(drawn(600, y), Pixel{text_green});
           }),
           key_press(Key::tab), look([&] {
               const std::string path = directory / deep;
               EXPECT_TRUE(screen_shows(90, 60, path.substr(path.size() - 62), text_green));
               EXPECT_EQ(drawn(90 + 8 * 62, 60), Pixel{0xFF00FA00});
           })});
}

TEST_F(FileScreenTest, TheMouseHighlightsRowsAndLosesThemOutsideTheList) {
    write_text("one.res", "");
    visit({ctrl_key(Key::c), mouse_at(40, 130 + 16), shows_row(1, "one.res", file_white), mouse_at(39, 130 + 16),
           shows_row(1, "one.res", file_grey), mouse_at(549, 130), shows_row(0, "[..]", directory_pale),
           mouse_at(550, 130), shows_row(0, "[..]", directory_green)});
}

TEST_F(FileScreenTest, TheTwoPixelRowsUnderTheLastRowAreNoRow) {
    put_numbered_files(40);
    visit({typed("keep"), ctrl_key(Key::c), mouse_at(100, 577), shows_row(27, "f127.res", file_white),
           mouse_at(100, 578), shows_row(27, "f127.res", file_grey), click(100, 579), shows_file("keep")});
}

TEST_F(FileScreenTest, AListOf28EntriesCannotScroll) {
    put_numbered_files(27);
    visit({ctrl_key(Key::c), wheel(100, 300, -3), shows_row(0, "[..]", directory_green),
           shows_row(27, "f127.res", file_grey)});
}

// ODDITY files-wheel-stops-short
TEST_F(FileScreenTest, With40EntriesTheWheelStopsAtTheTwelfthAndNeverShowsTheLast) {
    put_numbered_files(39); // and ".."
    visit({ctrl_key(Key::c), wheel(100, 300, -50), shows_row(0, "f111.res", file_grey),
           shows_row(27, "f138.res", file_grey), wheel(100, 300, 1), shows_row(0, "f110.res", file_grey),
           wheel(100, 300, 99), shows_row(0, "[..]", directory_green)});
}

TEST_F(FileScreenTest, ClickingARowBelowTheLastEntryChoosesNothing) {
    visit({typed("keep"), row_click(5), shows_file("keep"),
           look([&] { EXPECT_EQ(current_directory(), directory.path()); })});
}

TEST_F(FileScreenTest, OnlyTheLeftButtonAloneChooses) {
    std::filesystem::create_directory("sub");
    visit({click(100, 130 + 16 + 8, 2), look([&] { EXPECT_EQ(current_directory(), directory.path()); })});
}

TEST_F(FileScreenTest, ALongNameIsShownAsFarAsWholeCharactersHaveRoom) {
    const std::string name(100, 'w');
    write_text(name + ".res", "");
    visit({ctrl_key(Key::c), look([] {
               EXPECT_TRUE(screen_shows(50, 146, std::string(68, 'w') + " ", file_grey));
               for (int y = 130; y < 180; ++y)
                   for (int x = 598; x < 960; ++x)
                       ASSERT_NE(drawn(x, y), Pixel{0xFFB4B4B4}) << x << "," << y;
           })},
          9);
}

TEST_F(FileScreenTest, TheListTogglesBetweenCarsAndFiles) {
    put_car("carvela.res", "Vela");
    write_text("a.vsh", "");
    write_text("a.p3s", "");
    visit({shows_row(1, "Vela (VELA)", file_grey), ctrl_key(Key::c), shows_row(1, "a.vsh", file_grey),
           shows_row(2, "carvela.res", file_grey), click(700, 120), shows_row(1, "Vela (VELA)", file_grey)});
}

TEST_F(FileScreenTest, WithAnUnpackerTheListOffersPackedFiles) {
    CONFIGS = 1;
    CONFIG_ID[1] = "vorpack";
    CONFIG_VALUE[1] = "unpack";
    write_text("a.p3s", "");
    visit({ctrl_key(Key::c), shows_row(1, "a.p3s", file_grey)});
}

TEST_F(FileScreenTest, ASavedCarIsInTheListAtOnce) {
    visit({look([] { CARNAME = "Novel"; }), typed("abcd"), ctrl_key(Key::s), shows_row(1, "Novel (ABCD)", file_grey)});
}

TEST_F(FileScreenTest, AfterLoadingOrSavingTheDirFieldSaysWhereThatWas) {
    visit({typed("abcd"), key_press(Key::tab), typed("/elsewhere"), ctrl_key(Key::s),
           look([&] { EXPECT_TRUE(screen_shows(90, 60, directory.path() + "  ", text_green)); }), typed("x"),
           ctrl_key(Key::l), look([&] { EXPECT_TRUE(screen_shows(90, 60, directory.path() + "  ", text_green)); })});
    EXPECT_TRUE(file_exists("carabcd.res"));
}

TEST_F(FileScreenTest, TheButtonsLoadAndSaveOncePerClick) {
    visit({typed("abcd"), press(850, 80), shows_status("Saved abcd", success_green), look([] { FILE_FILE = "once"; }),
           mouse_at(851, 80), release(851, 80), look([] { EXPECT_EQ(FILE_FILE, "once"); }), click(700, 80),
           shows_status("Loaded abcd", success_green)});
}

TEST_F(FileScreenTest, ErrorsAreShownInTheErrorColour) {
    visit({typed("none.res"), ctrl_key(Key::l), shows_status("File not found: none.res", error_red)});
}

TEST_F(FileScreenTest, SavingAPackedKindIsAnUnknownFormat) {
    visit({typed("x.p3s"), ctrl_key(Key::s), shows_status("Unknown format: ", error_red)});
    EXPECT_EQ(result, "");
}

TEST_F(FileScreenTest, APackedFileWithoutAnUnpackerDoesNothingAndShowsNothing) {
    write_text("car.p3s", "");
    visit({typed("x.pvs"), ctrl_key(Key::s), shows_status("Unknown format: ", error_red), key_press(Key::home),
           key_press(Key::delete_), key_press(Key::delete_), key_press(Key::delete_), key_press(Key::delete_),
           key_press(Key::delete_), typed("car.p3s"), ctrl_key(Key::l), shows_nothing_in_status()});
}

TEST_F(FileScreenTest, ALaterStatusLeavesNothingOfAnEarlierOne) {
    visit({typed("none-of-a-long-name-that-wraps-into-the-next.res"), ctrl_key(Key::l),
           shows_status("File not found: none-of-a-long-name-", error_red),
           look([] { EXPECT_TRUE(screen_shows(650, 166, "that-wraps-into-the-next.res", error_red)); }),
           key_press(Key::home), typed("x"), key_press(Key::end), typed("x"), ctrl_key(Key::l),
           shows_status("Unknown format: ", error_red), look([] {
               for (int x = 650; x < 938; ++x)
                   for (int y = 166; y < 198; ++y)
                       ASSERT_EQ(drawn(x, y), Pixel{0xFF32141E});
           })});
}

TEST_F(FileScreenTest, AnIncompleteCarIsNamedInASecondLine) {
    visit({typed("abcd"), ctrl_key(Key::s), look([] { std::filesystem::remove("stabcd.3sh"); }), ctrl_key(Key::l),
           shows_status("Loaded abcd", success_green),
           look([] { EXPECT_TRUE(screen_shows(650, 166, "File not found: stabcd.3sh", error_red)); }), ctrl_key(Key::s),
           ctrl_key(Key::l), look([] { EXPECT_EQ(drawn(650, 180), Pixel{0xFF32141E}); }),
           look([] { EXPECT_FALSE(screen_shows(650, 166, "File not found: stabcd.3sh", error_red)); })});
}

TEST_F(FileScreenTest, EscapeEndsTheProgram) {
    play({key_press(Key::escape)}, [&] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(FileScreenTest, TheMenuBarLeavesForAnotherScreen) {
    play({click(3 * 48 + 5, 620)}, [&] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::parameters);
}

TEST_F(FileScreenTest, TheCloseRequestEndsTheWaitForAButtonsRelease) {
    std::filesystem::create_directory("sub");
    play({press(100, 130 + 16 + 8), close_window()}, [&] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(FileScreenTest, TheCloseRequestEndsTheWaitForTheToggleButtonsRelease) {
    play({press(700, 120), close_window()}, [&] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::quit);
}

TEST_F(FileScreenTest, AnActionIsDoneOnceWhenTheWindowClosesWhileItsButtonIsDown) {
    play({typed("abcd"), at_once({press(850, 80), typed("xy"), close_window()})},
         [&] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::quit);
    EXPECT_EQ(FILE_FILE, "stdbabcd.vsh");
}

TEST_F(FileScreenTest, WhatIsDoneLastDecidesWhereItLeads) {
    play({at_once({key_press(Key::escape), press(3 * 48 + 5, 620)})}, [&] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::quit) << "Escape came before the click";
    reset_input();
    CURMENU = screen_number::files;
    play({at_once({press(3 * 48 + 5, 620), key_press(Key::escape)})}, [&] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CURMENU, screen_number::parameters) << "the click came before Escape";
    EXPECT_EQ(next_key(), key::escape) << "it is left to the next screen";
}

TEST_F(FileScreenTest, EveryVisitStartsAfresh) {
    put_numbered_files(40);
    visit({ctrl_key(Key::c), wheel(100, 300, -5), typed("left")});
    visit({shows_file(""), look([] { EXPECT_EQ(LFILES, 41) << "cars by name, and \"..\""; }),
           look([] { EXPECT_EQ(drawn(90, 76), Pixel{0xFF00FA00}); })});
}

TEST_F(FileScreenTest, KeysTypedWhileAFileIsLoadedAreKeptInOrder) {
    put_car("carvela.res", "Vela");
    visit({at_once({typed("carvel"), typed("a.res"), ctrl_key(Key::l), typed("x"), key_press(Key::backspace)}),
           shows_file("carvela.res"), shows_status("Loaded carvela.res", success_green)});
    EXPECT_EQ(CARNAME, "Vela");
}

// --- the picker ----------------------------------------------------------------------------------------------------

TEST_F(FileScreenTest, AsAPickerAnUnknownExtensionIsTheResult) {
    FILE_ERNUM = file_status::success;
    play({typed("pic.png"), ctrl_key(Key::l)}, [&] { result = FILEHANDLING(file_screen_mode::pictures); });
    EXPECT_EQ(result, "L:pic.png");
    play({typed("x.p3s"), ctrl_key(Key::s)}, [&] { result = FILEHANDLING(file_screen_mode::pictures); });
    EXPECT_EQ(result, "S:x.p3s");
    play({typed("pic.png"), click(850, 80)}, [&] { result = FILEHANDLING(file_screen_mode::pictures); });
    EXPECT_EQ(result, "S:pic.png");
    EXPECT_EQ(CURMENU, screen_number::files);
}

TEST_F(FileScreenTest, AsAPickerItStillLoadsCarFilesAndStays) {
    put_car("car.res", "Vela");
    visit({typed("car.res"), ctrl_key(Key::l), shows_status("Loaded car.res", success_green)},
          file_screen_mode::pictures);
    EXPECT_EQ(CARNAME, "Vela");
    EXPECT_EQ(result, "");
}

TEST_F(FileScreenTest, AsAPickerItListsPicturesAndHasNoToggle) {
    for (const char* name : {"a.tga", "b.PNG", "c.pcx", "d.res"})
        write_text(name, "");
    visit({shows_row(1, "a.tga", file_grey), shows_row(2, "b.PNG", file_grey), shows_row(3, "c.pcx", file_grey),
           ctrl_key(Key::c), look([] {
               EXPECT_EQ(LFILES, 4);
               EXPECT_EQ(BUTTONS, 2);
           })},
          file_screen_mode::pictures);
}

TEST_F(FileScreenTest, InAnyOtherModeAllFilesAreListed) {
    write_text("anything", "");
    visit({shows_row(1, "anything", file_grey), look([] { EXPECT_EQ(BUTTONS, 2); })}, 7);
}
