// Files and directories that are dropped on the Files screen.
#include "files/dropped_path.h"
#include "files/file_screen_test.h"
#include "files/transfer.h"

#include "formats/shape_file.h"
#include "support/faultless_car.h"

namespace {

class FileScreenDropTest : public FileScreenTest {
protected:
    const std::string folder = directory / "a folder";

    void SetUp() override {
        FileScreenTest::SetUp();
        std::filesystem::create_directory(folder);
        DOCUMENT = faultless_car();
        const CurrentDirectory in{folder};
        CARNAME = "Dropped";
        transfer(Transfer::save, "abcd");
        new_car();
        CAR[0] = SHAPEMODEL();
    }
};

} // namespace

TEST_F(FileScreenDropTest, APathIsAFolderAndAName) {
    EXPECT_EQ(dropped_path(folder).folder, folder);
    EXPECT_EQ(dropped_path(folder).name, "");
    const auto name = [](const std::string& path) { return dropped_path(path).name; };
    EXPECT_EQ(dropped_path("/x/y/z.car").folder, "/x/y/");
    EXPECT_EQ(dropped_path("z.car").folder, ".");
    EXPECT_EQ(name("/x/y/z.car"), "z.car");
    EXPECT_EQ(name("/x/carabcd.res"), "abcd");
    EXPECT_EQ(name("CARABCD.RES"), "abcd");
    EXPECT_EQ(name("carabc.res"), "carabc.res");
    EXPECT_EQ(name("carabcde.res"), "carabcde.res");
    EXPECT_EQ(name("cara.cd.res"), "cara.cd.res");
    EXPECT_EQ(name("stabcd.3sh"), "stabcd.3sh");
    EXPECT_EQ(name("/x.y/abcd"), "./abcd") << "a file, not a car";
}

TEST_F(FileScreenDropTest, ACarsParameterFileLoadsTheCar) {
    visit({drop(folder + "/carabcd.res"), shows_status("Loaded abcd", success_green), shows_file("abcd"),
           look([&] { EXPECT_EQ(current_directory(), folder); })});
    EXPECT_EQ(CARNAME, "Dropped");
    EXPECT_EQ(CAR[0]->nprims, 5);
}

TEST_F(FileScreenDropTest, AnyOtherFileIsLoadedAlone) {
    visit({drop(folder + "/stabcd.3sh"), shows_status("Loaded stabcd.3sh", success_green)});
    EXPECT_EQ(CARNAME, "New car");
    EXPECT_EQ(CAR[0]->nprims, 5);
}

TEST_F(FileScreenDropTest, ANameOfAnyLengthIsLoaded) {
    const std::string name = std::string(200, 'n') + ".res";
    std::filesystem::copy_file(folder + "/carabcd.res", folder + "/" + name);
    visit({drop(folder + "/" + name)});
    EXPECT_EQ(CARNAME, "Dropped");
    EXPECT_EQ(FILE_FILE, name);
}

TEST_F(FileScreenDropTest, ADirectoryIsEnteredAndListed) {
    visit({drop(folder), look([&] {
               EXPECT_EQ(current_directory(), folder);
               EXPECT_EQ(LFILE[2].shown, "Dropped (ABCD)");
               EXPECT_TRUE(screen_shows(90, 60, folder, text_green));
           })});
    EXPECT_EQ(CARNAME, "New car");
}

TEST_F(FileScreenDropTest, SeveralAreLoadedOneAfterTheOther) {
    visit({at_once({drop(folder + "/stabcd.3sh"), drop(folder + "/carabcd.res")}),
           shows_status("Loaded abcd", success_green)});
}

TEST_F(FileScreenDropTest, WhatCannotBeLoadedIsTold) {
    visit({drop(folder + "/none.res"), shows_status("File not found: none.res", error_red)});
    write_text(folder + "/abcd", "no car");
    visit({drop(folder + "/abcd"), shows_status("Unknown format: ", error_red)});
    visit({drop("/nowhere/x.res"), look([] { EXPECT_TRUE(screen_shows(650, 150, "Cannot enter: ", error_red)); })});
    EXPECT_EQ(CARNAME, "New car");
}

TEST_F(FileScreenDropTest, InThePickerAPictureIsTheChoice) {
    write_text(folder + "/x.png", "");
    play({drop(folder + "/x.png")}, [&] { result = FILEHANDLING(file_screen_mode::pictures); });
    EXPECT_EQ(result, "L:x.png");
    EXPECT_EQ(current_directory(), folder);
}
