// LOAD3SH and SAVE3SH: between the file and the car's tables.
#include "formats/shape_file.h"
#include "formats/shapes.h"
#include "model/document.h"
#include "support/clean_car.h"

namespace {
class ShapeTables : public CleanCar {
protected:
    std::string file_with(const Bytes& content) {
        put_file(directory / "stards.3sh", content);
        return directory / "stards.3sh";
    }

    std::string file_with_jobs(int jobs) { return file_with(encode_archive({{"car0", shape_resource(1, 1, jobs)}})); }
};

void fill_tables_with(const ShapeFile& shapes) {
    for (std::size_t k = 0; k < shape_file_models; ++k)
        (k < 3 ? CAR[k] : CEXP[k - 3]) = shapes.models[k];
    PAINTJOBS = shapes.paint_jobs;
}
} // namespace

TEST_F(ShapeTables, SavesAndLoadsTheSameModels) {
    const auto shapes = numbered_shapes(40, 30, 5);
    fill_tables_with(*shapes);
    SAVE3SH(directory / "file.3sh");
    EXPECT_EQ(FILE_FILE, directory / "file.3sh");
    EXPECT_SUCCESS();
    EXPECT_EQ(get_file(directory / "file.3sh"), encode_shape_file(*shapes));

    reset_car();
    LOAD3SH(directory / "file.3sh", all_shapes);
    EXPECT_EQ(FILE_FILE, directory / "file.3sh");
    EXPECT_SUCCESS();
    EXPECT_EQ(PAINTJOBS, 5);
    for (std::size_t k = 0; k < 3; ++k)
        EXPECT_TRUE(CAR[k] == shapes->models[k]);
    for (std::size_t k = 0; k < 4; ++k)
        EXPECT_TRUE(CEXP[k] == shapes->models[k + 3]);
}

TEST_F(ShapeTables, AuxiliarySlotsAreNeitherReadNorWritten) {
    const std::string file = file_with(encode_shape_file(*numbered_shapes(4, 4, 7)));
    CAR[3] = CAR[4] = numbered_model(9, 9, 1);
    const SHAPEMODEL before = *CAR[3];
    LOAD3SH(file, all_shapes);
    EXPECT_TRUE(CAR[3] == before && CAR[4] == before);
    SAVE3SH(directory / "other.3sh");
    EXPECT_EQ(get_file(directory / "other.3sh"), get_file(file));
}

TEST_F(ShapeTables, MaskLeavesOtherModels) {
    const std::string file = file_with(encode_shape_file(*numbered_shapes(4, 4, 7)));
    LOAD3SH(file, 2 + 16);
    EXPECT_EQ(CAR[0]->nverts + CAR[2]->nverts + CEXP[0]->nverts + CEXP[2]->nverts + CEXP[3]->nverts, 0);
    EXPECT_EQ(CAR[1]->nverts, 4);
    EXPECT_EQ(CEXP[1]->nverts, 4);
}

TEST_F(ShapeTables, LoadingReplacesThePaintJobCount) {
    LOAD3SH(file_with_jobs(3), 1);
    EXPECT_EQ(PAINTJOBS, 3);
    EXPECT_SUCCESS();
    LOAD3SH(file_with_jobs(17), 1);
    EXPECT_EQ(PAINTJOBS, 17);
    EXPECT_SUCCESS();
}

// ODDITY last-paint-job-count
TEST_F(ShapeTables, LoadingTakesTheCountOfTheLastModel) {
    LOAD3SH(file_with(encode_archive({{"car0", shape_resource(1, 1, 9)}, {"exp3", shape_resource(1, 1, 4)}})), 1 + 64);
    EXPECT_EQ(PAINTJOBS, 4);
}

TEST_F(ShapeTables, ShownPaintJobStaysBelowTheCount) {
    CURPJ = 2;
    LOAD3SH(file_with_jobs(3), 1);
    EXPECT_EQ(CURPJ, 2);
    LOAD3SH(file_with_jobs(2), 1);
    EXPECT_EQ(CURPJ, 0);
}

TEST_F(ShapeTables, FileOfNoPaintJobsHasOne) {
    LOAD3SH(file_with_jobs(0), 1);
    EXPECT_EQ(PAINTJOBS, 1);
    EXPECT_SUCCESS();
}

TEST_F(ShapeTables, MoreThanSeventeenPaintJobsAreCutAndReported) {
    LOAD3SH(file_with_jobs(18), 1);
    EXPECT_EQ(PAINTJOBS, 17);
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
}

TEST_F(ShapeTables, CutOfAnEarlierModelIsReportedToo) {
    LOAD3SH(file_with(encode_archive({{"car0", shape_resource(1, 1, 20)}, {"car1", shape_resource(1, 1, 4)}})), 3);
    EXPECT_EQ(PAINTJOBS, 4);
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
}

TEST_F(ShapeTables, EmptyFileLoadsAndChangesNothing) {
    CAR[0] = numbered_model(9, 9, 1);
    const SHAPEMODEL before = *CAR[0];
    LOAD3SH(file_with({}), all_shapes);
    EXPECT_SUCCESS();
    EXPECT_TRUE(CAR[0] == before);
    EXPECT_EQ(PAINTJOBS, 7);
}

TEST_F(ShapeTables, NoFileIsReportedAndChangesNothing) {
    CAR[0] = numbered_model(9, 9, 1);
    const SHAPEMODEL before = *CAR[0];
    for (const std::string& name : names_of_no_file()) {
        reset_file_status();
        LOAD3SH(name, all_shapes);
        EXPECT_EQ(FILE_FILE, name);
        EXPECT_FAILURE(file_status::not_found, "File not found");
        EXPECT_TRUE(CAR[0] == before);
        EXPECT_EQ(PAINTJOBS, 7);
    }
    EXPECT_TRUE(read_error_when_unreadable(encode_shape_file(*numbered_shapes(4, 4, 7)),
                                           [](const std::string& name) { LOAD3SH(name, all_shapes); }));
}

// ODDITY shape-count-byte
TEST_F(ShapeTables, SavingTooManyVerticesIsReported) {
    CAR[1].edit().nverts = 300;
    SAVE3SH(directory / "file.3sh");
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
    const Bytes file = get_file(directory / "file.3sh");
    EXPECT_EQ(byte_at(file, 62 + 7), 44);
    EXPECT_EQ(file.size(), 62U + 7 * 7 + 300 * 6);
}

TEST_F(ShapeTables, SavingWhereNoFileCanBeIsAnInvalidName) {
    SAVE3SH(directory / "missing/file.3sh");
    EXPECT_EQ(FILE_FILE, directory / "missing/file.3sh");
    EXPECT_FAILURE(file_status::invalid_name, "Invalid file name");
}

TEST_F(ShapeTables, SavingThatCannotBeFinishedLeavesTheEarlierFile) {
    const std::string file = file_with(bytes_of("earlier"));
    CAR[1].edit().nverts = 300; // a write error is the graver news
    EXPECT_EQ(save_with_file_size_limit(100, [&] { SAVE3SH(file); }), file_status::write_error);
    EXPECT_EQ(get_file(file), bytes_of("earlier"));
}
