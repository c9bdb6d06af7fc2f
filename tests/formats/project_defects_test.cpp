// Project files that are cut, too large, or lie.
#include "formats/projects.h"

#include <gtest/gtest.h>

namespace {
// The bitmaps that a chunk gives, and whether all had room.
ProjectFile bitmaps_of(const Bytes& chunk) { return decoded_project(project_with({"Dash", chunk})); }
const SHAPEMODEL& first_model(const ProjectFile& project) { return *project.models[0]; }
ProjectFile models_of(int paint_jobs, const std::vector<Bytes>& models) {
    return decoded_project(project_with({"Shps", models_chunk(paint_jobs, models)}));
}

// A vertex whose x says which model it stands in.
Bytes model_with_x(double x) { return joined({words({1}), bytes_of_vertex(x, 0, 0), words({0})}); }
} // namespace

// ODDITY project-missing-chunk
TEST(ProjectDefects, AMissingChunkIsReadFromTheStartOfTheFile) {
    const Bytes whole = project_of({{"Base", texts_chunk("Car")},
                                    {"Pars", counting_bytes(parameter_bytes)},
                                    {"Shps", models_chunk(7)},
                                    {"Dash", bitmaps_chunk({})}});
    Bytes file = whole;
    file[20] = std::byte{'p'}; // "pars"
    const ProjectFile project = decoded_project(file);
    EXPECT_EQ(project.name, "Car");
    EXPECT_EQ(Bytes(project.par.begin(), project.par.end()), first_bytes(file, parameter_bytes));

    file = whole;
    file[12] = std::byte{'b'}; // "base": the length is "*c", more than the file holds
    EXPECT_EQ(decoded_project(file).name, ByteReader(file, 2).text(65535));
    EXPECT_EQ(decoded_project(file).sign_name, "");

    file = whole;
    file[28] = std::byte{'s'}; // "shps": "*" is the number of paint jobs, "ca" that of vertices
    EXPECT_EQ(decoded_project(file).paint_jobs, '*');
    EXPECT_EQ(first_model(decoded_project(file)).nverts, 512);

    file = whole;
    file[36] = std::byte{'d'}; // "dash": 42 bitmaps, the first of them "car" and a carriage return
    EXPECT_EQ(decoded_project(file).bitmaps.at(0).name, "car\r");
    EXPECT_EQ(decoded_project(file).bitmaps.at(0).width, 0x1A0A);
}

TEST(ProjectDefects, AFileOfOnlyTheMagicChangesWhatItHolds) {
    ProjectFile before;
    before.name = "as it was";
    const ProjectFile after = decoded_project(bytes_of("*car"), before);
    EXPECT_EQ(after.name, "ar"); // a text of "*c" characters
    EXPECT_EQ(after.paint_jobs, '*');
    EXPECT_EQ(Bytes(after.par.begin(), after.par.begin() + 5), joined({bytes_of("*car"), byte_list({0})}));
    EXPECT_TRUE(after.bitmaps.empty()); // one was there without a whole id
}

