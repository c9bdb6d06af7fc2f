#include "formats/shape_file.h"

#include "formats/shapes.h"

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace {
// One triangle-free model each: the showroom car holds one vertex and a line, the others nothing.
std::unique_ptr<ShapeFile> tiny_shapes() {
    auto shapes = std::make_unique<ShapeFile>();
    shapes->paint_jobs = 2;
    SHAPEMODEL& showroom = shapes->models[0];
    showroom.nverts = 1;
    showroom.verts[0] = {0.002, -0.004, 0.006, 9};
    showroom.nprims = 1;
    showroom.prims[0].type = primitive_type::line;
    showroom.prims[0].flags = 1;
    showroom.prims[0].cull1 = 0x04030201;
    showroom.prims[0].cull2 = 0x08070605;
    showroom.prims[0].material = {55, 66, 77};
    showroom.prims[0].vertex = {0, 200, 3};
    return shapes;
}

int file_size_with_type(int type) {
    auto shapes = std::make_unique<ShapeFile>();
    shapes->models[0].nprims = 1;
    shapes->models[0].prims[0].type = static_cast<std::uint8_t>(type);
    return static_cast<int>(encode_shape_file(*shapes).size());
}
} // namespace

TEST(ShapeFileFormat, EncodesExactBytes) {
    const Bytes model = joined({byte_list({1, 1, 2, 0}), byte_list({1, 0, 3, 0, 0xFE, 0xFF}), byte_list({1, 2, 3, 4}),
                                byte_list({5, 6, 7, 8}), byte_list({2, 1, 55, 66, 0, 200}), byte_list({0, 0, 0})});
    const Bytes nothing = byte_list({0, 0, 2, 0, 0, 0, 0});
    const Bytes expected =
        joined({byte_list({131, 0, 0, 0, 7, 0}), bytes_of("car0car1car2exp0exp1exp2exp3"),
                byte_list({0, 0, 0, 0, 27, 0, 0, 0, 34, 0, 0, 0, 41, 0, 0, 0, 48, 0, 0, 0, 55, 0, 0, 0, 62, 0, 0, 0}),
                model, nothing, nothing, nothing, nothing, nothing, nothing});
    EXPECT_EQ(encode_shape_file(*tiny_shapes()), expected);
}

TEST(ShapeFileFormat, DecodesWhatItEncodedWhateverTheSize) {
    for (const int vertices : {0, 1, 254, 255})
        for (const int primitives : {0, 1, 254, 255})
            for (const int jobs : {1, 2, 17}) {
                const auto shapes = numbered_shapes(vertices, primitives, jobs);
                ASSERT_TRUE(shapes_fit_file(*shapes));
                EXPECT_EQ(encode_shape_file(*decoded_shapes(encode_shape_file(*shapes))), encode_shape_file(*shapes));
                ASSERT_TRUE(*decoded_shapes(encode_shape_file(*shapes)) == *shapes)
                    << vertices << " vertices, " << primitives << " primitives, " << jobs << " paint jobs";
            }
}

TEST(ShapeFileFormat, TypesWithoutKindCarryNoVertexIndices) {
    const int of_empty = file_size_with_type(primitive_type::empty);
    for (int type = 13; type <= 255; ++type)
        EXPECT_EQ(file_size_with_type(type), of_empty) << type;
    for (int type = 1; type <= 10; ++type)
        EXPECT_EQ(file_size_with_type(type), of_empty + type);
    EXPECT_EQ(file_size_with_type(primitive_type::sphere), of_empty + 2);
    EXPECT_EQ(file_size_with_type(primitive_type::wheel), of_empty + 6);
}

TEST(ShapeFileFormat, HeightIsTheSecondNumberOfAVertex) {
    const auto shapes = decoded_shapes(encode_archive({{"car2", shape_resource(1, 0, 7)}}), 4);
    const SHAPEVERTEX& vertex = shapes->models[2].verts[0];
    EXPECT_DOUBLE_EQ(vertex.x, 1 * 0.05);
    EXPECT_DOUBLE_EQ(vertex.z, 2 * 0.05);
    EXPECT_DOUBLE_EQ(vertex.y, 3 * 0.05);
}

