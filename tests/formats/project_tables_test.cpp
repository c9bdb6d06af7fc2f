// LOADCAR and SAVECAR: between the file and the car's tables.
#include "base/reset.h"
#include "formats/projects.h"
#include "model/bitmap_table.h"
#include "model/car.h"
#include "model/items.h"
#include "model/power_gear.h"
#include "support/bitmaps.h"
#include "support/clean_car.h"

namespace {
class ProjectTables : public CleanCar {
protected:
    ProjectTables() { INITDASHITEMS(); }

    std::string file_with(const Bytes& content) {
        put_file(directory / "mine.car", content);
        return directory / "mine.car";
    }

    void load(const ProjectFile& project) { LOADCAR(file_with(encode_project_file(project))); }
};

int item_of(const std::string& id) {
    for (const DashItem& item : DASHITEM)
        if (item.id == id) return item.bitmap;
    return -1;
}
} // namespace

TEST_F(ProjectTables, SavesAndLoadsTheSameCar) {
    const ProjectFile project = odd_project(300, 200, 9);
    keep_project(project);
    const CarDocument before = DOCUMENT;
    SAVECAR(directory / "file.car");
    EXPECT_EQ(FILE_FILE, directory / "file.car");
    EXPECT_SUCCESS();
    EXPECT_EQ(get_file(directory / "file.car"), encode_project_file(project));

    reset_program();
    FILE_ERROR = "an earlier failure";
    LOADCAR(directory / "file.car");
    EXPECT_EQ(FILE_FILE, directory / "file.car");
    EXPECT_SUCCESS();
    EXPECT_EQ(CARNAME, std::string("Name\0of a car", 13));
    EXPECT_EQ(PAINTJOBS, 9);
    EXPECT_EQ(BITMAPS, 3);
    for (std::size_t slot = 0; slot < car_slots; ++slot)
        EXPECT_TRUE(*CAR[slot] == *project.models[slot]) << slot;
    for (std::size_t k = 0; k < explosion_models; ++k)
        EXPECT_TRUE(*CEXP[k] == *project.models[car_slots + k]) << k;
    EXPECT_TRUE(project_of_tables() == project);
    EXPECT_TRUE(PAR == before.par);
}

TEST_F(ProjectTables, TheBitmapsBeforeAreReleased) {
    merge_bitmap_file(decode_bitmap_file(file_of({"dash", "roof", "gbox", "whl1"})));
    load(odd_project(1, 1, 1));
    EXPECT_EQ(table_names(), "dast/dasm/none/");
    EXPECT_TRUE(BITMAP[4] == BitmapRecord{});
    EXPECT_EQ(BITMAP[0].width, 320) << "the canvas stays";
    load({});
    EXPECT_EQ(BITMAPS, 0);
}

TEST_F(ProjectTables, ItemsAreBoundToTheBitmapsThatAreThere) {
    merge_bitmap_file(decode_bitmap_file(file_of({"dash", "roof", "gbox", "dast"})));
    ASSERT_EQ(item_of("dast"), 4);
    load(odd_project(1, 1, 1));
    EXPECT_EQ(item_of("dast"), 1);
    EXPECT_EQ(item_of("dash"), 0);
    EXPECT_EQ(item_of("roof"), 0);
}

// ODDITY project-derives-nothing
TEST_F(ProjectTables, TitlePowergearAndPositionsAreNotDerived) {
    TITLENAME = "Earlier";
    POWERGEAR = 3;
    ProjectFile project = odd_project(1, 1, 1);
    project.bitmaps.push_back(numbered_bitmap("ins1", 1, 1, 44));
    load(project);
    EXPECT_EQ(TITLENAME, "Earlier");
    EXPECT_EQ(POWERGEAR, 3);
    EXPECT_EQ(BITMAP[4].relative_x, -32768);
    EXPECT_EQ(BITMAP[4].absolute_x, 32767);
    EXPECT_EQ(BITMAP[4].absolute_y, 44);
}

TEST_F(ProjectTables, PaintJobsAreHeldWithinOneAndSeventeenAndTheShownOneBelow) {
    CURPJ = 5;
    LOADCAR(file_with(project_with({"Shps", models_chunk(0)})));
    EXPECT_EQ(PAINTJOBS, 1);
    EXPECT_EQ(CURPJ, 0);
    EXPECT_SUCCESS();
    LOADCAR(file_with(project_with({"Shps", models_chunk(200)})));
    EXPECT_EQ(PAINTJOBS, 17);
    EXPECT_SUCCESS();
}

TEST_F(ProjectTables, WhatDidNotFitIsReported) {
    LOADCAR(file_with(project_with({"Dash", bitmaps_chunk({bytes_of_bitmap("huge", 65535, 65535, 0)})})));
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
}

TEST_F(ProjectTables, AFileThatDoesNotBeginAsAProjectChangesNothing) {
    keep_project(odd_project(5, 5, 3));
    const CarDocument before = DOCUMENT;
    const Bytes whole = encode_project_file(odd_project(7, 7, 7));
    for (const Bytes& content : {Bytes(), bytes_of("*ca"), bytes_of("*Car"), joined({bytes_of("x"), whole})}) {
        reset_file_status();
        LOADCAR(file_with(content));
        EXPECT_EQ(FILE_FILE, directory / "mine.car");
        EXPECT_FAILURE(file_status::unknown_format, "Unknown format");
        EXPECT_TRUE(DOCUMENT == before);
    }
}

TEST_F(ProjectTables, NoFileIsReportedAndChangesNothing) {
    keep_project(odd_project(5, 5, 3));
    const CarDocument before = DOCUMENT;
    for (const std::string& name : names_of_no_file()) {
        reset_file_status();
        LOADCAR(name);
        EXPECT_EQ(FILE_FILE, name);
        EXPECT_FAILURE(file_status::not_found, "File not found");
        EXPECT_TRUE(DOCUMENT == before);
    }
    EXPECT_TRUE(read_error_when_unreadable(encode_project_file({}), LOADCAR));
}

TEST_F(ProjectTables, ModelsThatAreTheSameStayTheSameBlocks) {
    const ProjectFile project = odd_project(5, 5, 3);
    keep_project(project);
    const Shared<SHAPEMODEL> before = CAR[2];
    load(project);
    EXPECT_TRUE(CAR[2].is(before));
}

TEST_F(ProjectTables, SavingALongTextIsReported) {
    CARINFO = std::string(65536, 'x');
    SAVECAR(directory / "file.car");
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
    LOADCAR(directory / "file.car");
    EXPECT_EQ(CARINFO.size(), 65535U);
}

TEST_F(ProjectTables, SavingWhereNoFileCanBeIsAnInvalidName) {
    SAVECAR(directory / "missing/file.car");
    EXPECT_EQ(FILE_FILE, directory / "missing/file.car");
    EXPECT_FAILURE(file_status::invalid_name, "Invalid file name");
}

TEST_F(ProjectTables, SavingThatCannotBeFinishedLeavesTheEarlierFile) {
    const std::string file = file_with(bytes_of("earlier"));
    CARINFO = std::string(65536, 'x'); // a write error is the graver news
    EXPECT_EQ(save_with_file_size_limit(100, [&] { SAVECAR(file); }), file_status::write_error);
    EXPECT_EQ(get_file(file), bytes_of("earlier"));
}
