// Projects and bodies by name.
#include "files/file_screen.h"
#include "files/transfer.h"
#include "formats/bitmap_file.h"
#include "model/body.h"
#include "model/car.h"
#include "model/items.h"
#include "model/new_car.h"
#include "support/models.h"
#include "support/play.h"
#include "support/text_file.h"
#include "widgets/strip.h"

namespace {
class TransferOfModels : public ScriptedTest {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        ScriptedTest::SetUp();
        new_car();
        INITDASHITEMS();
    }
};

std::string repeated(const std::string& line, int times) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text += line;
    return text;
}
} // namespace

TEST_F(TransferOfModels, AProjectIsLoadedAndSavedWhole) {
    CARNAME = "Mine";
    CAR[4] = model_with_wheels();
    EXPECT_EQ(transfer(Transfer::save, "Mine.CAR").text, "Saved Mine.CAR");
    new_car();
    const TransferReport report = transfer(Transfer::load, "Mine.CAR");
    EXPECT_EQ(report.text, "Loaded Mine.CAR");
    EXPECT_FALSE(report.failed);
    EXPECT_EQ(report.note, "");
    EXPECT_EQ(CARNAME, "Mine");
    EXPECT_EQ(CAR[4]->nprims, 4);
    transfer(Transfer::save, "again.car");
    EXPECT_TRUE(get_file("again.car") == get_file("Mine.CAR"));
}

TEST_F(TransferOfModels, AFileThatIsNoProjectIsAnUnknownFormatWithItsName) {
    write_text("no.car", "no project");
    const TransferReport report = transfer(Transfer::load, "no.car");
    EXPECT_FALSE(report.unknown_format) << "its extension is known";
    EXPECT_EQ(report.text, "Unknown format: no.car");
    EXPECT_TRUE(report.failed);
}

TEST_F(TransferOfModels, ABodyGoesIntoTheSlotThatIsLookedAtAndTheNoteNamesIt) {
    write_text("a.OBJ", "v 1 2 3\nv 1 2 4\nv 1 3 3\nf 1 2 3\n");
    const std::array<const char*, 5> notes = {"Into Showroom", "Into Game", "Into Intro", "Into Aux 1", "Into Aux 2"};
    for (int slot = 0; slot < car_slots; ++slot) {
        CURMODEL = static_cast<std::int8_t>(slot);
        const TransferReport report = transfer(Transfer::load, "a.OBJ");
        EXPECT_EQ(report.text, "Loaded a.OBJ");
        EXPECT_EQ(report.note, notes[static_cast<std::size_t>(slot)]);
        for (int other = 0; other < car_slots; ++other)
            EXPECT_EQ(CAR[static_cast<std::size_t>(other)]->nprims, other <= slot ? 5 : 0);
    }
    EXPECT_EQ(transfer(Transfer::save, "b.obj").text, "Saved b.obj");
    EXPECT_EQ(read_text("b.obj"), "mtllib vortag.mtl\nv 1 2 3\nv 1 2 4\nv 1 3 3\nusemtl base1\nf 1 2 3\n");
}

TEST_F(TransferOfModels, WhatABodyLostIsNotedBesideItsStatus) {
    write_text("large.obj", repeated("v 0 0 0\n", 610) + "f 1 2 3\n");
    const TransferReport report = transfer(Transfer::load, "large.obj");
    EXPECT_EQ(report.text, "Too large, cut to fit: large.obj");
    EXPECT_TRUE(report.failed);
    EXPECT_EQ(report.note, "Into Showroom: 512 vertices at most: 130 left out");

    write_text("empty.obj", "# nothing\n");
    EXPECT_EQ(transfer(Transfer::load, "empty.obj").text, "Loaded empty.obj");
    EXPECT_EQ(transfer(Transfer::load, "empty.obj").note, "No car data in it: empty.obj; Showroom has no body now");
    write_text("points.obj", "v 0 0 0\n");
    EXPECT_EQ(transfer(Transfer::load, "points.obj").note, "Into Showroom: no face");
    EXPECT_EQ(transfer(Transfer::load, "none.obj").note, "");
}

TEST_F(TransferOfModels, PolygonsThatCannotBeWrittenAreNoted) {
    CAR[0] = model_with_wheels();
    add_triangle(CAR[0].edit(), {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}).vertex[0] = 77;
    EXPECT_EQ(transfer(Transfer::save, "a.obj").note, "1 polygon left out: its vertices are not there");
    add_triangle(CAR[0].edit(), {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}).vertex[0] = 77;
    EXPECT_EQ(transfer(Transfer::save, "a.obj").note, "2 polygons left out: their vertices are not there");
    EXPECT_EQ(transfer(Transfer::save, "nowhere/a.obj").note,
              "Cannot be written: nowhere/a.obj: Folder nowhere: No such file or directory");
    CAR[0] = model_with_wheels();
    EXPECT_EQ(transfer(Transfer::save, "a.obj").note, "");
}

TEST_F(TransferOfModels, TheFilesScreenSaysTheNoteInTheStrip) {
    write_text("a.obj", "v 0 0 0\nf 1 1 1\n");
    play({typed("a.obj"), key_press(Key::l, {.control = true}), look([] { EXPECT_EQ(said(), "Into Showroom"); }),
          close_window()},
         [] { FILEHANDLING(file_screen_mode::cars); });
    EXPECT_EQ(CAR[0]->nprims, 5);
}