TEST(ShapeFileFormat, IgnoresTheReservedByte) {
    Bytes file = encode_shape_file(*tiny_shapes());
    const auto before = decoded_shapes(file);
    file.at(62 + 3) = std::byte{0xAA};
    EXPECT_TRUE(*decoded_shapes(file) == *before);
}

TEST(ShapeFileFormat, MaskSelectsTheModelsThatAreRead) {
    const Bytes file = archive_of_shapes_without("");
    for (int selected = 0; selected < shape_file_models; ++selected) {
        const auto shapes = decoded_shapes(file, 1U << selected);
        for (int k = 0; k < shape_file_models; ++k)
            EXPECT_EQ(shapes->models[static_cast<std::size_t>(k)].nverts, k == selected ? 1 : 0);
    }
    auto untouched = std::make_unique<ShapeFile>();
    untouched->paint_jobs = 5;
    decode_shape_file(file, 0xFFFFFF80, *untouched);
    EXPECT_EQ(untouched->paint_jobs, 5);
}

TEST(ShapeFileFormat, OfTwoEntriesWithOneIdTheFirstIsTaken) {
    const Bytes file = encode_archive({{"car0", shape_resource(1, 0, 7, 50)}, {"car0", shape_resource(1, 0, 7, 60)}});
    EXPECT_EQ(first_number(*decoded_shapes(file, 1), 0), 50);
}

// ODDITY missing-shape
TEST(ShapeFileFormat, MissingExplosionIsReadFromWhereTheModelBeforeItEnded) {
    Bytes file = archive_of_shapes_without("exp3");
    const Bytes behind = shape_resource(2, 1, 3, 500);
    file.insert(file.end(), behind.begin(), behind.end());
    const auto shapes = decoded_shapes(file);
    EXPECT_EQ(shapes->models[6].nverts, 2);
    EXPECT_EQ(shapes->models[6].nprims, 1);
    EXPECT_EQ(first_number(*shapes, 6), 500);
    EXPECT_EQ(shapes->paint_jobs, 3);
}

// ODDITY missing-shape
TEST(ShapeFileFormat, MissingExplosionIsReadFromTheBytesOfTheNextResource) {
    const Bytes behind = shape_resource(1, 0, 7, 20);
    const Bytes file = encode_archive({{"exp0", shape_resource(1, 0, 7, 10)}, {"note", behind}});
    const auto shapes = decoded_shapes(file, 0b11000); // exp0 and exp1
    EXPECT_EQ(first_number(*shapes, 3), 10);
    EXPECT_EQ(first_number(*shapes, 4), 20);
}

// ODDITY missing-shape
TEST(ShapeFileFormat, MissingShowroomCarIsReadFromTheEndOfTheTables) {
    const auto shapes = decoded_shapes(archive_of_shapes_without("car0"), 1);
    EXPECT_EQ(first_number(*shapes, 0), 10); // the first data are car1's
}

// ODDITY missing-shape
TEST(ShapeFileFormat, ArchiveOfNothingIsReadFromBehindItsCount) {
    const Bytes file = joined({byte_list({0, 0, 0, 0, 0, 0}), shape_resource(1, 0, 7, 70)});
    EXPECT_EQ(first_number(*decoded_shapes(file, 1), 0), 70);
}

// ODDITY missing-shape
TEST(ShapeFileFormat, ModelThatIsNotSelectedStillPlacesTheReading) {
    const Bytes file = encode_archive({{"car0", shape_resource(1, 0, 7, 10)}, {"car1", shape_resource(1, 0, 7, 20)}});
    EXPECT_EQ(first_number(*decoded_shapes(file, 1 + 4), 2), 20); // car2 is missing, car1 is not selected
}

TEST(ShapeFileFormat, OnlySixteenEntriesAreSeenButAllCountForThePositions) {
    std::vector<ArchiveResource> resources(15, {"fill", {}});
    resources.push_back({"car0", shape_resource(1, 0, 7, 10)});
    resources.push_back({"car1", shape_resource(1, 0, 7, 20)});
    resources.push_back({"none", shape_resource(1, 0, 7, 30)});
    const auto shapes = decoded_shapes(encode_archive(resources), 1);
    EXPECT_EQ(first_number(*shapes, 0), 10);

    std::swap(resources[15], resources[17]); // now car0 is the 18th
    const auto unseen = decoded_shapes(encode_archive(resources), 1);
    // Read from behind the sixteen offsets that are seen: the last two offsets, 10 and 20, are its count and its x.
    EXPECT_EQ(unseen->models[0].nverts, 10);
    EXPECT_EQ(first_number(*unseen, 0), 20);
}