TEST(ProjectDefects, OffsetsPastTheEndLeaveEverythingButTheBitmaps) {
    const ProjectFile before = odd_project(20, 20, 5);
    Bytes file = encode_project_file(odd_project(3, 3, 2));
    for (const std::uint32_t offset : {static_cast<std::uint32_t>(file.size()), 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        for (std::size_t chunk = 0; chunk < 4; ++chunk)
            put_u32(file, 16 + 8 * chunk, offset);
        ProjectFile expected = before;
        expected.bitmaps.clear();
        EXPECT_TRUE(decoded_project(file, before) == expected) << offset;
    }
}

TEST(ProjectDefects, ChunksMayShareTheirBytes) {
    Bytes file = encode_project_file(odd_project(3, 3, 2));
    for (std::size_t chunk = 0; chunk < 4; ++chunk)
        put_u32(file, 16 + 8 * chunk, 100);
    const ProjectFile project = decoded_project(file);
    EXPECT_EQ(Bytes(project.par.begin(), project.par.end()), bytes_between(file, 100, parameter_bytes));
}

TEST(ProjectDefects, CutAtEveryByteHoldsWhatIsWhole) {
    ProjectFile whole = odd_project(2, 14, 1);
    whole.information = "a line]";
    const Bytes file = encode_project_file(whole);
    ProjectFile before;
    before.name = "as it was";
    const std::size_t pars = 44 + 3 * 2 + 13 + 4 + 7 + 1, shps = pars + 776;
    const std::size_t dash = file.size() - 1 - 3 * 30 - 30;
    ASSERT_EQ(byte_at(file, dash), 3);
    for (std::size_t length = 44; length < file.size(); ++length) {
        const ProjectFile cut = decoded_project(first_bytes(file, length), before);
        ASSERT_EQ(cut.name == whole.name, length >= 44 + 2 + 13) << length;
        ASSERT_EQ(cut.par == whole.par, length >= shps) << length;
        ASSERT_EQ(*cut.models[8] == *whole.models[8], length >= dash) << length;
        ASSERT_LE(cut.bitmaps.size(), 3U) << length;
        // The last six bytes are zeros and blanks, which is what missing ones count as.
        ASSERT_EQ(cut.bitmaps == whole.bitmaps, length + 6 >= file.size()) << length;
        ASSERT_FALSE(cut.cut) << length;
    }
}

TEST(ProjectDefects, CutInItsTableItHoldsTheChunksNamedThere) {
    const Bytes file = encode_project_file(odd_project(1, 1, 1));
    for (std::size_t length = 0; length < 44; ++length) {
        const ProjectFile cut = decoded_project(first_bytes(file, length));
        ASSERT_LE(cut.name.size(), length); // from the start of the file, or past its end
        ASSERT_LE(cut.bitmaps.size(), 1U);
    }
}

TEST(ProjectDefects, ATextThatTheFileDoesNotHoldWholeIsWhatItHolds) {
    const ProjectFile project = decoded_project(project_of({{"Base", joined({words({100}), bytes_of("short")})}}));
    EXPECT_EQ(project.name, "short");
    EXPECT_EQ(project.sign_name, "");
}

TEST(ProjectDefects, VerticesPastTheTableAreReadOver) {
    const Bytes large =
        joined({words({515}), repeated(bytes_of_vertex(7, 8, 9), 515), words({1}), bytes_of_primitive(1, {3}, {514})});
    const ProjectFile project = models_of(1, {large, model_with_x(4)});
    EXPECT_TRUE(project.cut);
    EXPECT_EQ(first_model(project).nverts, 512);
    EXPECT_EQ(first_model(project).verts[511].z, 9);
    EXPECT_EQ(first_model(project).nprims, 1);
    EXPECT_EQ(first_model(project).prims[0].vertex[0], 514);
    EXPECT_EQ(project.models[1]->verts[0].x, 4) << "the next model is read from its place";
}

TEST(ProjectDefects, PrimitivesPastTheTableAreReadOverByTheirTypes) {
    const Bytes more = joined({bytes_of_primitive(12, {1, 2}, {1, 2, 3, 4, 5, 6}), bytes_of_primitive(200, {1, 2}, {}),
                               bytes_of_primitive(11, {1, 2}, {1, 2})});
    const Bytes large = joined({words({0, 515}), repeated(bytes_of_primitive(1, {5, 6}, {9}), 512), more});
    const ProjectFile project = models_of(2, {large, model_with_x(4)});
    EXPECT_TRUE(project.cut);
    EXPECT_EQ(first_model(project).nprims, 512);
    EXPECT_EQ(first_model(project).prims[511].vertex[0], 9);
    EXPECT_EQ(project.models[1]->verts[0].x, 4);
}

TEST(ProjectDefects, MaterialsPastTheSeventeenthAreReadOver) {
    const Bytes primitive =
        bytes_of_primitive(1, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19}, {77});
    const ProjectFile project = models_of(20, {joined({words({0, 2}), primitive, primitive})});
    EXPECT_TRUE(project.cut);
    EXPECT_EQ(project.paint_jobs, 20);
    EXPECT_EQ(first_model(project).prims[1].material[16], 16);
    EXPECT_EQ(first_model(project).prims[1].vertex[0], 77);
    EXPECT_FALSE(models_of(20, {}).cut) << "there was no material to cut";
}

TEST(ProjectDefects, FullTablesAreNotCut) {
    const Bytes full = joined({words({512}), repeated(bytes_of_vertex(7, 8, 9), 512), words({512}),
                               repeated(bytes_of_primitive(0, {5}, {}), 512)});
    EXPECT_FALSE(models_of(1, {full}).cut);
}

TEST(ProjectDefects, CountsThatTheFileDoesNotHoldAreNotCut) {
    const Bytes file =
        project_of({{"Shps", joined({byte_list({1}), words({65535}), bytes_of_vertex(1, 2, 3)})}, {"Dash", {}}});
    const ProjectFile project = decoded_project(file);
    EXPECT_EQ(first_model(project).nverts, 512);
    EXPECT_EQ(first_model(project).verts[0].y, 2);
    EXPECT_FALSE(project.cut);
}

