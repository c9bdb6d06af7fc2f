// LOADOBJ and SAVEOBJ: between the file and the car's slots.
#include "formats/obj_file.h"
#include "model/car.h"
#include "support/clean_car.h"
#include "support/models.h"
#include "support/text_file.h"

namespace {
class ObjTables : public CleanCar {
protected:
    std::string file_with(const std::string& text) {
        write_text(directory / "body.obj", text);
        return directory / "body.obj";
    }

    static SHAPEMODEL wheels_and_triangle() {
        SHAPEMODEL model = model_with_wheels();
        add_triangle(model, {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, 60);
        return model;
    }
};
constexpr const char* triangle_text = "v 1 3 2\nv 4 6 5\nv 7 9 8\nusemtl Vortag60\nf 1 2 3\n";
} // namespace

TEST_F(ObjTables, LoadingReplacesTheBodyOfTheSlotGivenOnly) {
    for (auto& model : CAR)
        model = wheels_and_triangle();
    const auto before = CAR;
    PAINTJOBS = 3;
    const auto import = LOADOBJ(file_with(std::string(triangle_text) + triangle_text), 4).import;
    EXPECT_EQ(FILE_FILE, directory / "body.obj");
    EXPECT_SUCCESS();
    ASSERT_TRUE(import);
    EXPECT_EQ(import->faces, 2U);
    EXPECT_EQ(CAR[4]->nprims, 6);
    EXPECT_EQ(CAR[4]->prims[5].material[2], 60);
    EXPECT_EQ(CAR[4]->prims[5].material[3], 0) << "only three paint jobs are in use";
    for (std::size_t slot = 0; slot < 4; ++slot)
        EXPECT_TRUE(*CAR[slot] == *before[slot]);
}

TEST_F(ObjTables, SavingWritesTheSlotGivenInTheCurrentPaintJob) {
    CAR[3] = wheels_and_triangle();
    CAR[3].edit().prims[4].material[5] = 99;
    CURPJ = 5;
    EXPECT_EQ(SAVEOBJ(directory / "out.obj", 3).left_out, 0U);
    EXPECT_EQ(FILE_FILE, directory / "out.obj");
    EXPECT_SUCCESS();
    EXPECT_EQ(read_text(directory / "out.obj"),
              "mtllib vortag.mtl\nv 1 3 2\nv 4 6 5\nv 7 9 8\nusemtl Vortag99\nf 1 2 3\n");
}

TEST_F(ObjTables, NoFileIsReportedAndChangesNothing) {
    CAR[0] = wheels_and_triangle();
    for (const std::string& name : names_of_no_file()) {
        reset_file_status();
        EXPECT_FALSE(LOADOBJ(name, 0).import);
        EXPECT_EQ(FILE_FILE, name);
        EXPECT_FAILURE(file_status::not_found, "File not found");
        EXPECT_TRUE(*CAR[0] == wheels_and_triangle());
    }
    EXPECT_TRUE(read_error_when_unreadable(bytes_of(triangle_text), [](const std::string& name) { LOADOBJ(name, 0); }));
}

TEST_F(ObjTables, AFileBeyondTheTablesIsCutToFit) {
    std::string vertices, faces;
    for (int i = 0; i < 481; ++i)
        vertices += "v 0 0 0\n";
    for (int i = 0; i < 509; ++i)
        faces += "f 1 1 1\n";
    LOADOBJ(file_with(vertices), 0);
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
    reset_file_status();
    LOADOBJ(file_with(faces), 0);
    EXPECT_FAILURE(file_status::cut_to_fit, "Too large, cut to fit");
    EXPECT_EQ(CAR[0]->nprims, 512);
}

TEST_F(ObjTables, WhatIsOnlyRemarkedOnIsASuccess) {
    LOADOBJ(file_with("f 0 1 2 3 4 5 6 7 8 9 10 11\n"), 0);
    EXPECT_SUCCESS();
    LOADOBJ(file_with(""), 0);
    EXPECT_SUCCESS();
}

TEST_F(ObjTables, PolygonsThatAreNotWrittenAreCounted) {
    CAR[0] = wheels_and_triangle();
    CAR[0].edit().prims[4].vertex[0] = 400;
    EXPECT_EQ(SAVEOBJ(directory / "out.obj", 0).left_out, 1U);
    EXPECT_SUCCESS();
}

TEST_F(ObjTables, SavingWhereNoFileCanBeIsAnInvalidName) {
    SAVEOBJ(directory / "missing/out.obj", 0);
    EXPECT_EQ(FILE_FILE, directory / "missing/out.obj");
    EXPECT_FAILURE(file_status::invalid_name, "Invalid file name");
}

TEST_F(ObjTables, SavingThatCannotBeFinishedLeavesTheEarlierFile) {
    const std::string file = file_with("earlier");
    CAR[0] = wheels_and_triangle();
    EXPECT_EQ(save_with_file_size_limit(10, [&] { SAVEOBJ(file, 0); }), file_status::write_error);
    EXPECT_EQ(read_text(file), "earlier");
}