// ODDITY last-paint-job-count
TEST(ShapeFileFormat, PaintJobCountIsThatOfTheLastModelRead) {
    const Bytes file = encode_archive({{"car0", shape_resource(1, 1, 2)}, {"car1", shape_resource(1, 1, 9)}});
    EXPECT_EQ(decoded_shapes(file, 1)->paint_jobs, 2);
    EXPECT_EQ(decoded_shapes(file, 3)->paint_jobs, 9);
}

TEST(ShapeFileFormat, MaterialsPastTheSeventeenthAreReadOver) {
    const Bytes file = encode_archive({{"car0", shape_resource(0, 2, 40)}});
    const auto shapes = decoded_shapes(file, 1);
    EXPECT_TRUE(shapes->materials_cut);
    EXPECT_EQ(shapes->paint_jobs, 40);
    for (const std::size_t primitive : {0U, 1U}) {
        EXPECT_EQ(shapes->models[0].prims[primitive].type, 0);
        EXPECT_EQ(shapes->models[0].prims[primitive].material[16], 116);
    }
    EXPECT_EQ(shapes->models[0].prims[0].vertex, decltype(SHAPEPRIM::vertex){});
    EXPECT_FALSE(decoded_shapes(encode_archive({{"car0", shape_resource(0, 2, 17)}}), 1)->materials_cut);
}

TEST(ShapeFileFormat, NothingIsCutWhereThereIsNoMaterialToCut) {
    EXPECT_FALSE(decoded_shapes(encode_archive({{"car0", shape_resource(3, 0, 40)}}), 1)->materials_cut);
    const Bytes whole = encode_archive({{"car0", shape_resource(0, 1, 18)}});
    EXPECT_TRUE(decoded_shapes(whole, 1)->materials_cut);
    EXPECT_FALSE(decoded_shapes(first_bytes(whole, whole.size() - 1), 1)->materials_cut);
}

TEST(ShapeFileFormat, WhatTheFileDoesNotHoldKeepsItsValue) {
    auto shapes = numbered_shapes(20, 20, 17);
    shapes->models[0].verts[1].mark = 8;
    shapes->models[0].prims[0].mark = 9;
    const auto before = std::make_unique<ShapeFile>(*shapes);
    decode_shape_file(encode_archive({{"car0", shape_resource(2, 1, 3)}}), 1, *shapes);

    const SHAPEMODEL& model = shapes->models[0];
    const SHAPEMODEL& old = before->models[0];
    EXPECT_EQ(model.nverts, 2);
    EXPECT_EQ(model.nprims, 1);
    EXPECT_EQ(model.verts[1].mark, 8);
    EXPECT_EQ(model.prims[0].mark, 9);
    EXPECT_EQ(model.prims[0].material[2], 102);
    EXPECT_EQ(model.prims[0].material[3], old.prims[0].material[3]);
    EXPECT_EQ(model.prims[0].vertex, old.prims[0].vertex);
    EXPECT_TRUE(std::equal(model.verts.begin() + 2, model.verts.end(), old.verts.begin() + 2));
    EXPECT_TRUE(std::equal(model.prims.begin() + 1, model.prims.end(), old.prims.begin() + 1));
    for (std::size_t k = 1; k < shape_file_models; ++k)
        EXPECT_TRUE(shapes->models[k] == before->models[k]);
}

TEST(ShapeFileFormat, CutAtEveryByteHoldsTheModelsThatAreWhole) {
    const Bytes file = encode_shape_file(*numbered_shapes(3, 14, 2));
    const auto whole = decoded_shapes(file);
    const ArchiveDirectory directory = read_archive_directory(file);
    for (std::size_t length = 0; length < file.size(); ++length) {
        const auto cut = decoded_shapes(first_bytes(file, length));
        for (std::size_t k = 0; k + 1 < shape_file_models; ++k)
            if (length >= directory.entries[k + 1].position) {
                ASSERT_TRUE(cut->models[k] == whole->models[k]) << length;
            }
    }
}

TEST(ShapeFileFormat, EmptyFileChangesNothing) {
    auto shapes = numbered_shapes(5, 5, 4);
    const auto before = std::make_unique<ShapeFile>(*shapes);
    decode_shape_file({}, all_shapes, *shapes);
    EXPECT_TRUE(*shapes == *before);
}