TEST(ProjectDefects, BitmapsPastTheHundredthAreLeftOut) {
    std::vector<Bytes> bitmaps;
    for (int i = 0; i < 255; ++i)
        bitmaps.push_back(bytes_of_bitmap("b" + std::to_string(100 + i), 2, 1, 2));
    const ProjectFile project = bitmaps_of(bitmaps_chunk(bitmaps));
    EXPECT_TRUE(project.cut);
    ASSERT_EQ(project.bitmaps.size(), 100U);
    EXPECT_EQ(project.bitmaps[99].name, "b199");
    bitmaps.resize(100);
    EXPECT_FALSE(bitmaps_of(bitmaps_chunk(bitmaps)).cut);
}

TEST(ProjectDefects, BitmapsWithoutRoomForTheirPixelsAreLeftOut) {
    const ProjectFile project =
        bitmaps_of(bitmaps_chunk({bytes_of_bitmap("canv", 3200, 1999, 3200 * 1999),
                                  bytes_of_bitmap("huge", 3201, 1, 3201), bytes_of_bitmap("last", 3200, 1, 3200)}));
    EXPECT_TRUE(project.cut);
    ASSERT_EQ(project.bitmaps.size(), 2U);
    EXPECT_EQ(project.bitmaps[1].name, "last");
    EXPECT_EQ(project.bitmaps[1].pixels->at(1), 8) << "read from its place";
}

TEST(ProjectDefects, ASizeThatNoMemoryHoldsIsLeftOut) {
    const ProjectFile project = bitmaps_of(bitmaps_chunk({bytes_of_bitmap("huge", 65535, 65535, 0)}));
    EXPECT_TRUE(project.cut);
    EXPECT_TRUE(project.bitmaps.empty());
}

TEST(ProjectDefects, PixelsThatTheFileLacksAreZeroAndABitmapWithoutAWholeIdIsNone) {
    const Bytes chunk = bitmaps_chunk(9, {bytes_of_bitmap("dash", 2, 2, 3)});
    const ProjectFile project = bitmaps_of(chunk);
    ASSERT_EQ(project.bitmaps.size(), 1U);
    EXPECT_EQ(*project.bitmaps[0].pixels, (Pixels{1, 8, 15, 0}));
    EXPECT_EQ(bitmaps_of(joined({chunk, bytes_of("xdas")})).bitmaps.size(), 1U) << "the first three are pixels";
    EXPECT_EQ(bitmaps_of(joined({chunk, bytes_of("xroof")})).bitmaps.at(1).name, "roof");
}

TEST(ProjectDefects, ABitmapThatIsItsOwnMaskLosesIt) {
    const ProjectFile project = bitmaps_of(bitmaps_chunk({bytes_of_bitmap("dash", 1, 1, 1, 0, 255, "dash")}));
    EXPECT_EQ(project.bitmaps.at(0).has_mask, 0);
    EXPECT_EQ(project.bitmaps.at(0).mask_name, "dash");
}

TEST(ProjectDefects, TheBitmapThatClosesACircleOfMasksLosesItsOwn) {
    const ProjectFile project = bitmaps_of(bitmaps_chunk(
        {bytes_of_bitmap("aaaa", 1, 1, 1, 0, 255, "bbbb"), bytes_of_bitmap("bbbb", 1, 1, 1, 0, 1, "cccc"),
         bytes_of_bitmap("cccc", 1, 1, 1, 0, 255, "bbbb"), bytes_of_bitmap("dddd", 1, 1, 1, 0, 255, "none"),
         bytes_of_bitmap("eeee", 1, 1, 1, 0, 0, "eeee")}));
    std::vector<int> masks;
    for (const BitmapRecord& bitmap : project.bitmaps)
        masks.push_back(bitmap.has_mask);
    EXPECT_EQ(masks, (std::vector<int>{255, 1, 0, 255, 0}));
}

TEST(ProjectDefects, MasksFollowTheFirstBitmapOfAName) {
    const ProjectFile project = bitmaps_of(
        bitmaps_chunk({bytes_of_bitmap("dash", 1, 1, 1, 0, 0), bytes_of_bitmap("dash", 1, 1, 1, 0, 255, "dash")}));
    EXPECT_EQ(project.bitmaps.at(1).has_mask, 255) << "its mask is the other one, which has none";
}