TEST(ShapeFileFormat, EntryPastEndChangesNoModel) {
    Bytes file = encode_shape_file(*numbered_shapes(3, 3, 2));
    for (std::size_t entry = 0; entry < shape_file_models; ++entry)
        put_u32(file, 34 + 4 * entry, 0xFFFFFF00);
    EXPECT_TRUE(*decoded_shapes(file) == ShapeFile{});
}

// ODDITY shape-count-byte
TEST(ShapeFileFormat, ModelOf300VerticesIsWrittenWholeWithACountOf44) {
    auto shapes = std::make_unique<ShapeFile>();
    shapes->models[0] = numbered_model(300, 260, shape_scale(0));
    for (SHAPEPRIM& primitive : shapes->models[0].prims)
        primitive.type = primitive_type::empty;
    shapes->paint_jobs = 1;
    const Bytes file = encode_shape_file(*shapes);
    EXPECT_EQ(byte_at(file, 62), 44);
    EXPECT_EQ(byte_at(file, 63), 4);
    const std::size_t model_size = 4 + 300 * 6 + 260 * 8 + 260 * 3 + 3;
    EXPECT_EQ(bytes_between(file, 38, 4),
              byte_list({static_cast<int>(model_size & 0xFF), static_cast<int>(model_size >> 8), 0, 0}));
    EXPECT_EQ(bytes_between(file, 62 + 4 + 6 * 299, 2), byte_list({299 & 0xFF, 299 >> 8}));
    EXPECT_FALSE(shapes_fit_file(*shapes));
}

TEST(ShapeFileFormat, CountsPastTheTablesCountAsTheTables) {
    auto shapes = std::make_unique<ShapeFile>();
    shapes->models[0].nverts = shapes->models[0].nprims = 512;
    const Bytes of_full_tables = encode_shape_file(*shapes);
    shapes->models[0].nverts = 513;
    shapes->models[0].nprims = 65535;
    EXPECT_EQ(encode_shape_file(*shapes), of_full_tables);
    EXPECT_FALSE(shapes_fit_file(*shapes));
}

TEST(ShapeFileFormat, NumbersAreWrittenAsTheirLowBytes) {
    auto shapes = tiny_shapes();
    ASSERT_TRUE(shapes_fit_file(*shapes));
    shapes->models[0].prims[0].material[1] = 300;
    EXPECT_FALSE(shapes_fit_file(*shapes));
    shapes->models[0].prims[0].vertex[1] = 511;
    EXPECT_EQ(bytes_between(encode_shape_file(*shapes), 62 + 4 + 6 + 8, 6), byte_list({2, 1, 55, 44, 0, 255}));
}

TEST(ShapeFileFormat, EveryKindOfNumberThatIsCutDoesNotFit) {
    const std::vector<std::function<void(SHAPEMODEL&)>> changes = {
        [](SHAPEMODEL& model) { model.nverts = 256; },
        [](SHAPEMODEL& model) { model.nprims = 256; },
        [](SHAPEMODEL& model) { model.prims[0].material[0] = 256; },
        [](SHAPEMODEL& model) { model.prims[0].vertex[1] = 256; },
        [](SHAPEMODEL& model) { model.verts[0].x = 32768 * 0.002; },
        [](SHAPEMODEL& model) { model.verts[0].y = -32769 * 0.002; },
        [](SHAPEMODEL& model) { model.verts[0].z = std::nan(""); }};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        auto shapes = tiny_shapes();
        changes[i](shapes->models[0]);
        EXPECT_FALSE(shapes_fit_file(*shapes)) << "change " << i;
    }
}

TEST(ShapeFileFormat, FitsWhenWhatDoesNotFitIsNotWritten) {
    auto shapes = tiny_shapes();
    shapes->models[0].prims[0].material[2] = 300; // a third paint job is not in use
    shapes->models[0].prims[0].vertex[2] = 300;   // a line has two corners
    shapes->models[0].verts[1].x = 1e9;           // past the count
    EXPECT_TRUE(shapes_fit_file(*shapes));
    shapes->models[0].verts[0].y = 32767.6 * 0.002;
    EXPECT_FALSE(shapes_fit_file(*shapes));
}
